#include "map/text_reader.h"

#include <algorithm>
#include <array>
#include <limits>
#include <memory>
#include <span>
#include <string>
#include <utility>

#include "brindle/meant_word.h"
#include "brindle/progress.h"
#include "map/key_check.h"
#include "map/ring_check.h"
#include "messages/remarks.h"
#include "platform/host.h"
#include "platform/number.h"

namespace vexel {

namespace {

constexpr std::array<std::string_view, 12> kWords{
    "[AreaLevels]", "[GeoGroup]", "[GeoUnit]", "[EndGroup]", "[Polygon]",     "[Map]",
    "Version",      "MapName",    "LongLat",   "Name",       "AreaStructure", "Hole"};

bool IsNodeHeading(std::string_view heading) {
  return EqualNoCase(heading, "[GeoUnit]") || EqualNoCase(heading, "[GeoGroup]");
}

bool HasRoomForLevel(const CVELAMap& map) {
  return map.GetNumMapLevels() >= 0 && map.GetNumMapLevels() < CVELAMap::kMostLevels;
}

// Turned inside out, so that the first point becomes all four sides.
CRectF EmptyBounds() {
  constexpr float kFar = std::numeric_limits<float>::max();
  return {kFar, kFar, -kFar, -kFar};
}

void Widen(CRectF& bounds, const tagVELAPOINTF& point) {
  if (point.x < bounds.left) bounds.left = point.x;
  if (point.x > bounds.right) bounds.right = point.x;
  if (point.y < bounds.top) bounds.top = point.y;
  if (point.y > bounds.bottom) bounds.bottom = point.y;
}

}  // namespace

std::span<const std::string_view> MapWords() noexcept { return kWords; }

bool MapReader::ReadMap(CVELAMap& map) {
  const int firstChild = map.GetNumChildren();
  lines_.clear();
  CSpecFile::Line line;
  while (spec_.state == 0 && spec_.NextLine(line)) {
    if (line.IsHeading() && IsCancelled()) return false;
    if (EqualNoCase(line.command, "[AreaLevels]")) {
      ReadLevels(map);
    } else if (IsNodeHeading(line.command)) {
      spec_.UngetLine();
      if (!ReadTree(map)) return false;
    } else if (!ReadKeyword(map, line)) {
      RemarkOnWord(line.command);
      TellLine(Message::errorAtLine, line.command);
    }
  }
  if (!spec_.HasFailed()) RemarkOnKeys(map, firstChild, lines_, spec_.GetPath());
  return true;
}

bool MapReader::ReadKeyword(CVELAMap& map, const CSpecFile::Line& line) {
  if (EqualNoCase(line.command, "Version")) return true;
  if (EqualNoCase(line.command, "MapName")) {
    if (!HasRoomForLevel(map)) return false;
    RemarkOnName(line.argument);
    map.SetName(CVELAString(line.argument));
    map.AddLevelName(map.GetName());
    return true;
  }
  if (!EqualNoCase(line.command, "LongLat")) return false;
  if (EqualNoCase(line.argument, "Yes")) {
    map.longLat = 1;
  } else if (!EqualNoCase(line.argument, "No")) {
    RemarkHere({.kind = RemarkKind::neitherYesNorNo, .found = line.argument});
  }
  return true;
}

void MapReader::ReadLevels(CVELAMap& map) {
  CSpecFile::Line line;
  while (spec_.state == 0 && spec_.NextLine(line)) {
    if (IsNodeHeading(line.command)) {
      spec_.UngetLine();
      return;
    }
    if (line.IsHeading()) {
      RemarkOnWord(line.command);
      TellLine(Message::invalidHeading, line.command);
      spec_.SkipSection();
      return;
    }
    if (EqualNoCase(line.command, "Name") && HasRoomForLevel(map)) {
      RemarkOnName(line.argument);
      map.AddLevelName(CVELAString(line.argument));
    } else {
      RemarkOnWord(line.command);
      TellLine(Message::unrecognizedCommand, line.command);
    }
  }
}

bool MapReader::ReadTree(CVELAMap& map) {
  if (map.GetNumMapLevels() == 0) {
    Tell(CHost::ok, Message::noAreaLevels, {.file = spec_.GetPath(), .line = spec_.lineNumber});
    return false;
  }
  if (map.GetName().IsEmpty()) RemarkHere({.kind = RemarkKind::noName, .columnName = "MapName"});
  inDegrees_ = map.GetLongLat() != 0;
  root_ = &map;
  CRectF& bounds = map.fileBoundsF;
  bounds = EmptyBounds();
  if (!ReadNode(map, true, bounds)) return false;
  map.SetBoundRectF({bounds.left, bounds.bottom, bounds.right, bounds.top});
  if (inDegrees_) RemarkOnFrame(bounds);
  return true;
}

bool MapReader::ReadNode(CMapOb& node, bool isGroup, CRectF& fileBounds) {
  const int headingLine = spec_.lineNumber;
  const CMapOb* around = std::exchange(node_, &node);
  const NodeEnd end = ReadLines(node, isGroup, fileBounds);
  if (end != NodeEnd::stopped) RemarkOnNode(node, isGroup, end, headingLine);
  node_ = around;
  return end != NodeEnd::stopped;
}

MapReader::NodeEnd MapReader::ReadLines(CMapOb& node, bool isGroup, CRectF& fileBounds) {
  CSpecFile::Line line;
  while (spec_.state == 0 && spec_.NextLine(line)) {
    if (line.IsHeading()) {
      const NodeEnd end = TakeHeading(node, line, isGroup, fileBounds);
      if (end != NodeEnd::open) return end;
    } else if (EqualNoCase(line.command, "AreaStructure")) {
      if (!ReadKey(node, line.argument)) {
        TellLine(Message::badAreaStructure, line.command);
        return NodeEnd::stopped;
      }
    } else if (EqualNoCase(line.command, "Name")) {
      RemarkOnName(line.argument);
      node.name.Assign(line.argument);
    } else {
      RemarkOnWord(line.command);
      TellLine(Message::errorAtLine, line.command);
    }
  }
  return NodeEnd::endOfFile;
}

MapReader::NodeEnd MapReader::TakeHeading(CMapOb& node, const CSpecFile::Line& line, bool isGroup,
                                          CRectF& fileBounds) {
  const auto openIf = [](bool goesOn) { return goesOn ? NodeEnd::open : NodeEnd::stopped; };
  const bool endsGroup = EqualNoCase(line.command, "[EndGroup]");
  if (endsGroup || IsNodeHeading(line.command)) {
    if (!isGroup) spec_.UngetLine();
    if (!isGroup) return NodeEnd::nextNode;
    if (endsGroup) return NodeEnd::endGroup;
    return openIf(ReadChild(node, EqualNoCase(line.command, "[GeoGroup]"), fileBounds));
  }
  if (EqualNoCase(line.command, "[Polygon]")) return openIf(ReadPolygonOf(node, fileBounds));
  RemarkOnWord(line.command);
  TellLine(Message::errorAtLine, line.command);
  spec_.SkipSection();
  return NodeEnd::otherHeading;
}

bool MapReader::ReadChild(CMapOb& parent, bool isGroup, CRectF& fileBounds) {
  if (isGroup && depth_ >= kDeepestNesting) {
    TellLine(Message::groupsTooDeep, {});
    return false;
  }
  lines_.push_back(spec_.lineNumber);
  auto child = std::make_unique<CMapOb>();
  ++depth_;
  const bool goesOn = ReadNode(*child, isGroup, fileBounds);
  --depth_;
  if (goesOn) parent.Adopt(std::move(child));
  return goesOn;
}

bool MapReader::ReadPolygonOf(CMapOb& node, CRectF& fileBounds) {
  auto polygon = std::make_unique<CPolygon>();
  CRectF& bounds = node.GetBoundRectF();
  CRectF earlier = bounds;
  if (!ReadPolygon(*polygon, bounds, fileBounds)) {
    bounds = earlier;
    return false;
  }
  node.Adopt(std::move(polygon));
  if (earlier.IsRectNull() == 0) {
    bounds.NormalizeRect();
    earlier.NormalizeRect();
    bounds.UnionRect(&bounds, &earlier);
  }
  // The polygon leaves the smallest y in `top`; a node keeps the largest there.
  std::swap(bounds.top, bounds.bottom);
  return true;
}

// Fills the codes from the top down; those without a token keep their value.
bool MapReader::ReadKey(CMapOb& node, std::string_view codes) {
  auto* code = node.area.codes.begin();
  for (auto token = TakeToken(codes, " ,"); !token.empty(); token = TakeToken(codes, " ,")) {
    if (code == node.area.codes.end() || !IsWholeNumber(token)) return false;
    const std::int64_t number = ToWholeNumber(token);
    *code = LowInt32(number);
    if (*code++ != number) {
      const std::string taken = std::to_string(LowInt32(number));
      RemarkHere({.kind = RemarkKind::beyondRange,
                  .columnName = "AreaStructure",
                  .found = token,
                  .taken = taken});
    }
  }
  return true;
}

bool MapReader::ReadPolygon(CPolygon& polygon, CRectF& polygonBounds, CRectF& fileBounds) {
  constexpr int kPointsPerProgress = 5;
  const int headingLine = spec_.lineNumber;
  int lastLine = headingLine;
  CRectF bounds = EmptyBounds();
  CSpecFile& spec = spec_;
  const bool hasProgress = progress_ != nullptr;
  bool goesOn = true;
  polygon.SetHole(0);
  while (goesOn && spec.state == 0) {
    double x = 0.0;
    double y = 0.0;
    if (!spec.NextPoint(x, y)) [[unlikely]] {
      lastLine = spec.lineNumber;
      const LineKind kind = ReadLine(polygon, x, y);
      if (kind == LineKind::heading || kind == LineKind::endOfFile) break;
      if (kind == LineKind::hole) continue;
      goesOn = kind == LineKind::point;
      if (!goesOn) break;
    }
    const tagVELAPOINTF point{NarrowToFloat(x), NarrowToFloat(y)};
    polygon.AddPointF(point);
    Widen(bounds, point);
    if (hasProgress && polygon.GetSizeF() % kPointsPerProgress == 0) goesOn = !IsCancelled();
  }
  // From here on the copy serves: a bound whose address is taken would not be kept in registers.
  polygonBounds = bounds;
  if (bounds.left <= bounds.right) {
    Widen(fileBounds, {bounds.left, bounds.top});
    Widen(fileBounds, {bounds.right, bounds.bottom});
  }
  if (goesOn && !spec_.HasFailed()) RemarkOnRing(polygon, polygonBounds, headingLine, lastLine);
  return goesOn;
}

// Any line but a plain point.
MapReader::LineKind MapReader::ReadLine(CPolygon& polygon, double& x, double& y) {
  CSpecFile::Line line;
  if (!spec_.NextLine(line)) return LineKind::endOfFile;
  if (line.IsHeading()) {
    spec_.UngetLine();
    return LineKind::heading;
  }
  if (line.command.front() == 'H') {
    RemarkOnHole(line);
    polygon.SetHole(1);
    return LineKind::hole;
  }
  std::string_view rest = line.command;
  const std::string_view first = TakeToken(rest, " ");
  const std::string_view second = TakeToken(rest, " ");
  if (second.empty()) {
    TellLine(Message::badCoordinates, line.command);
    return LineKind::bad;
  }
  x = ReadCoordinate(first, "x");
  y = ReadCoordinate(second, "y");
  rest = TrimBlanks(rest);
  if (!rest.empty()) RemarkHere({.kind = RemarkKind::surplusCoordinates, .found = rest});
  return LineKind::point;
}

double MapReader::ReadCoordinate(std::string_view text, const char* name) {
  const NumberReading reading = ReadNumber(text);
  const bool isFloat = std::abs(reading.value) <= double{std::numeric_limits<float>::max()};
  if (reading.fit != NumberFit::whole || !isFloat) {
    const double taken = NarrowToFloat(reading.value);
    const std::string takenText = ShortestText(taken);
    RemarkHere({.kind = isFloat ? RemarkKindOf(reading.fit) : RemarkKind::beyondRange,
                .columnName = name,
                .found = text,
                .taken = takenText});
  }
  return reading.value;
}

// Moves the progress bar to where the file is; true once the user has cancelled.
bool MapReader::IsCancelled() {
  if (progress_ == nullptr) return false;
  progress_->SetPos(static_cast<int>(spec_.GetPosition() / kBytesPerProgressStep));
  return progress_->CheckCancelButton() != 0;
}

// Shows a message with the number of the line and, where the text says so, what stands there.
void MapReader::TellLine(Message number, std::string_view found) {
  const CVELAString key = node_ == nullptr ? CVELAString() : node_->GetArea().GetAreasStr();
  Tell(CHost::ok, number,
       {.file = spec_.GetPath(),
        .line = spec_.lineNumber,
        .area = key.View(),
        .name = node_ == nullptr ? std::string_view() : node_->GetName().View(),
        .found = found},
       spec_.lineNumber, found);
}

void MapReader::RemarkAt(int line, RemarkInfo remark) {
  const CVELAString key = node_ == nullptr ? CVELAString() : node_->GetArea().GetAreasStr();
  remark.file = spec_.GetPath();
  remark.line = line;
  remark.area = key.View();
  CHost::GetCurrent().Remark(remark);
}

void MapReader::RemarkOnName(std::string_view name) {
  if (!IsUtf8(name)) RemarkHere({.kind = RemarkKind::notUtf8, .found = name});
}

void MapReader::RemarkOnWord(std::string_view line) {
  const std::string_view meant = MeantWord(line, kWords);
  if (!meant.empty()) {
    RemarkHere({.kind = RemarkKind::blanksInWord, .found = line, .taken = meant});
  }
}

void MapReader::RemarkOnNode(const CMapOb& node, bool isGroup, NodeEnd end, int headingLine) {
  if (&node == root_) {
    if (end == NodeEnd::endGroup) RemarkHere({.kind = RemarkKind::surplusEndGroup});
    return;
  }
  if (root_ == nullptr) return;
  if (node.GetName().IsEmpty()) RemarkAt(headingLine, {.kind = RemarkKind::noName});
  if (isGroup && end == NodeEnd::endOfFile) RemarkAt(headingLine, {.kind = RemarkKind::noEndGroup});
}

void MapReader::RemarkOnHole(const CSpecFile::Line& line) {
  if (line.command == "Hole" && EqualNoCase(line.argument, "Yes")) return;
  std::string found(line.command);
  if (!line.argument.empty()) found.append("=").append(line.argument);
  RemarkHere({.kind = RemarkKind::holeInDoubt, .found = found});
}

void MapReader::RemarkOnRing(const CPolygon& polygon, const CRectF& bounds, int headingLine,
                             int lastLine) {
  const std::span<const tagVELAPOINTF> ring = polygon.GetPointsF();
  // The line of a point is known where points are all that stands behind the heading, and perhaps
  // the line of a hole before them.
  const int others = lastLine - headingLine - static_cast<int>(ring.size());
  const bool isKnown = others == 0 || (others == 1 && polygon.IsHole() != 0);
  for (const RingDoubt& doubt : DoubtsOfRing(ring, bounds, inDegrees_)) {
    const bool hasLine = isKnown && doubt.point != nullptr;
    const int number = hasLine ? static_cast<int>(doubt.point - ring.data()) + others + 1 : 0;
    RemarkAt(headingLine + number, {.kind = doubt.kind,
                                    .found = doubt.found,
                                    .expected = doubt.expected,
                                    .counted = doubt.counted});
  }
}

void MapReader::RemarkOnFrame(const CRectF& bounds) {
  const std::string found = LatitudeFirst(bounds);
  if (found.empty()) return;
  CHost::GetCurrent().Remark(
      {.kind = RemarkKind::latitudeFirst, .file = spec_.GetPath(), .found = found});
}

}  // namespace vexel

// What the map itself offers of its reader.

int CVELAMap::Build(CSpecFile& spec, CProgressDlg* progress) {
  return vexel::MapReader(spec, progress).ReadMap(*this) ? 1 : 0;
}

void CVELAMap::BuildAreaLevels(CSpecFile& spec) {
  vexel::MapReader(spec, nullptr).ReadLevels(*this);
}

int CMapOb::Build(CSpecFile& spec, CProgressDlg* progress, int isGroup, CRectF& fileBounds) {
  return vexel::MapReader(spec, progress).ReadNode(*this, isGroup != 0, fileBounds) ? 1 : 0;
}

int CPolygon::Build(CSpecFile& spec, CProgressDlg* progress, CRectF& polygonBounds,
                    CRectF& fileBounds) {
  return vexel::MapReader(spec, progress).ReadPolygon(*this, polygonBounds, fileBounds) ? 1 : 0;
}
