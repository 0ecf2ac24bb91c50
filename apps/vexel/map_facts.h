// Counting what is in a map.

#ifndef VEXEL_APPS_VEXEL_MAP_FACTS_H_
#define VEXEL_APPS_VEXEL_MAP_FACTS_H_

#include <string>
#include <vector>

#include "map/map.h"

namespace vexel::cli {

struct MapFacts {
  // Names and numbers of areas by level; entry 0 is the uppermost below the map.
  std::vector<std::string> levelNames;
  std::vector<int> areasOnLevel;
  int areas = 0;
  int polygons = 0;
  int holes = 0;
  long long vertices = 0;
};

MapFacts CountMap(const CVELAMap& map);

}  // namespace vexel::cli

#endif  // VEXEL_APPS_VEXEL_MAP_FACTS_H_
