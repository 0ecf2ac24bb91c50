// What the programs of this command line have in common: how they name themselves, and what becomes
// of that which goes wrong.

#ifndef VEXEL_APPS_VEXEL_PROGRAM_H_
#define VEXEL_APPS_VEXEL_PROGRAM_H_

#include <string_view>

namespace vexel::cli {

struct Program {
  std::string_view name;    // begins every line of its talk
  std::string_view render;  // how one calls its Render: "vexel render"
  std::string_view medium;  // of a page of which nothing else is said
};

// Each program has its own.
extern const Program kProgram;

inline constexpr std::string_view kNoMemory = "out of memory";

// Runs `body` with the arguments of the program and returns the exit status: what it gives, or that
// of what it throws, which is said in a line. After wrong usage the user is told to ask for help,
// with the sub-command unless it is empty.
int RunToStatus(int (*body)(int argc, const char* const* argv), int argc, const char* const* argv,
                std::string_view command);

}  // namespace vexel::cli

#endif  // VEXEL_APPS_VEXEL_PROGRAM_H_
