// Pictures that a program beside this one makes.

#ifndef VEXEL_APPS_SERVE_PRINTER_H_
#define VEXEL_APPS_SERVE_PRINTER_H_

#include <chrono>
#include <optional>
#include <string>

#include "kit/request/error.h"
#include "kit/request/request.h"

namespace vexel::serve {

// There is no such program.
class NotInstalled : public Error {
 public:
  NotInstalled()
      : Error(Kind::failure, "PNG and PDF pages take vexel-print, which is not installed") {}
};

// For any number of threads at once.
class Printer {
 public:
  // Looks for the program beside this one, and then on PATH.
  Printer();

  // With that program, if any, and other patience.
  Printer(std::optional<std::string> program, std::chrono::milliseconds patience)
      : program_(std::move(program)), patience_(patience) {}

  bool IsInstalled() const { return program_.has_value(); }

  // The bytes of a page; `medium` is "png" or "pdf". A child that takes longer than there is
  // patience is killed. Throws an Error.
  std::string Print(const Request& request, const std::string& medium) const;

 private:
  std::optional<std::string> program_;
  std::chrono::milliseconds patience_;
};

}  // namespace vexel::serve

#endif  // VEXEL_APPS_SERVE_PRINTER_H_
