#include "topology/dissolve.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numeric>
#include <utility>
#include <vector>

#include "topology/segments.h"
#include "topology/vertex_table.h"

namespace vexel::import {
namespace {

// Runs with the inside of its part at the left.
struct Edge {
  VertexId from;
  VertexId to;
};

using Edges = std::vector<Edge>;

// What has been chained: a ring, and what the ray tells of it.
struct Loop {
  std::vector<VertexId> ids;
  double area = 0;
};

constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

std::size_t CountVertices(std::span<const Shape* const> parts) {
  std::size_t count = 0;
  for (const Shape* part : parts) {
    for (const Ring& ring : *part) count += ring.vertices.size();
  }
  return count;
}

void AddEdges(const Ring& ring, VertexTable& table, Edges& edges) {
  const std::vector<VertexId> ids = table.IdsOf(ring);
  if (ids.size() < 3) return;
  const bool turned = (TwiceArea(ring.vertices) < 0) != ring.isHole;
  VertexId last = ids.back();
  for (const VertexId id : ids) {
    edges.push_back(turned ? Edge{id, last} : Edge{last, id});
    last = id;
  }
}

// Where the edges of each vertex begin in a list that is ordered by the vertex.
template <typename KeyOf>
std::vector<std::size_t> StartsBy(const Edges& edges, std::size_t vertices, KeyOf keyOf) {
  std::vector<std::size_t> starts(vertices + 1);
  for (const Edge& edge : edges) ++starts[keyOf(edge) + 1];
  std::partial_sum(starts.begin(), starts.end(), starts.begin());
  return starts;
}

template <typename KeyOf>
Edges OrderedBy(const Edges& edges, const std::vector<std::size_t>& starts, KeyOf keyOf) {
  Edges ordered(edges.size());
  std::vector<std::size_t> next(starts.begin(), starts.end() - 1);
  for (const Edge& edge : edges) ordered[next[keyOf(edge)]++] = edge;
  return ordered;
}

// Takes away what two parts have at either side. False where two lie at the same side.
bool CancelShared(Edges& edges, std::size_t vertices) {
  const auto lowerEnd = [](const Edge& edge) { return std::min(edge.from, edge.to); };
  const auto upperEnd = [](const Edge& edge) { return std::max(edge.from, edge.to); };
  const std::vector<std::size_t> starts = StartsBy(edges, vertices, lowerEnd);
  Edges ordered = OrderedBy(edges, starts, lowerEnd);
  edges.clear();
  for (std::size_t vertex = 0; vertex < vertices; ++vertex) {
    const std::span<Edge> group(ordered.data() + starts[vertex],
                                starts[vertex + 1] - starts[vertex]);
    std::sort(group.begin(), group.end(),
              [&](const Edge& a, const Edge& b) { return upperEnd(a) < upperEnd(b); });
    for (auto first = group.begin(); first != group.end();) {
      const auto end = std::find_if(
          first, group.end(), [&](const Edge& edge) { return upperEnd(edge) != upperEnd(*first); });
      const auto up =
          std::count_if(first, end, [](const Edge& edge) { return edge.from < edge.to; });
      const auto balance = 2 * up - (end - first);
      if (std::abs(balance) > 1) return false;
      const VertexId upper = upperEnd(*first);
      const VertexId lower = lowerEnd(*first);
      if (balance > 0) edges.push_back({lower, upper});
      if (balance < 0) edges.push_back({upper, lower});
      first = end;
    }
  }
  return true;
}

// Joins edges to rings that neither cross nor pass a vertex twice.
class Chain {
 public:
  Chain(const Edges& edges, const VertexTable& table)
      : table_(table),
        starts_(StartsBy(edges, table.size(), From)),
        edges_(OrderedBy(edges, starts_, From)),
        used_(edges.size()),
        place_(table.size(), kNone) {}

  std::vector<Loop> Loops() {
    for (std::size_t first = 0; first < edges_.size(); ++first) {
      if (!used_[first]) Walk(first);
    }
    return std::move(loops_);
  }

 private:
  static VertexId From(const Edge& edge) { return edge.from; }

  void Walk(std::size_t edge) {
    for (; edge != kNone; edge = Next(edges_[edge])) {
      used_[edge] = true;
      place_[edges_[edge].from] = path_.size();
      path_.push_back(edges_[edge].from);
      CutLoop(edges_[edge].to);
    }
  }

  // What the path has gone through since it was at `id` is a ring.
  void CutLoop(VertexId id) {
    const std::size_t start = place_[id];
    if (start == kNone) return;
    Loop loop;
    loop.ids.assign(path_.begin() + static_cast<std::ptrdiff_t>(start), path_.end());
    for (std::size_t i = 2; i < loop.ids.size(); ++i) {
      loop.area += Turn(table_[loop.ids[0]], table_[loop.ids[i - 1]], table_[loop.ids[i]]);
    }
    for (const VertexId passed : loop.ids) place_[passed] = kNone;
    path_.resize(start);
    loops_.push_back(std::move(loop));
  }

  // Of several ways on, the sharpest to the left: it stays at the same piece of the inside.
  std::size_t Next(const Edge& arrived) const {
    std::size_t best = kNone;
    double least = std::numeric_limits<double>::max();
    for (std::size_t i = starts_[arrived.to]; i < starts_[arrived.to + 1]; ++i) {
      if (used_[i]) continue;
      const double angle = ClockwiseAngle(arrived, table_[edges_[i].to]);
      if (angle < least) {
        least = angle;
        best = i;
      }
    }
    return best;
  }

  // From the way back to the way to `next`.
  double ClockwiseAngle(const Edge& arrived, Vertex next) const {
    const Vertex at = table_[arrived.to];
    const Vertex back = table_[arrived.from];
    const double dot = (double{back.x} - at.x) * (double{next.x} - at.x) +
                       (double{back.y} - at.y) * (double{next.y} - at.y);
    const double angle = -std::atan2(Turn(at, back, next), dot);
    return angle < 0 ? angle + 2 * 3.14159265358979323846 : angle;
  }

  const VertexTable& table_;
  std::vector<std::size_t> starts_;
  Edges edges_;
  std::vector<bool> used_;
  std::vector<std::size_t> place_;  // on the path, of each vertex
  std::vector<VertexId> path_;
  std::vector<Loop> loops_;
};

// The rings as segments, and which of them bound the union.
class Nesting {
 public:
  Nesting(const std::vector<Loop>& loops, const VertexTable& table) : loops_(loops) {
    for (std::size_t loop = 0; loop < loops.size(); ++loop) {
      firsts_.push_back(segments_.size());
      VertexId last = loops[loop].ids.back();
      for (const VertexId id : loops[loop].ids) {
        segments_.push_back({table[last], table[id]});
        loopOf_.push_back(loop);
        last = id;
      }
    }
    firsts_.push_back(segments_.size());
  }

  bool Collides(const SegmentGrid& grid) const {
    return !grid.EachNearPair(
        [&](std::size_t a, std::size_t b) { return !Collide(segments_[a], segments_[b]); });
  }

  // How many parts lie upon each other just outside of a ring: 0 at the border of the union.
  int DepthOutside(const SegmentGrid& grid, std::size_t loop) const {
    int depth = 0;
    const Segment& start = Steepest(loop);
    // The ray tells of the west. Up, a segment has its inside there.
    if (start.to.y > start.from.y) depth = -1;
    EachPassed(grid, start, [&](std::size_t, int direction) { depth -= direction; });
    return depth;
  }

  // The smallest outline of those that bound the union around a hole.
  std::size_t OutlineOf(const SegmentGrid& grid, std::size_t hole,
                        const std::vector<bool>& bounds) const {
    std::vector<std::size_t> passed;
    EachPassed(grid, Steepest(hole), [&](std::size_t segment, int) {
      const std::size_t loop = loopOf_[segment];
      if (bounds[loop] && loops_[loop].area > 0) passed.push_back(loop);
    });
    std::sort(passed.begin(), passed.end());
    std::size_t best = kNone;
    for (std::size_t i = 0; i < passed.size();) {
      std::size_t end = i;
      while (end < passed.size() && passed[end] == passed[i]) ++end;
      const bool within = (end - i) % 2 == 1;
      if (within && (best == kNone || loops_[passed[i]].area < loops_[best].area)) best = passed[i];
      i = end;
    }
    return best;
  }

  std::span<const Segment> segments() const { return segments_; }

 private:
  const Segment& Steepest(std::size_t loop) const {
    const auto rise = [](const Segment& segment) {
      return std::abs(segment.to.y - segment.from.y);
    };
    return *std::max_element(segments_.begin() + static_cast<std::ptrdiff_t>(firsts_[loop]),
                             segments_.begin() + static_cast<std::ptrdiff_t>(firsts_[loop + 1]),
                             [&](const Segment& a, const Segment& b) { return rise(a) < rise(b); });
  }

  template <typename Pass>
  void EachPassed(const SegmentGrid& grid, const Segment& start, Pass pass) const {
    const double x = (double{start.from.x} + start.to.x) / 2;
    const double y = (double{start.from.y} + start.to.y) / 2;
    grid.EachWestOf(x, y, [&](std::size_t segment, int direction) {
      if (&segments_[segment] != &start) pass(segment, direction);
    });
  }

  const std::vector<Loop>& loops_;
  std::vector<Segment> segments_;
  std::vector<std::size_t> loopOf_;
  std::vector<std::size_t> firsts_;
};

Ring RingOf(const Loop& loop, const VertexTable& table) {
  Ring ring;
  ring.isHole = loop.area < 0;
  ring.vertices.reserve(loop.ids.size());
  for (const VertexId id : loop.ids) ring.vertices.push_back(table[id]);
  return ring;
}

std::optional<Shape> Nested(const std::vector<Loop>& loops, const VertexTable& table) {
  const Nesting nesting(loops, table);
  const SegmentGrid grid(nesting.segments());
  if (nesting.Collides(grid)) return std::nullopt;
  std::vector<bool> bounds(loops.size());
  for (std::size_t loop = 0; loop < loops.size(); ++loop) {
    const int depth = nesting.DepthOutside(grid, loop);
    if (depth < 0) return std::nullopt;
    bounds[loop] = depth == 0;
  }
  std::vector<std::vector<std::size_t>> holes(loops.size());
  for (std::size_t loop = 0; loop < loops.size(); ++loop) {
    if (!bounds[loop] || loops[loop].area > 0) continue;
    const std::size_t outline = nesting.OutlineOf(grid, loop, bounds);
    if (outline == kNone) return std::nullopt;
    holes[outline].push_back(loop);
  }
  Shape shape;
  for (std::size_t loop = 0; loop < loops.size(); ++loop) {
    if (!bounds[loop] || loops[loop].area <= 0) continue;
    shape.push_back(RingOf(loops[loop], table));
    for (const std::size_t hole : holes[loop]) shape.push_back(RingOf(loops[hole], table));
  }
  return shape;
}

}  // namespace

std::optional<Shape> Dissolve(std::span<const Shape* const> parts) {
  const std::size_t count = CountVertices(parts);
  VertexTable table(count);
  Edges edges;
  edges.reserve(count);
  for (const Shape* part : parts) {
    for (const Ring& ring : *part) AddEdges(ring, table, edges);
  }
  if (!CancelShared(edges, table.size())) return std::nullopt;
  return Nested(Chain(edges, table).Loops(), table);
}

}  // namespace vexel::import
