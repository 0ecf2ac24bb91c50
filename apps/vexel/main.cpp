// The program `vexel`: picks the sub-command.

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "arguments.h"
#include "commands.h"
#include "host.h"
#include "kit/request/error.h"
#include "kit/request/hints.h"
#include "kit/request/json_text.h"
#include "other_program.h"
#include "program.h"
#include "vexel/version.h"

namespace vexel::cli {

namespace {

// What this program does itself, or another that stands beside it.
struct Command {
  std::string_view name;
  std::string_view summary;
  int (*run)(int argc, const char* const* argv, CliHost& host);
  const char* program = nullptr;  // in place of `run`
};

constexpr std::array kCommands{
    Command{"render", "Draw a map page, with a web page and a report", Render},
    Command{"locate", "Tell which area a page shows at a pixel", Locate},
    Command{"info", "Tell what is in a map, a compiled map or a data file", Info},
    Command{"compile", "Write the compiled form of a text map", Compile},
    Command{"decompile", "Write the text form of a compiled map", Decompile},
    Command{"convert", "Read a data file and write it again", Convert},
    Command{"check", "List what is doubtful in maps and data files", Check},
    Command{"import", "Make maps and data files of geodata and tables", nullptr, "vexel-import"},
    Command{"palettes", "Show the palettes by name", ShowPalettes},
    Command{"tree", "List the areas of a map for a web page", Tree},
    Command{"print", "Draw a page for publication, as PNG or PDF", nullptr, "vexel-print"},
    Command{"serve", "Show data sets in a browser", nullptr, "vexel-serve"},
};

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

int Start(const Command& command, int argc, const char* const* argv, CliHost& host) {
  if (command.program == nullptr) return command.run(argc, argv, host);
  return RunOtherProgram(command.program, "this command is the program", argv);
}

// What `vexel COMMAND --help` prints.
int Help(const char* name) {
  const std::array<const char*, 3> arguments{name, "--help", nullptr};
  CliHost host;
  return Start(CommandNamed(name), static_cast<int>(arguments.size()) - 1, arguments.data(), host);
}

// The list of commands as the build takes it.
int DescribeAll() {
  const char* between = "[";
  for (const Command& command : kCommands) {
    JsonWriter json;
    json.BeginObject();
    json.Member("name", command.name);
    json.Member("summary", command.summary);
    json.Member("isOther", command.program != nullptr);
    json.EndObject();
    std::fputs(between, stdout);
    std::puts(std::move(json).Take().c_str());
    between = ",\n";
  }
  std::puts("]");
  return kDone;
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
  if (first == kDescribe) return DescribeAll();
  const Command& command = CommandNamed(first);
  CliHost host;
  const CurrentHost current(host);
  try {
    const int status = Start(command, argc - 1, argv + 1, host);
    host.TellOfMoreMessages(false);
    host.TellOfMoreRemarks();
    return status;
  } catch (const Error& error) {
    host.TellOfMoreMessages(error.IsTold());
    throw;
  }
}

}  // namespace

}  // namespace vexel::cli

int main(int argc, char** argv) {
  using namespace vexel::cli;
  const auto isFirst = [=](const Command& command) { return argc > 1 && command.name == argv[1]; };
  const bool isKnown = std::any_of(kCommands.begin(), kCommands.end(), isFirst);
  return RunToStatus(Run, argc, argv, isKnown ? argv[1] : "");
}
