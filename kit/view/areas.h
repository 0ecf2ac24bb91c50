// Areas of a map as requests name them.

#ifndef VEXEL_KIT_VIEW_AREAS_H_
#define VEXEL_KIT_VIEW_AREAS_H_

#include <vexel/map/map.h>

#include <string>

namespace vexel {

// Calls `visit` with the areas of a level at or below a node, in tree order.
template <typename Node, typename Visit>
void ForEachOnLevel(Node& node, int level, const Visit& visit) {
  if (node.GetLevel() == level) visit(node);
  if (node.GetLevel() >= level) return;
  node.ForEachChild([&](CMapOb& child) { ForEachOnLevel(child, level, visit); });
}

// The area with that key. Throws an Error of kind request that begins with `option`.
CMapOb* AreaNamed(CVELAMap& map, const std::string& option, const CAreaStruct& key);

// Whether the draw root is the area or lies above it.
bool IsInDrawRoot(const CVELAMap& map, const CMapOb* area);

}  // namespace vexel

#endif  // VEXEL_KIT_VIEW_AREAS_H_
