#include "topology/order.h"

#include <algorithm>
#include <optional>

#include "topology/segments.h"

namespace vexel::import {
namespace {

struct Box {
  Vertex low;
  Vertex high;
};

struct Hole {
  std::size_t shape;
  const Ring* ring;
  Box box;
};

struct Place {
  double x;
  double y;
};

Box BoxOf(const Ring& ring) {
  Box box{ring.vertices.front(), ring.vertices.front()};
  for (const auto& [x, y] : ring.vertices) {
    box.low = {std::min(box.low.x, x), std::min(box.low.y, y)};
    box.high = {std::max(box.high.x, x), std::max(box.high.y, y)};
  }
  return box;
}

bool Within(const Box& inner, const Box& outer) {
  return inner.low.x >= outer.low.x && inner.low.y >= outer.low.y && inner.high.x <= outer.high.x &&
         inner.high.y <= outer.high.y;
}

template <typename Visit>
void EachSegment(const Ring& ring, Visit visit) {
  Vertex last = ring.vertices.back();
  for (const Vertex& vertex : ring.vertices) {
    visit(Segment{last, vertex});
    last = vertex;
  }
}

bool Contains(const Ring& ring, Place place) {
  bool within = false;
  EachSegment(ring, [&](const Segment& segment) {
    if (PassedGoingWest(segment, place.x, place.y) != 0) within = !within;
  });
  return within;
}

// A place within a ring, on none of its edges: between the first two that a line crosses which goes
// through the middle of its steepest edge.
std::optional<Place> PlaceWithin(const Ring& ring) {
  double rise = 0;
  double y = 0;
  EachSegment(ring, [&](const Segment& segment) {
    const double own = std::abs(double{segment.to.y} - segment.from.y);
    if (own <= rise) return;
    rise = own;
    y = (double{segment.to.y} + segment.from.y) / 2;
  });
  std::vector<double> crossings;
  EachSegment(ring, [&](const Segment& segment) {
    if ((segment.from.y <= y) == (segment.to.y <= y)) return;
    const double along = (y - segment.from.y) / (double{segment.to.y} - segment.from.y);
    crossings.push_back(segment.from.x + along * (double{segment.to.x} - segment.from.x));
  });
  if (crossings.size() < 2) return std::nullopt;
  std::sort(crossings.begin(), crossings.end());
  return Place{(crossings[0] + crossings[1]) / 2, y};
}

// Holes by strips from north to south that they reach into.
class HoleIndex {
 public:
  explicit HoleIndex(std::span<const Shape* const> shapes) {
    for (std::size_t shape = 0; shape < shapes.size(); ++shape) {
      for (const Ring& ring : *shapes[shape]) {
        if (ring.isHole && ring.vertices.size() > 2) holes_.push_back({shape, &ring, BoxOf(ring)});
      }
    }
    if (holes_.empty()) return;
    west_ = holes_[0].box.low.x;
    double east = west_;
    for (const Hole& hole : holes_) {
      west_ = std::min(west_, double{hole.box.low.x});
      east = std::max(east, double{hole.box.high.x});
    }
    strips_.resize(holes_.size());
    width_ = std::max((east - west_) / static_cast<double>(strips_.size()), 1e-30);
    for (std::size_t hole = 0; hole < holes_.size(); ++hole) {
      const std::size_t last = StripOf(holes_[hole].box.high.x);
      for (std::size_t i = StripOf(holes_[hole].box.low.x); i <= last; ++i) {
        strips_[i].push_back(hole);
      }
    }
  }

  // Calls visit(hole) for each hole whose box has the other in it.
  template <typename Visit>
  void EachAround(const Box& box, Visit visit) const {
    if (holes_.empty()) return;
    for (const std::size_t hole : strips_[StripOf(box.low.x)]) {
      if (Within(box, holes_[hole].box)) visit(holes_[hole]);
    }
  }

 private:
  std::size_t StripOf(double x) const {
    const auto last = static_cast<double>(strips_.size() - 1);
    return static_cast<std::size_t>(std::clamp((x - west_) / width_, 0.0, last));
  }

  std::vector<Hole> holes_;
  std::vector<std::vector<std::size_t>> strips_;
  double west_ = 0;
  double width_ = 1;
};

}  // namespace

std::vector<std::pair<std::size_t, std::size_t>> EnclosedPairs(
    std::span<const Shape* const> shapes) {
  const HoleIndex index(shapes);
  std::vector<std::pair<std::size_t, std::size_t>> pairs;
  for (std::size_t inner = 0; inner < shapes.size(); ++inner) {
    for (const Ring& ring : *shapes[inner]) {
      if (ring.isHole || ring.vertices.size() < 3) continue;
      index.EachAround(BoxOf(ring), [&](const Hole& hole) {
        if (hole.shape == inner) return;
        const std::optional<Place> place = PlaceWithin(ring);
        if (place && Contains(*hole.ring, *place)) pairs.emplace_back(hole.shape, inner);
      });
    }
  }
  std::sort(pairs.begin(), pairs.end());
  pairs.erase(std::unique(pairs.begin(), pairs.end()), pairs.end());
  return pairs;
}

}  // namespace vexel::import
