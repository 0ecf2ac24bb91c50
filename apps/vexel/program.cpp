#include "program.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>

#include "commands.h"
#include "host.h"
#include "kit/request/error.h"
#include "memory.h"

namespace vexel::cli {

namespace {

int SayUsage(const Error& error, std::string_view command) {
  const bool isKnown = !command.empty();
  Say({command, isKnown ? ": " : "", error.what()});
  std::fprintf(stderr, "Try '%.*s%s%.*s --help'.\n", static_cast<int>(kProgram.name.size()),
               kProgram.name.data(), isKnown ? " " : "", static_cast<int>(command.size()),
               command.data());
  return kWrongUsage;
}

// An exception takes memory itself, and may find none; the libraries below make some objects before
// main begins, where nobody catches one. Whatever else ends the program so is a fault of it.
[[noreturn]] void EndWithoutMemory() {
  try {
    if (std::current_exception() != nullptr) throw;
  } catch (const std::bad_alloc&) {
  } catch (...) {
    std::abort();
  }
  Say(kNoMemory);
  std::_Exit(kFailed);
}

// Comes before the objects with constructors, of this program and of what it is linked to.
[[gnu::constructor(101)]] void PrepareForNoMemory() { std::set_terminate(EndWithoutMemory); }

}  // namespace

int RunToStatus(int (*body)(int argc, const char* const* argv), int argc, const char* const* argv,
                std::string_view command) {
  PreferLargePages();
  try {
    const int status = body(argc, argv);
    if (std::fflush(stdout) == 0) return status;
    Say("standard output cannot be written");
  } catch (const Error& error) {
    if (error.GetKind() == Error::Kind::request) return SayUsage(error, command);
    if (!error.IsTold()) Say(error.what());
  } catch (const std::bad_alloc&) {
    Say(kNoMemory);
  } catch (const std::exception& error) {
    Say(error.what());
  }
  return kFailed;
}

}  // namespace vexel::cli
