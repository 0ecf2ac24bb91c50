// What the tests of maps share: a map whose fields can be looked at, short ways to write a map file
// and to tell what a tree holds, and a host and a folder for each test.

#ifndef VEXEL_TESTS_MAP_MAP_FIXTURE_H_
#define VEXEL_TESTS_MAP_MAP_FIXTURE_H_

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <sstream>
#include <string>
#include <string_view>

#include "map/map.h"
#include "support/files.h"
#include "support/recording_host.h"

namespace vexel::test {

class ProbeMap : public CVELAMap {
 public:
  using CVELAMap::compiledOldFormat;
  using CVELAMap::compiledValid;
  using CVELAMap::fileBoundsF;
  using CVELAMap::floatsLoaded;
  using CVELAMap::longLat;
};

inline CAreaStruct Key(std::initializer_list<std::int32_t> codes) {
  CAreaStruct key;
  std::copy(codes.begin(), codes.end(), key.codes.begin());
  return key;
}

// The lines of a text file, written as "one|two|three". A line of one letter stands for a heading:
// M map, L area levels, G group, U unit, P polygon, E end of group.
inline std::string Lines(const std::string& joined) {
  static const std::map<std::string, std::string> kHeadings{
      {"M", "[Map]"},     {"L", "[AreaLevels]"}, {"G", "[GeoGroup]"},
      {"U", "[GeoUnit]"}, {"P", "[Polygon]"},    {"E", "[EndGroup]"}};
  std::istringstream in(joined);
  std::string text;
  for (std::string line; std::getline(in, line, '|');) {
    const auto heading = kHeadings.find(line);
    text += (heading == kHeadings.end() ? line : heading->second) + '\n';
  }
  return text;
}

// A map with a bit of everything: a group with an outline, a unit with a hole, a unit beside them.
inline const std::string kSmallMap = Lines(
    "M|MapName=M|L|Name=State|Name=County|G|Name=A|AreaStructure=1|P|0 0|40 0|40 30|0 30|U|Name=B|"
    "AreaStructure=1, 2|P|0 0|10 0|10 10|P|Hole=Yes|2 1|3 1|3 2|E|U|Name=C|P|40 0|64 0|50.5 32");

// The names of a tree: "M{A{B} C}".
inline std::string Shape(const CMapOb& node) {
  std::string text(node.GetName().View());
  for (int i = 0; i < node.GetNumChildren(); ++i) {
    text.append(i == 0 ? "{" : " ").append(Shape(*node.GetChild(i)));
  }
  return node.GetNumChildren() > 0 ? text + '}' : text;
}

template <typename Rect>
std::string ToText(const Rect& rect) {
  std::ostringstream out;
  out.precision(9);  // enough for every float
  out << rect.left << ' ' << rect.top << ' ' << rect.right << ' ' << rect.bottom;
  return out.str();
}

// Everything of a subtree that both forms of a map carry; the floats only when asked.
inline std::string Describe(const CMapOb& node, bool floats) {
  std::ostringstream out;
  out.precision(9);
  out << node.GetName().View() << '(' << node.GetArea().GetAreasStr().View() << ") "
      << node.GetLevel() << ' ' << node.GetAngle() << " in " << ToText(node.GetBoundRect());
  if (floats && node.GetLevel() > 0) out << " of " << ToText(node.GetBoundRectF());
  for (int i = 0; i < node.GetNumPolygons(); ++i) {
    const CPolygon& polygon = *node.GetPoly(i);
    out << (polygon.IsHole() != 0 ? " hole" : " ring");
    for (const CPoint& point : polygon.GetPoints()) out << ' ' << point.x << ',' << point.y;
    if (!floats) continue;
    for (const auto& point : polygon.GetPointsF()) out << ' ' << point.x << '/' << point.y;
  }
  out << '\n';
  for (int i = 0; i < node.GetNumChildren(); ++i) out << Describe(*node.GetChild(i), floats);
  return out.str();
}

// That what says where a node of a loaded tree stands is true, and the drawn marks are.
inline bool IsSettled(const CMapOb& node, int drawLevel) {
  bool settled = (node.IsDrawn() != 0) == (node.GetLevel() == drawLevel);
  for (int i = 0; i < node.GetNumChildren(); ++i) {
    const CMapOb& child = *node.GetChild(i);
    settled = settled && child.GetParent() == &node && child.GetLevel() == node.GetLevel() + 1 &&
              IsSettled(child, drawLevel);
  }
  return settled;
}

class MapTest : public testing::Test {
 protected:
  CVELAString Path(const std::string& name) { return CString(dir.Path(name).c_str()); }

  // Writes a file afresh: some file systems wait for the disk when an old one is overwritten.
  CVELAString Put(const std::string& name, std::string_view bytes) {
    std::remove(dir.Path(name).c_str());
    dir.Write(name, bytes);
    return Path(name);
  }

  int Load(CVELAMap& map, std::string_view text, int showProgress = 0) {
    return map.Build(Put("m.map", text), 0, showProgress);
  }

  // The boxes shown since the last call, each as flags in hexadecimal, text and a line feed.
  std::string TakeBoxes() {
    std::ostringstream out;
    for (const auto& box : host.boxes) out << std::hex << box.flags << ' ' << box.text << '\n';
    host.boxes.clear();
    return out.str();
  }

  RecordingHost host;
  TempDir dir;
};

}  // namespace vexel::test

#endif  // VEXEL_TESTS_MAP_MAP_FIXTURE_H_
