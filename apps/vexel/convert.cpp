// A data file read and written again.

#include <vexel/brindle/specfile.h>

#include "arguments.h"
#include "commands.h"
#include "kit/files/files.h"
#include "kit/report/summary.h"
#include "kit/request/error.h"
#include "kit/view/load.h"

namespace vexel::cli {

namespace {

constexpr std::string_view kMapLine = "MapFile=";

// The name by which a data file in `folder` finds the map, without its extension.
std::string ReferenceTo(const std::string& mapPath, const std::string& folder) {
  return WithExtension(RelativeTo(mapPath, folder), "");
}

// Puts the reference to the map into a data file that the library has written, which knows maps
// only by their bare name.
std::string WithReference(std::string text, const std::string& reference) {
  const std::size_t line = text.find(kMapLine);
  const std::size_t value = line + kMapLine.size();
  return text.replace(value, text.find('\n', value) - value, reference);
}

std::string DataFileText(CVELAMap& map) {
  const TemporaryFolder folder("data");
  const std::string& path = folder.FilePath();
  CSpecFile file(0);
  if (file.Open(path.c_str(), 1) == 0) throw Failed(path, "cannot be opened for writing");
  map.SaveMdfSpec(file);
  if (file.Close() == 0) throw Failed(path, "cannot be written");
  return ReadFile(path);
}

}  // namespace

int Convert(int argc, const char* const* argv, CliHost& host) {
  std::string input;
  std::string output;
  Arguments arguments("vexel convert",
                      "Read a map data file and write it again in the current form: all names"
                      " filled in, separators of the locale, the map where it is. No map is"
                      " compiled.",
                      "vexel convert old.mdf -o new.mdf");
  arguments.Positional("DATA", "Map data file, or - for standard input, of 1 GB at most", input);
  arguments.Option("-o,--output", "FILE", "The new file, or - for standard output", output);
  if (!arguments.Parse(argc, argv)) return kDone;
  if (output.empty()) throw WrongRequest("-o is missing");

  CVELAMap map;
  CVELAData data;
  map.data = &data;
  data.map = &map;
  LoadData(data, input, "", host);
  const std::string mapPath(map.GetFileStatus().fullName.View());
  if (mapPath.empty()) throw Failed(input, "the file names no map");
  if (data.GetNumVars() < 1) throw Failed(input, "the file holds no variable");
  for (const char* extension : {".map", ".mpc"}) {
    if (IsSameFile(WithExtension(mapPath, extension), output)) {
      throw WrongRequest(output + " would take the place of the map");
    }
  }
  const std::string folder = IsStandard(output) ? "" : FolderOf(output);
  const std::string lost = host.GetLostRows().empty() ? "" : LostRowsText(host.GetLostRows());
  const SignalHold hold;
  WriteText(output, WithReference(DataFileText(map), ReferenceTo(mapPath, folder)));
  if (!lost.empty()) Say(lost);
  return kDone;
}

}  // namespace vexel::cli
