// The two ways in which a command ends early.

#ifndef VEXEL_APPS_VEXEL_FAILURE_H_
#define VEXEL_APPS_VEXEL_FAILURE_H_

#include <stdexcept>
#include <string>

namespace vexel::cli {

enum ExitStatus : int { kDone = 0, kFailed = 1, kWrongUsage = 2 };

// What was asked for cannot be asked for: status 2.
class UsageError : public std::runtime_error {
 public:
  explicit UsageError(const std::string& text) : std::runtime_error(text) {}
};

// What was asked for cannot be done: status 1. Without a text the user has been told already.
class Failure : public std::runtime_error {
 public:
  Failure() : std::runtime_error("") {}
  explicit Failure(const std::string& text) : std::runtime_error(text) {}
  Failure(const std::string& file, const std::string& text)
      : std::runtime_error(file + ": " + text) {}
};

}  // namespace vexel::cli

#endif  // VEXEL_APPS_VEXEL_FAILURE_H_
