// Reading the text form of a map. Each operation takes lines until one that is not its own, which
// it gives back.

#include <limits>
#include <memory>
#include <utility>

#include "brindle/progress.h"
#include "brindle/specfile.h"
#include "map/map.h"
#include "messages/messages.h"
#include "platform/host.h"
#include "platform/number.h"

namespace {

using vexel::EqualNoCase;
using vexel::Message;

bool IsNodeHeading(std::string_view heading) {
  return EqualNoCase(heading, "[GeoUnit]") || EqualNoCase(heading, "[GeoGroup]");
}

// Shows a message with the number of the line and, below it, what stands there.
void ReportLine(Message number, const CSpecFile& spec, std::string_view command) {
  vexel::Tell(CHost::ok, number,
              {.file = spec.GetPath(), .line = spec.lineNumber, .found = command}, spec.lineNumber,
              std::string(command));
}

// Moves the progress bar to where the file is; true once the user has cancelled.
bool IsCancelled(const CSpecFile& spec, CProgressDlg* progress) {
  if (progress == nullptr) return false;
  progress->SetPos(static_cast<int>(spec.GetPosition() / vexel::kBytesPerProgressStep));
  return progress->CheckCancelButton() != 0;
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

int CVELAMap::Build(CSpecFile& spec, CProgressDlg* progress) {
  CSpecFile::Line line;
  while (spec.state == 0 && spec.NextLine(line)) {
    if (line.IsHeading() && IsCancelled(spec, progress)) return 0;
    if (EqualNoCase(line.command, "[AreaLevels]")) {
      BuildAreaLevels(spec);
    } else if (IsNodeHeading(line.command)) {
      spec.UngetLine();
      if (!BuildTree(spec, progress)) return 0;
    } else if (!BuildKeyword(line)) {
      ReportLine(Message::errorAtLine, spec, line.command);
    }
  }
  return 1;
}

bool CVELAMap::BuildKeyword(const CSpecFile::Line& line) {
  if (EqualNoCase(line.command, "Version")) return true;
  if (EqualNoCase(line.command, "MapName")) {
    if (!HasRoomForLevel()) return false;
    SetName(CVELAString(line.argument));
    AddLevelName(GetName());
    return true;
  }
  if (EqualNoCase(line.command, "LongLat")) {
    if (EqualNoCase(line.argument, "Yes")) longLat = 1;
    return true;
  }
  return false;
}

void CVELAMap::BuildAreaLevels(CSpecFile& spec) {
  CSpecFile::Line line;
  while (spec.state == 0 && spec.NextLine(line)) {
    if (IsNodeHeading(line.command)) {
      spec.UngetLine();
      return;
    }
    if (line.IsHeading()) {
      ReportLine(Message::invalidHeading, spec, line.command);
      spec.SkipSection();
      return;
    }
    if (EqualNoCase(line.command, "Name") && HasRoomForLevel()) {
      AddLevelName(CVELAString(line.argument));
    } else {
      ReportLine(Message::unrecognizedCommand, spec, line.command);
    }
  }
}

bool CVELAMap::BuildTree(CSpecFile& spec, CProgressDlg* progress) {
  if (numMapLevels == 0) {
    vexel::Tell(CHost::ok, Message::noAreaLevels,
                {.file = spec.GetPath(), .line = spec.lineNumber});
    return false;
  }
  fileBoundsF = EmptyBounds();
  if (CMapOb::Build(spec, progress, 1, fileBoundsF) == 0) return false;
  boundRectF = CRectF(fileBoundsF.left, fileBoundsF.bottom, fileBoundsF.right, fileBoundsF.top);
  return true;
}

int CMapOb::Build(CSpecFile& spec, CProgressDlg* progress, int isGroup, CRectF& fileBounds,
                  int depth) {
  CSpecFile::Line line;
  while (spec.state == 0 && spec.NextLine(line)) {
    if (line.IsHeading()) {
      switch (BuildFromHeading(spec, line, progress, isGroup, fileBounds, depth)) {
        case After::goOn:
          break;
        case After::ends:
          return 1;
        case After::stops:
          return 0;
      }
    } else if (EqualNoCase(line.command, "AreaStructure")) {
      if (!BuildKey(line.argument)) {
        ReportLine(Message::badAreaStructure, spec, line.command);
        return 0;
      }
    } else if (EqualNoCase(line.command, "Name")) {
      name.Assign(line.argument);
    } else {
      ReportLine(Message::errorAtLine, spec, line.command);
    }
  }
  return 1;
}

CMapOb::After CMapOb::BuildFromHeading(CSpecFile& spec, const CSpecFile::Line& line,
                                       CProgressDlg* progress, int isGroup, CRectF& fileBounds,
                                       int depth) {
  const auto goOnIf = [](bool built) { return built ? After::goOn : After::stops; };
  const bool endsGroup = EqualNoCase(line.command, "[EndGroup]");
  if (endsGroup || IsNodeHeading(line.command)) {
    if (isGroup == 0) spec.UngetLine();
    if (endsGroup || isGroup == 0) return After::ends;
    const int childIsGroup = EqualNoCase(line.command, "[GeoGroup]") ? 1 : 0;
    return goOnIf(BuildChild(spec, progress, childIsGroup, fileBounds, depth + 1));
  }
  if (EqualNoCase(line.command, "[Polygon]")) {
    return goOnIf(BuildPolygon(spec, progress, fileBounds));
  }
  ReportLine(Message::errorAtLine, spec, line.command);
  spec.SkipSection();
  return After::ends;
}

bool CMapOb::BuildChild(CSpecFile& spec, CProgressDlg* progress, int isGroup, CRectF& fileBounds,
                        int depth) {
  if (isGroup != 0 && depth > vexel::kDeepestNesting) {
    ReportLine(Message::groupsTooDeep, spec, {});
    return false;
  }
  auto child = std::make_unique<CMapOb>();
  if (child->Build(spec, progress, isGroup, fileBounds, depth) == 0) return false;
  AddChild(child.get());
  static_cast<void>(child.release());
  return true;
}

bool CMapOb::BuildPolygon(CSpecFile& spec, CProgressDlg* progress, CRectF& fileBounds) {
  auto polygon = std::make_unique<CPolygon>();
  CRectF earlier = boundRectF;
  if (polygon->Build(spec, progress, boundRectF, fileBounds) == 0) {
    boundRectF = earlier;
    return false;
  }
  AddPoly(polygon.get());
  static_cast<void>(polygon.release());
  if (earlier.IsRectNull() == 0) {
    boundRectF.NormalizeRect();
    earlier.NormalizeRect();
    boundRectF.UnionRect(&boundRectF, &earlier);
  }
  // The polygon leaves the smallest y in `top`; a node keeps the largest there.
  std::swap(boundRectF.top, boundRectF.bottom);
  return true;
}

// Fills the codes from the top down; those without a token keep their value.
bool CMapOb::BuildKey(std::string_view codes) {
  std::size_t number = 0;
  for (auto token = vexel::TakeToken(codes, " ,"); !token.empty();
       token = vexel::TakeToken(codes, " ,")) {
    if (number >= area.codes.size() || !vexel::IsWholeNumber(token)) return false;
    area.codes[number++] = vexel::LowInt32(vexel::ToWholeNumber(token));
  }
  return true;
}

int CPolygon::Build(CSpecFile& spec, CProgressDlg* progress, CRectF& polygonBounds,
                    CRectF& fileBounds) {
  constexpr int kPointsPerProgress = 5;
  CRectF bounds = EmptyBounds();
  int built = 1;
  hole = 0;
  while (built != 0 && spec.state == 0) {
    double x = 0.0;
    double y = 0.0;
    if (!spec.NextPoint(x, y)) {
      const AfterLine after = BuildLine(spec, x, y);
      if (after == AfterLine::ends) break;
      if (after == AfterLine::goOn) continue;
      built = after == AfterLine::point ? 1 : 0;
      if (built == 0) break;
    }
    const tagVELAPOINTF point{vexel::NarrowToFloat(x), vexel::NarrowToFloat(y)};
    AddPointF(point);
    Widen(bounds, point);
    if (progress != nullptr && GetSizeF() % kPointsPerProgress == 0) {
      built = IsCancelled(spec, progress) ? 0 : 1;
    }
  }
  polygonBounds = bounds;
  if (bounds.left <= bounds.right) {
    Widen(fileBounds, {bounds.left, bounds.top});
    Widen(fileBounds, {bounds.right, bounds.bottom});
  }
  return built;
}

// Any line but a plain point.
CPolygon::AfterLine CPolygon::BuildLine(CSpecFile& spec, double& x, double& y) {
  CSpecFile::Line line;
  if (!spec.NextLine(line)) return AfterLine::ends;
  if (line.IsHeading()) {
    spec.UngetLine();
    return AfterLine::ends;
  }
  if (line.command.front() == 'H') {
    hole = 1;
    return AfterLine::goOn;
  }
  std::string_view rest = line.command;
  const std::string_view first = vexel::TakeToken(rest, " ");
  const std::string_view second = vexel::TakeToken(rest, " ");
  if (second.empty()) {
    ReportLine(Message::badCoordinates, spec, line.command);
    return AfterLine::stops;
  }
  x = vexel::ToNumber(first);
  y = vexel::ToNumber(second);
  return AfterLine::point;
}
