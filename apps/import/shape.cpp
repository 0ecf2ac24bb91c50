#include "shape.h"

#include <algorithm>

namespace vexel::import {

namespace {

// Twice the area of a ring, above zero where it runs against the clock.
double DoubledArea(const std::vector<Vertex>& ring) {
  double area = 0.0;
  const Vertex* before = &ring.back();
  for (const Vertex& vertex : ring) {
    area += static_cast<double>(before->x) * static_cast<double>(vertex.y) -
            static_cast<double>(vertex.x) * static_cast<double>(before->y);
    before = &vertex;
  }
  return area;
}

}  // namespace

void SetDirection(Ring& ring) {
  if (ring.vertices.empty()) return;
  const bool isAgainstClock = DoubledArea(ring.vertices) > 0;
  if (isAgainstClock != ring.isHole) std::reverse(ring.vertices.begin() + 1, ring.vertices.end());
}

}  // namespace vexel::import
