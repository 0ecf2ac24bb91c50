// A text map in its compiled form.

#include "arguments.h"
#include "commands.h"
#include "kit/files/files.h"
#include "kit/request/error.h"
#include "kit/view/load.h"

namespace vexel::cli {

int Compile(int argc, const char* const* argv, CliHost& host) {
  std::string input;
  std::string output;
  Arguments arguments("vexel compile",
                      "Write the compiled form of a text map, which loads faster. Without -o it"
                      " stands beside the map, where data files find it.",
                      "vexel compile counties.map");
  arguments.Positional("MAP", "Text map", input);
  arguments.Option("-o,--output", "FILE", "The compiled map; its name ends in mpc", output);
  if (!arguments.Parse(argc, argv)) return kDone;
  if (IsCompiledName(input)) throw WrongRequest(input + " is a compiled map already");
  if (output.empty()) output = WithExtension(input, ".mpc");
  if (!IsCompiledName(output)) {
    throw WrongRequest(output + ": the name of a compiled map ends in mpc");
  }
  CVELAMap map;
  LoadMap(map, input, 0, host);
  const SignalHold hold;
  host.SetSubject(output);
  if (map.SaveMpc(CVELAString(std::string_view(output))) == 0) throw host.LastError();
  return kDone;
}

}  // namespace vexel::cli
