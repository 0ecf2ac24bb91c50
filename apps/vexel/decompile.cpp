// A compiled map as text again.

#include "arguments.h"
#include "commands.h"
#include "kit/files/files.h"
#include "kit/request/error.h"
#include "kit/view/load.h"

namespace vexel::cli {

namespace {

bool LoadsWithoutFloats(const std::string& path, CliHost& host) {
  CVELAMap map;
  try {
    LoadMap(map, path, 0, host);
    return true;
  } catch (const Error&) {
    return false;
  }
}

// Loads both halves of a compiled map, and says so when only the first one can be read.
void LoadBothHalves(CVELAMap& map, const std::string& path, CliHost& host) {
  try {
    LoadMap(map, path, 1, host);
  } catch (const Error&) {
    if (host.HasSpoken() || !LoadsWithoutFloats(path, host)) throw;
    throw Failed(path, "its second half, which holds the map units, is missing or damaged");
  }
}

}  // namespace

int Decompile(int argc, const char* const* argv, CliHost& host) {
  std::string input;
  std::string output;
  Arguments arguments("vexel decompile",
                      "Write the text form of a compiled map. It is in plane coordinates with four"
                      " decimals.",
                      "vexel decompile counties.mpc -o counties.map");
  arguments.Positional("MAP", "Compiled map", input);
  arguments.Option("-o,--output", "FILE", "The text map, or - for standard output", output);
  if (!arguments.Parse(argc, argv)) return kDone;
  if (!IsCompiledName(input))
    throw WrongRequest(input + ": the name of a compiled map ends in mpc");
  if (output.empty()) throw WrongRequest("-o is missing");
  if (IsCompiledName(output)) {
    throw WrongRequest(output + ": a name that ends in mpc is one of a compiled map");
  }
  CVELAMap map;
  LoadBothHalves(map, input, host);
  WriteThrough(output, [&](const std::string& path) {
    host.SetSubject(output);
    map.SaveMap(CVELAString(std::string_view(path)), nullptr);
    if (host.HasSpoken()) throw host.LastError();
  });
  return kDone;
}

}  // namespace vexel::cli
