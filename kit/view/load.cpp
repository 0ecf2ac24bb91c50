#include "kit/view/load.h"

#include <vexel/brindle/specfile.h>
#include <vexel/map/formats.h>
#include <vexel/messages/messages.h>
#include <vexel/platform/exceptions.h>

#include "kit/files/files.h"
#include "kit/files/looks.h"

namespace vexel {

namespace {

CString Text(std::string_view text) { return CString(text); }

// The path without extension of the map that a data file names from a folder; empty when it names
// none.
std::string MapNameIn(const std::string& path, const std::string& folder) {
  CSpecFile file(0);
  CSpecFile::Line line;
  if (file.Open(path.c_str(), 0) == 0 || !file.NextLine(line)) return {};
  if (!EqualNoCase(line.command, "[MapDataFile]")) return {};
  while (file.NextLine(line) && !line.IsHeading()) {
    if (!EqualNoCase(line.command, "MapFile")) continue;
    const std::string value(line.argument);
    return value.empty() || value.find(':') != std::string::npos ? value : folder + value;
  }
  return {};
}

// The map that a data file names, as the library finds it. Knowing it beforehand lets a message
// name the file it is about, and the map show its progress. Empty when there is nothing to load:
// the library then says why.
std::string NamedMap(const std::string& path, const std::string& folder) {
  const std::string name = MapNameIn(path, folder);
  return name.empty() ? name : std::string(NewerMapFile(Text(name)).View());
}

// Refuses a file that is clearly something else, and says what it is.
void CheckLooks(const std::string& path, const std::string& subject, FileKind wanted,
                const std::string& article) {
  const FileLooks looks = LooksOfFile(path);
  if (looks.kind == wanted || looks.kind == FileKind::unknown) return;
  throw Failed(subject, "looks like " + std::string(looks.name) + ", not like " + article + ": " +
                            std::string(looks.advice));
}

struct Source {
  std::string path;
  std::string folder;   // where the name of the map counts from
  std::string subject;  // what messages call it
};

void LoadRows(CVELAData& data, const Source& source, std::string mapPath, Listener& host) {
  CheckLooks(source.path, source.subject, FileKind::dataFile, "a data file");
  if (mapPath.empty()) mapPath = NamedMap(source.path, source.folder);
  if (!mapPath.empty()) LoadMap(*data.map, mapPath, 0, host);
  host.SetSubject(source.subject);
  if (data.Build(Text(source.path), mapPath.empty() ? 1 : 0, 0) == 0) {
    if (host.HasSpoken()) throw host.LastError();
    throw Failed(source.subject, "the file ends where its table should begin");
  }
  data.map->SetAreaDataPointers(&data);
}

}  // namespace

bool IsCompiledName(std::string_view path) { return IsCompiledMapName(path); }

std::vector<std::string> MapFilesOf(const std::string& path) {
  const std::string name = MapNameIn(path, FolderOf(path));
  if (name.empty()) return {};
  return {name + ".map", name + ".mpc"};
}

void LoadMap(CVELAMap& map, const std::string& path, int loadFloats, Listener& host) {
  CheckReadable(path);
  const bool isCompiled = IsCompiledName(path);
  CheckLooks(path, path, isCompiled ? FileKind::compiledMap : FileKind::textMap,
             isCompiled ? "the compiled map that its name promises" : "a text map");
  host.SetSubject(path);
  try {
    if (map.Build(Text(path), loadFloats, host.ShowsProgress() ? 1 : 0) != 0) return;
  } catch (const CArchiveException& error) {
    throw Failed(path, error.cause == CArchiveException::endOfFile
                           ? std::string(MessageText(Message::compiledEndsEarly))
                           : error.what());
  }
  if (host.HasSpoken()) throw host.LastError();
  throw Failed(path, "the map cannot be opened");
}

void LoadData(CVELAData& data, const std::string& path, const std::string& mapPath,
              Listener& host) {
  if (!IsStandard(path)) {
    CheckReadable(path);
    LoadRows(data, {path, FolderOf(path), path}, mapPath, host);
    return;
  }
  // Read twice, and so kept in between.
  const StandardInputCopy copy;
  LoadRows(data, {copy.Path(), "", "standard input"}, mapPath, host);
}

}  // namespace vexel
