// What every fuzz target shares: a folder for the files of the input at work, and a host that says
// nothing.

#ifndef VEXEL_FUZZ_SCRATCH_H_
#define VEXEL_FUZZ_SCRATCH_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/host.h"

namespace vexel::fuzz {

// Answers OK to every box, and cancels no load.
class QuietHost : public CHost {
 public:
  QuietHost() : before_(SetCurrent(this)) {}
  ~QuietHost() override { SetCurrent(before_); }

  int ShowBox(const CString& /*text*/, unsigned /*flags*/) override { return answerOk; }

 private:
  CHost* before_;
};

// A file in the folder of this process, in memory where the machine has such a file system.
CString PathOf(std::string_view name);
void WriteInput(std::string_view name, std::string_view bytes);
std::string ReadBack(std::string_view name);

// Ends the process with that word when a law does not hold: a finding.
void Require(bool holds, const char* law);

inline std::string_view AsText(const std::uint8_t* bytes, std::size_t size) {
  return {reinterpret_cast<const char*>(bytes), size};
}

}  // namespace vexel::fuzz

#endif  // VEXEL_FUZZ_SCRATCH_H_
