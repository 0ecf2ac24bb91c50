// Loading a map by its file's name.

#include <array>

#include "brindle/meant_word.h"
#include "brindle/progress.h"
#include "brindle/specfile.h"
#include "map/formats.h"
#include "map/key_check.h"
#include "map/map.h"
#include "messages/messages.h"
#include "platform/archive.h"
#include "platform/host.h"

using vexel::Message;
using vexel::MessageText;
using vexel::Tell;

int CVELAMap::Build(const CString& path, int loadFloats, int showProgress) {
  int loaded = 0;
  if (vexel::IsCompiledMapName(path.View())) {
    loaded = BuildCompiled(path, loadFloats);
    if (loaded == 0) return 0;
  } else {
    loaded = BuildText(path, showProgress);
  }
  CFileStatus status;
  CFile::GetStatus(path.GetString(), status);
  SetFileStatus(status);
  return loaded;
}

int CVELAMap::BuildCompiled(const CString& path, int loadFloats) {
  CFile file;
  if (file.Open(path.GetString(), CFile::typeBinary) == 0) {
    vexel::TellOfFile(CHost::error, Message::compiledMapNotOpened, file, path);
    return 0;
  }
  constexpr int kReadBlock = 64 * 1024;
  CArchive ar(&file, CArchive::load, kReadBlock);
  const int firstChild = GetNumChildren();
  int nodesBefore = -1;  // without the map itself, which the file tells again
  Count(nodesBefore);
  bytesBehind = 0;
  Serialize(ar, loadFloats);
  if (compiledValid == 0) {
    CString shown = path;
    Tell(CHost::ok, Message::invalidMapFile, {.file = path.View()}, shown.MakeUpper());
    return 0;
  }
  const int nodes = PrepareTree() - nodesBefore;
  if (EndsInFloats(nodes)) {
    CHost::GetCurrent().Remark({.kind = vexel::RemarkKind::endsInFloats, .file = path.View()});
  }
  floatsLoaded = loadFloats;
  vexel::RemarkOnKeys(*this, firstChild, {}, path.View());
  return 1;
}

int CVELAMap::BuildText(const CString& path, int showProgress) {
  CProgressDlg dialog(0);
  CSpecFile spec(0);
  if (spec.Open(path.GetString(), 0) == 0) {
    const std::string reason = spec.GetReason();
    CHost::GetCurrent().Remark(
        {.kind = vexel::RemarkKind::notOpened, .file = path.View(), .reason = reason});
    return 0;
  }
  const int length = static_cast<int>(spec.GetLength() / vexel::kBytesPerProgressStep);
  if (showProgress != 0) {
    dialog.Create(nullptr);
    dialog.SetStatus(CString(MessageText(Message::loadingMap)).GetString());
    dialog.SetStep(1);
    dialog.SetRange(0, length);
  }
  int loaded = BuildBehindHeading(spec, showProgress != 0 ? &dialog : nullptr);
  if (spec.HasFailed()) {
    vexel::TellOfFile(CHost::warning, Message::readFailed, spec, path);
    loaded = 0;
  }
  if (showProgress != 0) {
    if (dialog.CheckCancelButton() != 0 || loaded == 0) {
      Tell(CHost::information, Message::mapNotLoaded, {.file = path.View()});
      loaded = 0;
    } else {
      dialog.SetPos(length);
    }
  }
  floatsLoaded = 1;
  PrepareTree();
  NormalizeCoords();
  RemarkOnPrecision(path.View());
  CheckForMissingPolygons(GetBoundRect(), path.View());
  spec.Close();
  return loaded;
}

// Passes over whatever stands before the heading of the map, and reads what stands behind it.
int CVELAMap::BuildBehindHeading(CSpecFile& spec, CProgressDlg* progress) {
  CSpecFile::Line line;
  constexpr std::array<std::string_view, 1> kHeading{"[Map]"};
  while (spec.NextLine(line)) {
    if (vexel::EqualNoCase(line.command, kHeading[0])) return Build(spec, progress);
    if (line.IsHeading() && !vexel::MeantWord(line.command, kHeading).empty()) {
      CHost::GetCurrent().Remark({.kind = vexel::RemarkKind::blanksInWord,
                                  .file = spec.GetPath(),
                                  .line = spec.lineNumber,
                                  .found = line.command,
                                  .taken = kHeading[0]});
    }
  }
  if (!spec.HasFailed()) Tell(CHost::ok, Message::noMapHeading, {.file = spec.GetPath()});
  return 0;
}

// Parents, levels and marks of a tree that has just been read. Returns the number of its nodes.
int CVELAMap::PrepareTree() {
  constexpr int kFirstDrawLevel = 1;
  drawLevel = kFirstDrawLevel;
  return InitTree(nullptr, 0, kFirstDrawLevel);
}
