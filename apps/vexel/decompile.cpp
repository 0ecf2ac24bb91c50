// A compiled map as text again.

#include "arguments.h"
#include "commands.h"
#include "failure.h"
#include "files.h"
#include "load.h"

namespace vexel::cli {

namespace {

bool LoadsWithoutFloats(const std::string& path, CliHost& host) {
  CVELAMap map;
  try {
    LoadMap(map, path, 0, host);
    return true;
  } catch (const Failure&) {
    return false;
  }
}

// Loads both halves of a compiled map, and says so when only the first one can be read.
void LoadBothHalves(CVELAMap& map, const std::string& path, CliHost& host) {
  try {
    LoadMap(map, path, 1, host);
  } catch (const Failure&) {
    if (host.HasSpoken() || !LoadsWithoutFloats(path, host)) throw;
    throw Failure(path, "its second half, which holds the map units, is missing or damaged");
  }
}

}  // namespace

int Decompile(int argc, const char* const* argv, CliHost& host) {
  std::string input;
  std::string output;
  Arguments arguments("decompile",
                      "Write the text form of a compiled map. It is in plane coordinates with four"
                      " decimals.",
                      "vexel decompile counties.mpc -o counties.map");
  arguments.Positional("MAP", "Compiled map", input);
  arguments.Option("-o,--output", "FILE", "The text map, or - for standard output", output);
  if (!arguments.Parse(argc, argv)) return kDone;
  if (!IsCompiledName(input)) throw UsageError(input + ": the name of a compiled map ends in mpc");
  if (output.empty()) throw UsageError("-o is missing");
  if (IsCompiledName(output)) {
    throw UsageError(output + ": a name that ends in mpc is one of a compiled map");
  }
  CVELAMap map;
  LoadBothHalves(map, input, host);
  WriteThrough(output, [&](const std::string& path) {
    host.SetSubject(output);
    map.SaveMap(CVELAString(std::string_view(path)), nullptr);
    return !host.HasSpoken();
  });
  return kDone;
}

}  // namespace vexel::cli
