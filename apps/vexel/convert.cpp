// vexel convert: a data file is read and written again.

#include "arguments.h"
#include "brindle/specfile.h"
#include "commands.h"
#include "failure.h"
#include "files.h"
#include "load.h"
#include "map/map.h"

namespace vexel::cli {

namespace {

// A map whose path a command may set: a data file names its map by it.
class NamedMap : public CVELAMap {
 public:
  void SetMapPath(const std::string& path) { mapPath = path.c_str(); }
};

}  // namespace

int Convert(CliHost& host, int argc, const char* const* argv) {
  std::string input;
  std::string output;
  Arguments arguments(
      "convert",
      "Read a data file and write it again, in the current version, with the names "
      "of the map and the separators of the locale. The map is not touched; the new "
      "file names it as if both lay in one folder.",
      "vexel convert old.mdf -o new.mdf");
  arguments.Positional("DATA", "Data file", input);
  arguments.Option("-o,--output", "FILE", "Data file to write; \"-\" is standard output", output);
  if (!arguments.Parse(argc, argv)) return kDone;
  if (output.empty()) throw UsageError("give the new file's name with -o");
  NamedMap map;
  CVELAData data;
  map.data = &data;
  data.map = &map;
  LoadData(data, input, "", host);
  map.SetMapPath(WithExtension(map.GetFileStatus().fullName.GetString(), ""));
  WriteThrough(output, [&](const std::string& path) {
    const SignalHold hold;
    CSpecFile file(0);
    if (file.Open(path.c_str(), 1) == 0) throw Failure(output, "cannot be opened for writing");
    map.SaveMdfSpec(file);
    if (file.Close() == 0) throw Failure(output, "cannot be written");
  });
  return kDone;
}

}  // namespace vexel::cli
