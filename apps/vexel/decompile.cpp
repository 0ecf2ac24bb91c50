// vexel decompile: a compiled map becomes a text map again.

#include "arguments.h"
#include "commands.h"
#include "failure.h"
#include "files.h"
#include "load.h"
#include "map/map.h"

namespace vexel::cli {

int Decompile(CliHost& host, int argc, const char* const* argv) {
  std::string input;
  std::string output;
  Arguments arguments("decompile",
                      "Turn a compiled map into a text map. The compiled map must hold its float "
                      "coordinates, as those written by this program do.",
                      "vexel decompile us-counties.mpc -o us-counties.map");
  arguments.Positional("MAP", "Compiled map", input);
  arguments.Option("-o,--output", "FILE", "Text map to write; \"-\" is standard output", output);
  if (!arguments.Parse(argc, argv)) return kDone;
  if (output.empty()) throw UsageError("give the text map's name with -o");
  if (!IsCompiledName(input))
    throw UsageError(input + " is no compiled map: its name does not end in mpc");
  CVELAMap map;
  LoadMap(map, input, 1, host);
  WriteThrough(output, [&](const std::string& path) {
    host.SetSubject(output);
    const SignalHold hold;
    map.SaveMap(path.c_str(), nullptr);
    if (host.HasSpoken()) throw Failure();
  });
  return kDone;
}

}  // namespace vexel::cli
