// vexel: thematic maps on the command line.

#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "commands.h"
#include "failure.h"
#include "hints.h"
#include "host.h"
#include "platform/exceptions.h"

#ifndef VEXEL_VERSION
#define VEXEL_VERSION "unknown"
#endif

namespace vexel::cli {
namespace {

struct Command {
  std::string_view name;
  std::string_view summary;
  int (*run)(CliHost& host, int argc, const char* const* argv);
};

constexpr std::array kCommands{
    Command{"render", "draw a page from a data file", &Render},
    Command{"locate", "tell the area at a pixel of a page", &Locate},
    Command{"info", "tell what is in a map or a data file", &Info},
    Command{"compile", "turn a text map into a compiled map", &Compile},
    Command{"decompile", "turn a compiled map into a text map", &Decompile},
    Command{"convert", "read a data file and write it again", &Convert},
    Command{"tree", "list the areas of a map for a web page", &Tree},
};

void PrintHelp(std::FILE* to) {
  std::fputs(
      "Thematic maps: areas and statistics in, a picture with legend and image map out.\n\n"
      "Usage: vexel COMMAND [OPTIONS] ...\n\nCommands:\n",
      to);
  for (const Command& command : kCommands) {
    std::fprintf(to, "  %-12s%s\n", std::string(command.name).c_str(),
                 std::string(command.summary).c_str());
  }
  std::fputs(
      "\n  vexel COMMAND --help   tells more of a command, with an example\n"
      "  vexel --version        tells the version\n\n"
      "Exit status: 0 done, 1 refused or failed, 2 wrong usage.\n",
      to);
}

int RunCommand(int argc, const char* const* argv) {
  const std::string_view name = argc > 1 ? argv[1] : "--help";
  if (name == "--help" || name == "-h" || name == "help") {
    PrintHelp(argc > 1 ? stdout : stderr);
    return argc > 1 ? kDone : kWrongUsage;
  }
  if (name == "--version") {
    std::puts("vexel " VEXEL_VERSION);
    return kDone;
  }
  const auto* command = std::find_if(kCommands.begin(), kCommands.end(),
                                     [=](const Command& known) { return known.name == name; });
  if (command == kCommands.end()) {
    std::vector<std::string_view> names;
    for (const Command& known : kCommands) names.push_back(known.name);
    throw UsageError("unknown command \"" + std::string(name) + '"' + Hint(name, names) +
                     " The commands are " + Joined(names));
  }
  CliHost host;
  CHost::SetCurrent(&host);
  const int status = command->run(host, argc - 1, argv + 1);
  CHost::SetCurrent(nullptr);
  return status;
}

int Main(int argc, const char* const* argv) {
  try {
    return RunCommand(argc, argv);
  } catch (const UsageError& wrong) {
    Say(std::string(wrong.what()) + " (see vexel --help)");
    return kWrongUsage;
  } catch (const std::bad_alloc&) {
    Say("out of memory");
  } catch (const std::exception& failure) {
    if (*failure.what() != '\0') Say(failure.what());
  }
  return kFailed;
}

}  // namespace
}  // namespace vexel::cli

int main(int argc, char** argv) { return vexel::cli::Main(argc, argv); }
