// vexel compile: a text map becomes a compiled one.

#include "arguments.h"
#include "commands.h"
#include "failure.h"
#include "files.h"
#include "load.h"
#include "map/map.h"

namespace vexel::cli {

int Compile(CliHost& host, int argc, const char* const* argv) {
  std::string input;
  std::string output;
  Arguments arguments("compile", "Turn a text map into a compiled map, which loads much faster.",
                      "vexel compile us-counties.map");
  arguments.Positional("MAP", "Text map; \"-\" is standard input", input);
  arguments.Option("-o,--output", "FILE", "Compiled map to write (default: MAP with .mpc)", output);
  if (!arguments.Parse(argc, argv)) return kDone;
  if (IsCompiledName(input)) throw UsageError(input + " is a compiled map already");
  if (output.empty()) {
    if (IsStandard(input)) throw UsageError("give the compiled map's name with -o");
    output = WithExtension(input, ".mpc");
  }
  CVELAMap map;
  LoadMap(map, IsStandard(input) ? "/dev/stdin" : input, 1, host);
  WriteThrough(output, [&](const std::string& path) {
    host.SetSubject(output);
    const SignalHold hold;
    if (map.SaveMpc(path.c_str()) == 0) throw Failure();
  });
  return kDone;
}

}  // namespace vexel::cli
