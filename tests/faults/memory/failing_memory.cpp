// Stands before the allocating functions of the GNU C library, in a program of tests or, as a
// shared object of its own, in any other. What operator new and gd allocate comes through here as
// well.

#include "failing_memory.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <cstddef>
#include <cstdlib>
#include <string_view>

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
}

namespace vexel::test {

namespace {

constinit std::atomic<long> count{0};
constinit std::atomic<long> first{0};
constinit std::atomic<bool> isForGood{false};

bool Fails() noexcept {
  const long number = ++count;
  const long failing = first.load(std::memory_order_relaxed);
  if (failing == 0 || number < failing || (number > failing && !isForGood)) return false;
  errno = ENOMEM;
  return true;
}

// Null for a process that nobody has told anything.
const char* Command() noexcept { return std::getenv(kFailingVariable); }

[[gnu::constructor]] void Begin() {
  const std::string_view command = Command() == nullptr ? "" : Command();
  const std::size_t blank = command.find(' ');
  if (blank == command.npos || command.starts_with("none")) return FailMemory(Failing::none, 0);
  long number = 0;
  std::from_chars(command.data() + blank + 1, command.data() + command.size(), number);
  FailMemory(command.starts_with("once") ? Failing::once : Failing::forGood, number);
}

[[gnu::destructor]] void End() {
  constexpr std::string_view kNone = "none ";
  if (Command() == nullptr || !std::string_view(Command()).starts_with(kNone)) return;
  std::array<char, 24> text{};
  const char* const end = std::to_chars(text.begin(), text.end(), CountOfAllocations()).ptr;
  const int file = ::open(Command() + kNone.size(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
  if (::write(file, text.data(), static_cast<std::size_t>(end - text.data())) < 0) std::abort();
  ::close(file);
}

}  // namespace

void FailMemory(Failing failing, long number) noexcept {
  first = 0;
  count = 0;
  isForGood = failing == Failing::forGood;
  first = failing == Failing::none ? 0 : number;
}

long CountOfAllocations() noexcept { return count; }

}  // namespace vexel::test

using vexel::test::Fails;

extern "C" {

void* malloc(std::size_t size) { return Fails() ? nullptr : __libc_malloc(size); }

void* calloc(std::size_t number, std::size_t size) {
  return Fails() ? nullptr : __libc_calloc(number, size);
}

void* realloc(void* block, std::size_t size) {
  return Fails() ? nullptr : __libc_realloc(block, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
  return Fails() ? nullptr : __libc_memalign(alignment, size);
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size) {
  void* const found = Fails() ? nullptr : __libc_memalign(alignment, size);
  if (found == nullptr) return ENOMEM;
  *block = found;
  return 0;
}

}  // extern "C"
