// How vertices of the working space come to a page, and rings to its list.

#ifndef VEXEL_KIT_PUBLISH_PLACEMENT_H_
#define VEXEL_KIT_PUBLISH_PLACEMENT_H_

#include <vexel/map/polygon.h>
#include <vexel/platform/geometry.h>

#include <limits>
#include <span>

#include "kit/publish/drawing.h"

namespace vexel {

// A place in the plane of the map: that of the working space, turned upright; y grows upward.
struct PlanePoint {
  double x = 0.0;
  double y = 0.0;
};

// Turns about the origin, counter-clockwise.
class PlaneTurn {
 public:
  explicit PlaneTurn(double radians);
  PlanePoint operator()(const CPoint& point) const {
    return {point.x * cosine_ - point.y * sine_, point.y * cosine_ + point.x * sine_};
  }

 private:
  double sine_;
  double cosine_;
};

struct PlaneExtent {
  double left = std::numeric_limits<double>::infinity();
  double right = -std::numeric_limits<double>::infinity();
  double bottom = std::numeric_limits<double>::infinity();
  double top = -std::numeric_limits<double>::infinity();

  void Include(const PlanePoint& point);
};

class Placement {
 public:
  // The extent's left upper corner comes to that of `map`; `scale` is in page pixels, and `grid` in
  // steps for each of them.
  Placement(const PlaneTurn& turn, const PlaneExtent& extent, const PageArea& map, double scale,
            int grid);

  GridPoint operator()(const CPoint& point) const;

 private:
  PlaneTurn turn_;
  double scale_;
  double left_;
  double top_;
};

// Adds a ring of the map to the page's. All vertices go to the nearest place of the grid, whatever
// their neighbours, so that areas with a common border keep one; those that come to the place of
// the one before are dropped. A ring without extent keeps that of one step, a hole without extent
// is dropped. Winding is made that of an outline or of a hole.
void AddRing(Rings& rings, std::span<const CPoint> vertices, bool isHole,
             const Placement& placement);

}  // namespace vexel

#endif  // VEXEL_KIT_PUBLISH_PLACEMENT_H_
