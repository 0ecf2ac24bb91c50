// Where a label stands best within an area.

#ifndef VEXEL_KIT_PUBLISH_POLE_H_
#define VEXEL_KIT_PUBLISH_POLE_H_

#include <span>
#include <vector>

#include "kit/publish/drawing.h"

namespace vexel {

// A place on the page, in its pixels.
struct PagePoint {
  double x = 0.0;
  double y = 0.0;
};

// An area as its borders, in page pixels.
class AreaBorders {
 public:
  AreaBorders(const Drawing& drawing, const RingRange& range);

  const PageArea& Bounds() const { return bounds_; }

  // The place within the area that is farthest from its borders, where a distance across counts
  // for as much as one `wide` times as long along the lines of a text: the centre of the largest
  // ellipse of these proportions. With 1 it is the pole of inaccessibility (D. Garcia-Castellanos
  // and U. Lombardo, Scottish Geographical Journal 123, 2007); found here by a search that keeps
  // the most promising of a tree of squares. Without extent, the middle of the bounds.
  PagePoint Pole(double wide) const;

  // Whether a rectangle lies in the area with all of its inside.
  bool Holds(const PageArea& box) const;

 private:
  bool IsInside(const PagePoint& place) const;
  double Distance(const PagePoint& place, double wide) const;

  struct Edge {
    PagePoint from;
    PagePoint to;
  };
  std::vector<Edge> edges_;
  PageArea bounds_;
};

}  // namespace vexel

#endif  // VEXEL_KIT_PUBLISH_POLE_H_
