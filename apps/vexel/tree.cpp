// vexel tree: the areas of a map as a listing.

#include "arguments.h"
#include "commands.h"
#include "failure.h"
#include "files.h"
#include "load.h"
#include "map/map.h"

namespace vexel::cli {

int Tree(CliHost& host, int argc, const char* const* argv) {
  std::string input;
  std::string output = "-";
  std::string baseUrl;
  Arguments arguments(
      "tree", "List the areas of a map with the links of their keys.",
      "vexel tree us-counties.map -o areas.txt --base-url https://example.org/area?");
  arguments.Positional("MAP", "Text or compiled map", input);
  arguments.Option("-o,--output", "FILE", "Listing to write; \"-\" is standard output (default)",
                   output);
  arguments.Option("--base-url", "URL", "What the links begin with", baseUrl);
  if (!arguments.Parse(argc, argv)) return kDone;
  CVELAMap map;
  LoadMap(map, input, 0, host);
  WriteThrough(output, [&](const std::string& path) {
    const SignalHold hold;
    if (map.WriteTreeFile(path.c_str(), baseUrl.c_str()) == 0) {
      throw Failure(output, "cannot be written");
    }
  });
  return kDone;
}

}  // namespace vexel::cli
