// The tree of a map's areas as a listing for a web page.

#include "arguments.h"
#include "commands.h"
#include "kit/files/files.h"
#include "kit/request/error.h"
#include "kit/view/load.h"

namespace vexel::cli {

int Tree(int argc, const char* const* argv, CliHost& host) {
  std::string input;
  std::string output;
  std::string baseUrl;
  bool hasBaseUrl = false;
  Arguments arguments("vexel tree", "List the areas of a map, group by group, for a web page.",
                      "vexel tree counties.map -o counties.tree --base-url http://maps.example/?");
  arguments.Positional("MAP", "Text or compiled map", input);
  arguments.Option("-o,--output", "FILE", "The listing, or - for standard output", output);
  arguments.Option("--base-url", "URL",
                   "What the links of all areas begin with; must be given, if only as \"\"",
                   [&](std::string_view text) {
                     baseUrl = text;
                     hasBaseUrl = true;
                   });
  if (!arguments.Parse(argc, argv)) return kDone;
  if (output.empty()) throw WrongRequest("-o is missing");
  if (!hasBaseUrl) throw WrongRequest("--base-url is missing");

  CVELAMap map;
  LoadMap(map, input, 0, host);
  WriteThrough(output, [&](const std::string& path) {
    if (map.WriteTreeFile(CVELAString(std::string_view(path)),
                          CVELAString(std::string_view(baseUrl))) == 0) {
      throw Failed(output, "cannot be written");
    }
  });
  return kDone;
}

}  // namespace vexel::cli
