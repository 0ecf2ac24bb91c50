// A tool of the build: writes manual pages and completions of what the programs say of themselves.

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string>

#include "completion.h"
#include "description.h"
#include "man_page.h"
#include "vexel/version.h"

namespace {

void Write(const std::filesystem::path& path, const std::string& text) {
  std::filesystem::create_directories(path.parent_path());
  std::ofstream file(path, std::ios::binary);
  file << text;
  if (!file.flush()) throw std::runtime_error(path.string() + " cannot be written");
}

void WriteAll(const std::string& programs, const std::filesystem::path& target) {
  using namespace vexel::manuals;
  const std::vector<Command> commands = DescribeCommands(programs);
  for (const Command& command : commands) {
    Write(target / "man1" / (PageName(command) + ".1"), ManPage(command, VEXEL_VERSION));
  }
  Write(target / "man1" / "vexel.1", Overview(commands, VEXEL_VERSION));
  Write(target / "bash" / "vexel", BashCompletion(commands));
  Write(target / "zsh" / "_vexel", ZshCompletion(commands));
  Write(target / "fish" / "vexel.fish", FishCompletion(commands));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fputs("usage: vexel_manuals PROGRAMS TARGET\n", stderr);
    return 2;
  }
  try {
    WriteAll(argv[1], argv[2]);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "vexel_manuals: %s\n", error.what());
    return 1;
  }
  return 0;
}
