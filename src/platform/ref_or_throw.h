// Pointers that the host must have given.

#ifndef VEXEL_PLATFORM_REF_OR_THROW_H_
#define VEXEL_PLATFORM_REF_OR_THROW_H_

#include "platform/exceptions.h"

namespace vexel {

// What the pointer points to. Throws CInvalidArgException for null.
template <typename T>
T& RefOrThrow(T* pointer) {
  if (pointer == nullptr) AfxThrowInvalidArgException();
  return *pointer;
}

}  // namespace vexel

#endif  // VEXEL_PLATFORM_REF_OR_THROW_H_
