// Stands before the functions of the C library.

#include "failing_calls.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace vexel::test {

namespace {

constinit std::array<char, 16> call{};
constinit std::array<char, 16> what{};
constinit int from = 0;
constinit int count = 0;

bool IsIt(const std::array<char, 16>& word, std::string_view text) noexcept {
  return std::string_view(word.data()) == text;
}

bool IsRegular(int file) noexcept {
  struct stat status {};
  return ::fstat(file, &status) == 0 && S_ISREG(status.st_mode);
}

// Counts a call, and says whether the order is about it.
bool IsMeant(std::string_view name) noexcept { return IsIt(call, name) && ++count >= from; }

bool Fails() noexcept {
  const bool isFirst = count == from;
  if (IsIt(what, "signal") && isFirst) std::raise(SIGINT);
  if (IsIt(what, "waits") && isFirst) ::usleep(500'000);
  const bool isInterrupted = IsIt(what, "interrupted") && (count - from) % 2 == 0;
  errno = isInterrupted ? EINTR : EIO;
  return isInterrupted || IsIt(what, "fails");
}

[[gnu::constructor]] void Begin() { FailCalls(std::getenv(kFailingCalls)); }

}  // namespace

void FailCalls(const char* order) noexcept {
  call = what = {};
  count = 0;
  if (order != nullptr) std::sscanf(order, "%15s %15s %d", call.data(), what.data(), &from);
}

}  // namespace vexel::test

using namespace vexel::test;  // NOLINT: the functions below are the system's

extern "C" {

ssize_t read(int file, void* bytes, std::size_t size) {
  if (IsRegular(file) && IsMeant("read") && Fails()) return -1;
  return ::syscall(SYS_read, file, bytes, size);
}

ssize_t write(int file, const void* bytes, std::size_t size) {
  if (IsRegular(file) && IsMeant("write")) {
    if (Fails()) return -1;
    if (IsIt(what, "cut")) size = (size + 1) / 2;
  }
  return ::syscall(SYS_write, file, bytes, size);
}

int close(int file) {
  const bool isWritten = (::fcntl(file, F_GETFL) & O_ACCMODE) != O_RDONLY;
  const bool fails = isWritten && IsRegular(file) && IsMeant("close") && Fails();
  const int error = errno;
  const auto result = static_cast<int>(::syscall(SYS_close, file));
  if (!fails) return result;
  errno = error;
  return -1;
}

int rename(const char* before, const char* after) noexcept {
  if (IsMeant("rename") && Fails()) return -1;
  return static_cast<int>(::syscall(SYS_renameat, AT_FDCWD, before, AT_FDCWD, after));
}

}  // extern "C"
