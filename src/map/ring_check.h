// What is odd about the points of a ring, and of a map.

#ifndef VEXEL_MAP_RING_CHECK_H_
#define VEXEL_MAP_RING_CHECK_H_

#include <span>
#include <string>
#include <vector>

#include "map/polygon.h"
#include "map/rect.h"
#include "platform/remark.h"

namespace vexel {

struct RingDoubt {
  RemarkKind kind{};
  const tagVELAPOINTF* point = nullptr;  // of the ring; null where it is the ring as a whole
  std::string found;
  int expected = 0;
  int counted = 0;
};

// One doubt of each kind at most: too few different points; in degrees, a point that lies beyond
// them and an edge that goes the long way around the earth. `bounds` are those of the ring, in map
// units, the smallest y in `top`. Allocates nothing where there is no doubt.
std::vector<RingDoubt> DoubtsOfRing(std::span<const tagVELAPOINTF> ring, const CRectF& bounds,
                                    bool inDegrees);

// How the numbers of a map of longitude and latitude go where they seem to stand the other way
// round; else empty. `bounds` are those of all points, the smallest y in `top`.
std::string LatitudeFirst(const CRectF& bounds);

}  // namespace vexel

#endif  // VEXEL_MAP_RING_CHECK_H_
