// Fewer vertices, with borders that stay shared.

#ifndef VEXEL_APPS_IMPORT_TOPOLOGY_SIMPLIFY_H_
#define VEXEL_APPS_IMPORT_TOPOLOGY_SIMPLIFY_H_

#include <cstddef>
#include <span>

#include "shape.h"

namespace vexel::import {

struct Simplified {
  std::size_t verticesBefore = 0;
  std::size_t verticesAfter = 0;
  std::size_t ringsKept = 0;   // that would have collapsed or turned over
  std::size_t piecesKept = 0;  // that would have run across another border or jumped over it
};

// Simplifies all shapes of a map at once, of all levels: no vertex that goes lies farther than
// `tolerance`, in the units of the vertices, from the line that stays. A border is simplified once
// for all rings that run along it, so neighbours have the same vertices on it afterwards, whatever
// the order of the shapes. No ring gets lost or turns over, no two borders meet that did not
// meet before, and none jumps over what lies beside it: what would do so keeps more of its
// vertices. With a tolerance of 0 or less nothing changes.
Simplified Simplify(std::span<Shape> shapes, double tolerance);

}  // namespace vexel::import

#endif  // VEXEL_APPS_IMPORT_TOPOLOGY_SIMPLIFY_H_
