// Pointers that the host must have given.

#ifndef VEXEL_RENDER_NEED_H_
#define VEXEL_RENDER_NEED_H_

#include "platform/exceptions.h"

namespace vexel {

// What the pointer points to. Throws CInvalidArgException for null.
template <typename T>
T& Need(T* pointer) {
  if (pointer == nullptr) AfxThrowInvalidArgException();
  return *pointer;
}

}  // namespace vexel

#endif  // VEXEL_RENDER_NEED_H_
