// What the library throws: programming errors, a compiled file that ends early, and a host file
// that cannot be written. The library catches none of them. Lack of memory is std::bad_alloc.

#ifndef VEXEL_PLATFORM_EXCEPTIONS_H_
#define VEXEL_PLATFORM_EXCEPTIONS_H_

#include <stdexcept>
#include <string>

#include "platform/export.h"

// An index or a size outside its range.
class VEXEL_API CInvalidArgException : public std::invalid_argument {
 public:
  CInvalidArgException() : std::invalid_argument("an index or a size is out of range") {}
};

// A compiled map that cannot be read to its end.
class VEXEL_API CArchiveException : public std::runtime_error {
 public:
  enum Cause { none = 0, generic = 1, readOnly = 2, endOfFile = 3, writeOnly = 4, badIndex = 5 };

  CArchiveException(Cause why, const char* text) : std::runtime_error(text), cause(why) {}

  Cause cause;
};

// A file of the host's that does not take what is written to it.
class VEXEL_API CFileException : public std::runtime_error {
 public:
  explicit CFileException(const std::string& text) : std::runtime_error(text) {}
};

[[noreturn]] VEXEL_API void AfxThrowInvalidArgException();

#endif  // VEXEL_PLATFORM_EXCEPTIONS_H_
