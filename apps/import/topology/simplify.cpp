#include "topology/simplify.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <tuple>
#include <utility>
#include <vector>

#include "topology/arcs.h"
#include "topology/segments.h"

namespace vexel::import {
namespace {

constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

double DistanceTo(Vertex from, Vertex to, Vertex vertex) {
  const double dx = double{to.x} - from.x;
  const double dy = double{to.y} - from.y;
  const double px = double{vertex.x} - from.x;
  const double py = double{vertex.y} - from.y;
  const double square = dx * dx + dy * dy;
  const double along = square > 0 ? std::clamp((px * dx + py * dy) / square, 0.0, 1.0) : 0;
  return std::hypot(px - along * dx, py - along * dy);
}

// An arc, and which of its vertices stay. They are chosen as by Douglas and Peucker: of all ways to
// drop vertices it is the one that bounds how far the line moves, which is what a tolerance says.
// What is given back comes in the same order of distance, so that the shape grows where it is
// poorest.
class Line {
 public:
  Line(const Arc& arc, double tolerance) : arc_(arc), weights_(arc.size()), kept_(arc.size()) {
    Weigh();
    kept_.front() = kept_.back() = true;
    for (std::size_t i = 1; i + 1 < arc.size(); ++i) kept_[i] = weights_[i] > tolerance;
  }

  // The dropped vertex that lies farthest off between two places.
  std::size_t Farthest(std::size_t from, std::size_t to) const {
    std::size_t best = kNone;
    for (std::size_t i = from + 1; i < to; ++i) {
      if (!kept_[i] && (best == kNone || weights_[i] > weights_[best])) best = i;
    }
    return best;
  }
  std::size_t Farthest() const { return Farthest(0, arc_.size() - 1); }

  void Keep(std::size_t i) { kept_[i] = true; }
  void KeepAll(std::size_t from, std::size_t to) {
    for (std::size_t i = from; i <= to; ++i) kept_[i] = true;
  }
  void KeepAll() { KeepAll(0, arc_.size() - 1); }

  double WeightOf(std::size_t i) const { return weights_[i]; }
  Vertex operator[](std::size_t i) const { return arc_[i]; }

  // Calls visit(from, to) for the places of the ends of each piece that stays.
  template <typename Visit>
  void EachPiece(Visit visit) const {
    std::size_t from = 0;
    for (std::size_t i = 1; i < arc_.size(); ++i) {
      if (!kept_[i]) continue;
      visit(from, i);
      from = i;
    }
  }

  // All that stays but the last, in one direction or the other.
  void AppendTo(std::vector<Vertex>& vertices, bool backwards) const {
    for (std::size_t i = 0; i + 1 < arc_.size(); ++i) {
      const std::size_t place = backwards ? arc_.size() - 1 - i : i;
      if (kept_[place]) vertices.push_back(arc_[place]);
    }
  }

 private:
  struct Range {
    std::size_t from;
    std::size_t to;
    double most;
  };

  // Up to which tolerance each vertex stays.
  void Weigh() {
    std::vector<Range> open{{0, arc_.size() - 1, std::numeric_limits<double>::max()}};
    while (!open.empty()) {
      const Range range = open.back();
      open.pop_back();
      if (range.to - range.from < 2) continue;
      std::size_t split = range.from + 1;
      double distance = -1;
      for (std::size_t i = range.from + 1; i < range.to; ++i) {
        const double own = DistanceTo(arc_[range.from], arc_[range.to], arc_[i]);
        if (own > distance) {
          distance = own;
          split = i;
        }
      }
      weights_[split] = std::min(distance, range.most);
      open.push_back({range.from, split, weights_[split]});
      open.push_back({split, range.to, weights_[split]});
    }
  }

  const Arc& arc_;
  std::vector<double> weights_;
  std::vector<bool> kept_;
};

struct Piece {
  std::size_t line;
  std::size_t from;
  std::size_t to;

  bool IsShortcut() const { return to - from > 1; }
};

// What lies between a shortcut and the vertices that it replaces.
class Skipped {
 public:
  Skipped(const Line& line, const Piece& piece) : low_(line[piece.from]), high_(low_) {
    segments_.push_back({line[piece.to], line[piece.from]});
    for (std::size_t i = piece.from + 1; i <= piece.to; ++i) {
      segments_.push_back({line[i - 1], line[i]});
      low_ = {std::min(low_.x, line[i].x), std::min(low_.y, line[i].y)};
      high_ = {std::max(high_.x, line[i].x), std::max(high_.y, line[i].y)};
    }
  }

  Vertex low() const { return low_; }
  Vertex high() const { return high_; }

  // The line winds, and may run across its shortcut: what counts is how often it goes around.
  bool Holds(Vertex vertex) {
    if (vertex.x < low_.x || vertex.x > high_.x || vertex.y < low_.y || vertex.y > high_.y) {
      return false;
    }
    if (vertex == segments_[0].from || vertex == segments_[0].to) return false;
    if (!grid_) grid_.emplace(segments_);
    int turns = 0;
    grid_->EachWestOf(vertex.x, vertex.y, [&](std::size_t, int up) { turns += up; });
    return turns != 0;
  }

 private:
  std::vector<Segment> segments_;
  std::optional<SegmentGrid> grid_;  // only where there is something to look for
  Vertex low_;
  Vertex high_;
};

// After so many rounds of single vertices, all that are left come back.
constexpr int kPatience = 24;

class Simplifier {
 public:
  Simplifier(Arcs& arcs, double tolerance) : arcs_(arcs) {
    lines_.reserve(arcs.arcs.size());
    for (const Arc& arc : arcs.arcs) lines_.emplace_back(arc, tolerance);
    for (const ArcRing& ring : arcs.rings) areas_.push_back(TwiceArea(ring.ring->vertices));
    saved_.resize(areas_.size());
    fresh_.resize(arcs.arcs.size(), true);
  }

  void Run(Simplified& result) {
    for (int round = 0;; ++round) {
      while (SaveRings(round >= kPatience)) ++round;
      const std::size_t parted = PartPieces(round >= kPatience);
      result.piecesKept += parted;
      if (parted == 0) break;
    }
    result.ringsKept = static_cast<std::size_t>(std::count(saved_.begin(), saved_.end(), true));
    for (std::size_t i = 0; i < areas_.size(); ++i) {
      arcs_.rings[i].ring->vertices = VerticesOf(arcs_.rings[i]);
    }
  }

 private:
  std::vector<Vertex> VerticesOf(const ArcRing& ring) const {
    std::vector<Vertex> vertices;
    for (const auto& [arc, backwards] : ring.uses) lines_[arc].AppendTo(vertices, backwards);
    return vertices;
  }

  // Gives vertices back to each ring that has collapsed or turned over. Whether there was one.
  bool SaveRings(bool entirely) {
    std::vector<std::pair<std::size_t, std::size_t>> back;
    bool found = false;
    for (std::size_t i = 0; i < areas_.size(); ++i) {
      const std::vector<Vertex> vertices = VerticesOf(arcs_.rings[i]);
      const double area = TwiceArea(vertices);
      if (areas_[i] == 0 || (vertices.size() > 2 && area != 0 && (area > 0) == (areas_[i] > 0))) {
        continue;
      }
      const std::size_t before = back.size();
      CollectFarthest(arcs_.rings[i], entirely, back);
      if (back.size() == before) continue;
      saved_[i] = found = true;
    }
    for (const auto& [line, place] : back) {
      if (entirely) lines_[line].KeepAll();
      lines_[line].Keep(place);
      fresh_[line] = true;
    }
    return found;
  }

  // The vertex of a ring that is missed most; of each of its arcs where all are to come back.
  void CollectFarthest(const ArcRing& ring, bool ofEach,
                       std::vector<std::pair<std::size_t, std::size_t>>& back) const {
    const auto rank = [&](const std::pair<std::size_t, std::size_t>& dropped) {
      const Line& line = lines_[dropped.first];
      const Vertex vertex = line[dropped.second];
      return std::tuple(line.WeightOf(dropped.second), vertex.x, vertex.y);
    };
    std::pair<std::size_t, std::size_t> best{kNone, kNone};
    for (const ArcUse& use : ring.uses) {
      const std::pair<std::size_t, std::size_t> own{use.arc, lines_[use.arc].Farthest()};
      if (own.second == kNone) continue;
      if (ofEach) back.push_back(own);
      if (best.second == kNone || rank(own) > rank(best)) best = own;
    }
    if (best.second != kNone) back.push_back(best);
  }

  // Gives vertices back to shortcuts that do not fit in: how many there were. Only what has changed
  // since the last time is looked at.
  std::size_t PartPieces(bool entirely) {
    std::vector<Piece> pieces;
    for (std::size_t line = 0; line < lines_.size(); ++line) {
      lines_[line].EachPiece([&](std::size_t from, std::size_t to) {
        pieces.push_back({line, from, to});
      });
    }
    std::vector<bool> bad(pieces.size());
    MarkColliding(pieces, bad);
    MarkJumping(pieces, bad);
    std::fill(fresh_.begin(), fresh_.end(), false);
    for (std::size_t i = 0; i < pieces.size(); ++i) {
      if (bad[i]) Return(pieces[i], entirely);
    }
    return static_cast<std::size_t>(std::count(bad.begin(), bad.end(), true));
  }

  void MarkColliding(const std::vector<Piece>& pieces, std::vector<bool>& bad) const {
    std::vector<Segment> segments;
    segments.reserve(pieces.size());
    for (const auto& [line, from, to] : pieces) {
      segments.push_back({lines_[line][from], lines_[line][to]});
    }
    SegmentGrid(segments).EachNearPair([&](std::size_t a, std::size_t b) {
      if (!fresh_[pieces[a].line] && !fresh_[pieces[b].line]) return true;
      if (!pieces[a].IsShortcut() && !pieces[b].IsShortcut()) return true;
      if (!Collide(segments[a], segments[b])) return true;
      if (pieces[a].IsShortcut()) bad[a] = true;
      if (pieces[b].IsShortcut()) bad[b] = true;
      return true;
    });
  }

  // Where a shortcut passes over a vertex that stays, what hangs on that changes sides, though
  // nothing may cross: an island comes to lie in its neighbour.
  void MarkJumping(const std::vector<Piece>& pieces, std::vector<bool>& bad) const {
    std::vector<Segment> staying;  // without length
    std::vector<std::size_t> lineOf;
    for (const auto& [line, from, to] : pieces) {
      for (const std::size_t end : {from, to}) {
        staying.push_back({lines_[line][end], lines_[line][end]});
        lineOf.push_back(line);
      }
    }
    const SegmentGrid grid(staying);
    for (std::size_t i = 0; i < pieces.size(); ++i) {
      if (bad[i] || !pieces[i].IsShortcut()) continue;
      Skipped skipped(lines_[pieces[i].line], pieces[i]);
      grid.EachNear(skipped.low(), skipped.high(), [&](std::size_t vertex) {
        if (!fresh_[pieces[i].line] && !fresh_[lineOf[vertex]]) return true;
        if (skipped.Holds(staying[vertex].from)) bad[i] = true;
        return !bad[i];
      });
    }
  }

  void Return(const Piece& piece, bool entirely) {
    Line& line = lines_[piece.line];
    fresh_[piece.line] = true;
    if (entirely) {
      line.KeepAll(piece.from, piece.to);
    } else {
      line.Keep(line.Farthest(piece.from, piece.to));
    }
  }

  Arcs& arcs_;
  std::vector<Line> lines_;
  std::vector<double> areas_;  // of the rings, as they were
  std::vector<bool> saved_;
  std::vector<bool> fresh_;
};

std::size_t CountVertices(std::span<const Shape> shapes) {
  std::size_t count = 0;
  for (const Shape& shape : shapes) {
    for (const Ring& ring : shape) count += ring.vertices.size();
  }
  return count;
}

}  // namespace

Simplified Simplify(std::span<Shape> shapes, double tolerance) {
  Simplified result;
  result.verticesBefore = result.verticesAfter = CountVertices(shapes);
  if (!(tolerance > 0)) return result;
  Arcs arcs = CutToArcs(shapes);
  Simplifier(arcs, tolerance).Run(result);
  result.verticesAfter = CountVertices(shapes);
  return result;
}

}  // namespace vexel::import
