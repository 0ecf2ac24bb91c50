// Writing the text form of a map.

#include <algorithm>
#include <array>
#include <charconv>

#include "brindle/progress.h"
#include "brindle/specfile.h"
#include "map/formats.h"
#include "map/map.h"
#include "messages/messages.h"

namespace {

using vexel::Message;

// Appends a coordinate with four decimals.
char* PutCoordinate(char* at, char* end, float value) {
  constexpr int kDecimals = 4;
  return std::to_chars(at, end, static_cast<double>(value), std::chars_format::fixed, kDecimals)
      .ptr;
}

}  // namespace

void CVELAMap::SaveMap(const CVELAString& path, CProgressDlg* progress) {
  CSpecFile spec(0);
  if (spec.Open(path.GetString(), 1) == 0) {
    vexel::TellOfFile(CHost::warning, Message::mapFileNotWritten, spec, path);
    return;
  }
  spec.PutLine("[Map]");
  spec.PutLine("Version", CVELAString(vexel::kTextVersion));
  spec.PutLine("MapName", GetName());
  spec.PutLine("LongLat", "No");
  spec.PutLine("");
  spec.PutLine("[AreaLevels]");
  for (int i = 1; i < std::min(numMapLevels, kMostLevels); ++i)
    spec.PutLine("Name", GetLevelName(i));
  for (const CMapOb* child : children) child->Save(spec, progress);
  if (spec.Close() == 0) vexel::TellOfFile(CHost::warning, Message::writeFailed, spec, path);
}

void CMapOb::Save(CSpecFile& spec, CProgressDlg* progress) const {
  const bool isGroup = GetNumChildren() > 0;
  spec.PutLine("");
  spec.PutLine(isGroup ? "[GeoGroup]" : "[GeoUnit]");
  spec.PutLine("Name", name);
  spec.PutLine("AreaStructure", area.GetAreasStr());
  // Outlines come before the holes in them.
  for (const bool holes : {false, true}) {
    for (const CPolygon* polygon : polygons) {
      if ((polygon->IsHole() != 0) == holes) polygon->Save(spec);
    }
  }
  if (progress != nullptr) progress->StepIt();
  if (!isGroup) return;
  for (const CMapOb* child : children) child->Save(spec, progress);
  spec.PutLine("");
  spec.PutLine("[EndGroup]");
}

void CPolygon::Save(CSpecFile& spec) const {
  spec.PutLine("");
  spec.PutLine("[Polygon]");
  if (hole != 0) spec.PutLine("Hole", "Yes");
  // The largest float has 39 digits before its point.
  std::array<char, 96> line;
  for (const tagVELAPOINTF& point : pointsF) {
    char* end = line.data() + line.size();
    char* at = PutCoordinate(line.data(), end, point.x);
    *at++ = ' ';
    at = PutCoordinate(at, end, point.y);
    spec.PutText({line.data(), at});
  }
}
