#include "kit/publish/pole.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <queue>

namespace vexel {

namespace {

constexpr double kHalf = 0.5;

// A square of the search, in a plane where the text's proportions are those of a square.
struct Cell {
  PagePoint centre;
  double half = 0.0;      // of its side
  double distance = 0.0;  // of the centre from the borders, below 0 outside
  double best = 0.0;      // that any place in it can have

  bool operator<(const Cell& other) const { return best < other.best; }
};

double SquaredDistance(const PagePoint& place, const PagePoint& from, const PagePoint& to) {
  const double dx = to.x - from.x;
  const double dy = to.y - from.y;
  const double length = dx * dx + dy * dy;
  const double along =
      length == 0.0 ? 0.0 : ((place.x - from.x) * dx + (place.y - from.y) * dy) / length;
  const double part = std::clamp(along, 0.0, 1.0);
  const double x = from.x + part * dx - place.x;
  const double y = from.y + part * dy - place.y;
  return x * x + y * y;
}

// Whether any of the line from a to b lies within the box (Liang and Barsky, 1984).
bool Meets(const PageArea& box, const PagePoint& a, const PagePoint& b) {
  double first = 0.0;
  double last = 1.0;
  const auto clip = [&](double delta, double distance) {
    if (delta == 0.0) return distance >= 0.0;
    const double at = distance / delta;
    if (delta < 0.0) {
      first = std::max(first, at);
    } else {
      last = std::min(last, at);
    }
    return first <= last;
  };
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  return clip(-dx, a.x - box.left) && clip(dx, box.left + box.width - a.x) &&
         clip(-dy, a.y - box.top) && clip(dy, box.top + box.height - a.y);
}

}  // namespace

AreaBorders::AreaBorders(const Drawing& drawing, const RingRange& range) {
  const double step = 1.0 / drawing.grid;
  const auto onPage = [=](const GridPoint& point) {
    return PagePoint{point.x * step, point.y * step};
  };
  double left = std::numeric_limits<double>::infinity();
  double top = left;
  double right = -left;
  double bottom = -left;
  for (std::uint32_t i = range.first; i < range.end; ++i) {
    const auto ring = drawing.rings.Ring(i);
    PagePoint before = onPage(ring.back());
    for (const GridPoint& point : ring) {
      const PagePoint here = onPage(point);
      edges_.push_back({before, here});
      left = std::min(left, here.x);
      right = std::max(right, here.x);
      top = std::min(top, here.y);
      bottom = std::max(bottom, here.y);
      before = here;
    }
  }
  if (!edges_.empty()) bounds_ = {left, top, right - left, bottom - top};
}

bool AreaBorders::IsInside(const PagePoint& place) const {
  int winding = 0;
  for (const Edge& edge : edges_) {
    if ((edge.from.y > place.y) == (edge.to.y > place.y)) continue;
    const double x = edge.from.x + (place.y - edge.from.y) / (edge.to.y - edge.from.y) *
                                       (edge.to.x - edge.from.x);
    if (x > place.x) winding += edge.to.y > edge.from.y ? 1 : -1;
  }
  return winding != 0;
}

double AreaBorders::Distance(const PagePoint& place, double wide) const {
  const auto narrowed = [=](const PagePoint& point) { return PagePoint{point.x / wide, point.y}; };
  double least = std::numeric_limits<double>::infinity();
  for (const Edge& edge : edges_) {
    least =
        std::min(least, SquaredDistance(narrowed(place), narrowed(edge.from), narrowed(edge.to)));
  }
  return IsInside(place) ? std::sqrt(least) : -std::sqrt(least);
}

PagePoint AreaBorders::Pole(double wide) const {
  const PagePoint middle{bounds_.left + bounds_.width * kHalf,
                         bounds_.top + bounds_.height * kHalf};
  const double width = bounds_.width / wide;
  const double side = std::min(width, bounds_.height);
  if (side <= 0.0) return middle;

  const auto cellAt = [&](const PagePoint& centre, double half) {
    const double distance = Distance(centre, wide);
    return Cell{centre, half, distance, distance + half * std::sqrt(2.0)};
  };
  std::priority_queue<Cell> cells;
  // A long thin area would begin with as many squares as it is longer than wide.
  constexpr double kMostAcross = 16.0;
  const double step = std::max({side, width / kMostAcross, bounds_.height / kMostAcross});
  const auto columns = static_cast<int>(std::ceil(width / step));
  const auto rows = static_cast<int>(std::ceil(bounds_.height / step));
  for (int row = 0; row < rows; ++row) {
    for (int column = 0; column < columns; ++column) {
      cells.push(cellAt(
          {bounds_.left + (column + kHalf) * step * wide, bounds_.top + (row + kHalf) * step},
          step * kHalf));
    }
  }
  Cell found = cellAt(middle, 0.0);
  constexpr double kPrecision = 0.5;  // page pixels
  constexpr double kBetter = 1.15;    // what is not as much better is no reason to leave the middle
  constexpr int kMostSteps = 400;
  for (int i = 0; i < kMostSteps && !cells.empty(); ++i) {
    const Cell cell = cells.top();
    cells.pop();
    if (cell.distance > found.distance * kBetter) found = cell;
    if (cell.best <= std::max(found.distance * kBetter, found.distance + kPrecision)) break;
    const double half = cell.half * kHalf;
    for (const double dx : {-half, half}) {
      for (const double dy : {-half, half}) {
        cells.push(cellAt({cell.centre.x + dx * wide, cell.centre.y + dy}, half));
      }
    }
  }
  return found.centre;
}

bool AreaBorders::Holds(const PageArea& box) const {
  const bool isClear = std::none_of(edges_.begin(), edges_.end(), [&](const Edge& edge) {
    return Meets(box, edge.from, edge.to);
  });
  return isClear && IsInside({box.left + box.width * kHalf, box.top + box.height * kHalf});
}

}  // namespace vexel
