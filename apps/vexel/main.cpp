// The program `vexel`: picks the sub-command, and turns what goes wrong into a line and a status.

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "commands.h"
#include "host.h"
#include "kit/request/error.h"
#include "kit/request/hints.h"
#include "memory.h"
#include "vexel/version.h"

namespace vexel::cli {

namespace {

struct Command {
  std::string_view name;
  std::string_view summary;
  int (*run)(int argc, const char* const* argv, CliHost& host);
};

constexpr std::array kCommands{
    Command{"render", "Draw a map page as a GIF, with a web page and a report", Render},
    Command{"locate", "Tell which area a page shows at a pixel", Locate},
    Command{"info", "Tell what is in a map, a compiled map or a data file", Info},
    Command{"compile", "Write the compiled form of a text map", Compile},
    Command{"decompile", "Write the text form of a compiled map", Decompile},
    Command{"convert", "Read a data file and write it again", Convert},
    Command{"check", "List what is doubtful in maps and data files", Check},
    Command{"palettes", "Show the palettes by name", ShowPalettes},
    Command{"tree", "List the areas of a map for a web page", Tree},
};

constexpr std::string_view kNoMemory = "out of memory";

void PrintHelp() {
  std::string text =
      "Thematic maps: areas and statistics in, a picture with legend and image map out.\n"
      "\n"
      "Usage: vexel COMMAND [OPTIONS]\n"
      "\n"
      "Commands:\n";
  for (const Command& command : kCommands) {
    constexpr std::size_t kWidth = 11;
    text += "  " + std::string(command.name) + std::string(kWidth - command.name.size(), ' ');
    text.append(command.summary).append("\n");
  }
  text +=
      "\n"
      "Options:\n"
      "  -h, --help     Print this help and exit\n"
      "  --version      Print the version and exit\n"
      "\n"
      "`vexel help COMMAND` tells more about each.\n"
      "\n"
      "Example:\n"
      "  vexel render counties.mdf --level 2 -o counties.gif --html counties.html\n";
  std::fputs(text.c_str(), stdout);
}

const Command& CommandNamed(std::string_view name) {
  const auto* found = std::find_if(kCommands.begin(), kCommands.end(),
                                   [=](const Command& command) { return command.name == name; });
  if (found != kCommands.end()) return *found;
  std::vector<std::string_view> names;
  names.reserve(std::size(kCommands));
  for (const Command& command : kCommands) names.push_back(command.name);
  const std::string hint = Hint(name, names);
  throw WrongRequest((name.starts_with('-') ? "unknown option " : "unknown command ") +
                     std::string(name) + (hint.empty() ? "; there are " + Joined(names) : hint));
}

// What `vexel COMMAND --help` prints.
int Help(const char* name) {
  const std::array<const char*, 2> arguments{name, "--help"};
  CliHost host;
  return CommandNamed(name).run(static_cast<int>(arguments.size()), arguments.data(), host);
}

int Run(int argc, const char* const* argv) {
  if (argc < 2) throw WrongRequest("no command");
  const std::string_view first = argv[1];
  if (first == "help" && argc > 2) return Help(argv[2]);
  if (first == "--help" || first == "-h" || first == "help") {
    PrintHelp();
    return kDone;
  }
  if (first == "--version") {
    std::puts("vexel " VEXEL_VERSION);
    return kDone;
  }
  const Command& command = CommandNamed(first);
  CliHost host;
  const CurrentHost current(host);
  try {
    const int status = command.run(argc - 1, argv + 1, host);
    host.TellOfMoreMessages(false);
    host.TellOfMoreRemarks();
    return status;
  } catch (const Error& error) {
    host.TellOfMoreMessages(error.IsTold());
    throw;
  }
}

int SayUsage(const Error& error, const char* command) {
  const bool isKnown = *command != 0;
  Say({command, isKnown ? ": " : "", error.what()});
  std::fprintf(stderr, "Try 'vexel%s%s --help'.\n", isKnown ? " " : "", command);
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

int Main(int argc, const char* const* argv) {
  PreferLargePages();
  const auto isFirst = [=](const Command& command) { return argc > 1 && command.name == argv[1]; };
  const bool isKnown = std::any_of(kCommands.begin(), kCommands.end(), isFirst);
  try {
    const int status = Run(argc, argv);
    if (std::fflush(stdout) == 0) return status;
    Say("standard output cannot be written");
  } catch (const Error& error) {
    if (error.GetKind() == Error::Kind::request) return SayUsage(error, isKnown ? argv[1] : "");
    if (!error.IsTold()) Say(error.what());
  } catch (const std::bad_alloc&) {
    Say(kNoMemory);
  } catch (const std::exception& error) {
    Say(error.what());
  }
  return kFailed;
}

}  // namespace vexel::cli

int main(int argc, char** argv) { return vexel::cli::Main(argc, argv); }
