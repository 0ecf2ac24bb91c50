// What goes wrong in the kit.

#ifndef VEXEL_KIT_REQUEST_ERROR_H_
#define VEXEL_KIT_REQUEST_ERROR_H_

#include <vexel/platform/export.h>

#include <stdexcept>
#include <string>

namespace vexel {

// The one exception of the kit; its text is what a user reads, in one line without a full stop.
class VEXEL_API Error : public std::runtime_error {
 public:
  enum class Kind {
    request,  // it cannot be asked for: a wrong name, number or combination
    failure,  // it cannot be done: a file that is missing or damaged, a full disk
  };

  Error(Kind why, const std::string& text) : std::runtime_error(text), kind_(why) {}

  Kind GetKind() const noexcept { return kind_; }

  // True when a listener has heard the text already, so that to print it would be to say it twice.
  bool IsTold() const noexcept { return told_; }
  Error& SetTold() noexcept {
    told_ = true;
    return *this;
  }

 private:
  Kind kind_;
  bool told_ = false;
};

// For `throw WrongRequest("...")`.
inline Error WrongRequest(const std::string& text) { return {Error::Kind::request, text}; }
inline Error Failed(const std::string& text) { return {Error::Kind::failure, text}; }
inline Error Failed(const std::string& file, const std::string& text) {
  return {Error::Kind::failure, file + ": " + text};
}

}  // namespace vexel

#endif  // VEXEL_KIT_REQUEST_ERROR_H_
