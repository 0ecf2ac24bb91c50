// A region: the inside of a closed polygon by the winding rule, as a test of one point.

#ifndef VEXEL_PLATFORM_REGION_H_
#define VEXEL_PLATFORM_REGION_H_

#include <cstdint>

#include "platform/geometry.h"

namespace vexel {

// Takes the vertices of a closed integer polygon one after the other and tells whether a point
// lies in it: where the outline winds around the point a number of times that is not zero. On the
// edge the half-open rule holds: the points of smallest x and y belong to the polygon, those of
// largest do not, so that neighbours share no point. All arithmetic is exact.
class PolygonPointTest {
 public:
  explicit PolygonPointTest(CPoint point) noexcept : point_(point) {}

  void AddVertex(CPoint vertex) noexcept {
    if (count_++ == 0) {
      first_ = vertex;
    } else {
      AddEdge(last_, vertex);
    }
    last_ = vertex;
  }

  // Closes the outline and gives the answer. No vertex may be added afterwards.
  bool Contains() noexcept {
    if (count_ > 1) AddEdge(last_, first_);
    return winding_ != 0;
  }

 private:
  // Counts an edge that crosses the row of the point at its column or to the left of it.
  void AddEdge(CPoint from, CPoint to) noexcept {
    const bool down = from.y <= point_.y;
    if (down == (to.y <= point_.y)) return;
    const CPoint& low = down ? from : to;
    const CPoint& high = down ? to : from;
    const Wide run = Wide{high.x} - low.x;
    const Wide rise = Wide{high.y} - low.y;
    if ((Wide{point_.y} - low.y) * run <= (Wide{point_.x} - low.x) * rise)
      winding_ += down ? 1 : -1;
  }

  // Differences of two ints take 33 bits, and their products 66.
  __extension__ using Wide = __int128;

  CPoint point_;
  CPoint first_;
  CPoint last_;
  std::int64_t count_ = 0;
  int winding_ = 0;
};

}  // namespace vexel

#endif  // VEXEL_PLATFORM_REGION_H_
