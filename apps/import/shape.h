// Outlines of areas on their way into a map.

#ifndef VEXEL_APPS_IMPORT_SHAPE_H_
#define VEXEL_APPS_IMPORT_SHAPE_H_

#include <vector>

namespace vexel::import {

// A point in map units: x to the east, y to the north, degrees or units of a plane. Neighbours
// share equal vertices, to the last bit.
struct Vertex {
  float x;
  float y;

  friend bool operator==(const Vertex&, const Vertex&) = default;
};

// Closed from its last vertex to its first, which is not said again.
struct Ring {
  std::vector<Vertex> vertices;
  bool isHole = false;
};

// Outlines, each followed by its holes.
using Shape = std::vector<Ring>;

// Has the ring run as those of a map do, from the same vertex on: outlines with the clock, holes
// against it.
void SetDirection(Ring& ring);

}  // namespace vexel::import

#endif  // VEXEL_APPS_IMPORT_SHAPE_H_
