// Borders cut where they branch.

#ifndef VEXEL_APPS_IMPORT_TOPOLOGY_ARCS_H_
#define VEXEL_APPS_IMPORT_TOPOLOGY_ARCS_H_

#include <cstddef>
#include <span>
#include <vector>

#include "shape.h"

namespace vexel::import {

// A piece of border from one branching to the next, or all around where there is none; then its
// last vertex is its first again. It runs the same way whatever the order of the shapes.
using Arc = std::vector<Vertex>;

struct ArcUse {
  std::size_t arc;
  bool backwards;
};

struct ArcRing {
  Ring* ring;
  std::vector<ArcUse> uses;
};

// All borders, each once, and how the rings are made of them. Rings of fewer than three different
// vertices in a row are left out.
struct Arcs {
  std::vector<Arc> arcs;
  std::vector<ArcRing> rings;
};

// Keeps the addresses of the rings.
Arcs CutToArcs(std::span<Shape> shapes);

}  // namespace vexel::import

#endif  // VEXEL_APPS_IMPORT_TOPOLOGY_ARCS_H_
