// The palettes, as coloured bars or as JSON.

#include "kit/palettes/palettes.h"

#include <unistd.h>

#include <cstdlib>
#include <string_view>

#include "arguments.h"
#include "commands.h"
#include "kit/files/files.h"

namespace vexel::cli {

namespace {

// Colours are for a terminal that has not asked to be spared them.
bool WantsColor() {
  const char* terminal = std::getenv("TERM");
  const char* none = std::getenv("NO_COLOR");
  return ::isatty(STDOUT_FILENO) != 0 && (none == nullptr || *none == '\0') &&
         terminal != nullptr && std::string_view(terminal) != "dumb";
}

}  // namespace

int ShowPalettes(int argc, const char* const* argv, CliHost& /*host*/) {
  bool asJson = false;
  Arguments arguments("vexel palettes",
                      "Show the palettes, by the names that --palette takes, and which of them stay"
                      " apart for colour-blind readers. On a terminal each has a bar of its colours"
                      " for seven groups.",
                      "vexel palettes --json");
  arguments.Flag("--json", "Print JSON, with the colours for each number of groups", asJson);
  if (!arguments.Parse(argc, argv)) return kDone;
  WriteText("-", asJson ? PalettesJson() : PalettesText(WantsColor()));
  return kDone;
}

}  // namespace vexel::cli
