// Counting what is in a map.

#ifndef VEXEL_KIT_VIEW_MAP_FACTS_H_
#define VEXEL_KIT_VIEW_MAP_FACTS_H_

#include <vexel/map/map.h>

#include <string>
#include <vector>

namespace vexel {

struct MapFacts {
  // Names and numbers of areas by level; entry 0 is the uppermost below the map.
  std::vector<std::string> levelNames;
  std::vector<int> areasOnLevel;
  int areas = 0;
  int polygons = 0;
  int holes = 0;
  long long vertices = 0;
};

VEXEL_API MapFacts CountMap(const CVELAMap& map);

}  // namespace vexel

#endif  // VEXEL_KIT_VIEW_MAP_FACTS_H_
