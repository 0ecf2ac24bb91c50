// The nodes of a map by their keys.

#ifndef VEXEL_DATA_NODEINDEX_H_
#define VEXEL_DATA_NODEINDEX_H_

#include "data/areaindex.h"
#include "map/mapob.h"

namespace vexel {

// An index of the whole tree below and including `root`; it finds what CMapOb::Find finds, the
// first node in pre-order.
inline AreaIndex<CMapOb> IndexNodes(CMapOb& root) {
  AreaIndex<CMapOb> index;
  const auto add = [&](const auto& self, CMapOb& node) -> void {
    index.Add(&node);
    node.ForEachChild([&](CMapOb& child) { self(self, child); });
  };
  add(add, root);
  return index;
}

}  // namespace vexel

#endif  // VEXEL_DATA_NODEINDEX_H_
