#include "kit/view/map_facts.h"

#include <algorithm>

namespace vexel {

namespace {

void CountNode(const CMapOb& node, MapFacts& facts) {
  for (int i = 0; i < node.GetNumPolygons(); ++i) {
    const CPolygon& polygon = *node.GetPoly(i);
    ++facts.polygons;
    if (polygon.IsHole() != 0) ++facts.holes;
    facts.vertices += polygon.GetSize();
  }
  for (int i = 0; i < node.GetNumChildren(); ++i) {
    const CMapOb& child = *node.GetChild(i);
    const auto level = static_cast<std::size_t>(std::max(child.GetLevel(), 1));
    if (facts.areasOnLevel.size() < level) facts.areasOnLevel.resize(level);
    ++facts.areasOnLevel[level - 1];
    ++facts.areas;
    CountNode(child, facts);
  }
}

}  // namespace

MapFacts CountMap(const CVELAMap& map) {
  MapFacts facts;
  const int levels = std::min(map.GetNumMapLevels(), CVELAMap::kMostLevels);
  for (int i = 1; i < levels; ++i) facts.levelNames.emplace_back(map.GetLevelName(i).View());
  facts.areasOnLevel.resize(facts.levelNames.size());
  CountNode(map, facts);
  facts.levelNames.resize(facts.areasOnLevel.size());
  return facts;
}

}  // namespace vexel
