// Borders that neighbours share: simplified, dissolved, and which areas lie in which. All vertices
// are whole numbers, so that areas and sides are exact.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numeric>
#include <random>
#include <set>
#include <tuple>

#include "topology/dissolve.h"
#include "topology/order.h"
#include "topology/simplify.h"

namespace vexel::import {
namespace {

using Pairs = std::vector<std::pair<std::size_t, std::size_t>>;

std::int64_t Side(Vertex a, Vertex b, Vertex c) {
  const auto whole = [](float from, float to) { return static_cast<std::int64_t>(to - from); };
  return whole(a.x, b.x) * whole(a.y, c.y) - whole(a.y, b.y) * whole(a.x, c.x);
}

// Twice the area, above 0 against the clock.
std::int64_t AreaOf(const Ring& ring) {
  const std::vector<Vertex>& at = ring.vertices;
  std::int64_t area = 0;
  for (std::size_t i = 2; i < at.size(); ++i) area += Side(at[0], at[i - 1], at[i]);
  return area;
}

std::int64_t AreaOf(const Shape& shape) {
  return std::accumulate(
      shape.begin(), shape.end(), std::int64_t{0}, [](std::int64_t sum, const Ring& ring) {
        return sum + (ring.isHole ? -std::abs(AreaOf(ring)) : std::abs(AreaOf(ring)));
      });
}

std::vector<const Shape*> PointersTo(const std::vector<Shape>& shapes) {
  std::vector<const Shape*> pointers;
  for (const Shape& shape : shapes) pointers.push_back(&shape);
  return pointers;
}

// Random areas of a square land: wavy cells, some of them joined, some of them sea, with islands in
// the sea and with enclaves and lakes in cells and within a ring of cells.
struct Coverage {
  static constexpr int kSide = 6;
  static constexpr float kCell = 1000;

  std::mt19937 random;
  std::vector<Shape> shapes;                       // the land, its parts, the areas of these
  std::vector<std::vector<std::size_t>> children;  // of the land and its parts

  explicit Coverage(unsigned seed) : random(seed) {
    std::vector<std::vector<Shape>> cells = CellsOfAreas();
    children.resize(4);
    shapes.resize(4);
    for (const std::vector<Shape>& area : cells) {
      children[1 + random() % 3].push_back(shapes.size());
      shapes.push_back(Dissolve(PointersTo(area)).value());
    }
    for (const std::size_t whole : {1U, 2U, 3U, 0U}) {
      if (whole > 0) children[0].push_back(whole);
      shapes[whole] = Dissolve(ChildrenOf(whole)).value();
    }
  }

  std::vector<const Shape*> ChildrenOf(std::size_t whole) const {
    std::vector<const Shape*> parts;
    for (const std::size_t child : children[whole]) parts.push_back(&shapes[child]);
    return parts;
  }

 private:
  static float Place(int cell) { return static_cast<float>(cell) * kCell; }

  float Between(float low, float high) {
    return std::uniform_real_distribution<float>(low, high)(random);
  }

  // Wavy between its ends, closer to the straight line the closer to them.
  std::vector<Vertex> Wave(Vertex from, Vertex to) {
    std::vector<Vertex> wave{from};
    for (const float along : {1 / 8.F, 2 / 8.F, 3 / 8.F, 4 / 8.F, 5 / 8.F, 6 / 8.F, 7 / 8.F}) {
      const float off = Between(-.3F, .3F) * std::min(along, 1 - along);
      wave.push_back({std::round(from.x + along * (to.x - from.x) - off * (to.y - from.y)),
                      std::round(from.y + along * (to.y - from.y) + off * (to.x - from.x))});
    }
    wave.push_back(to);
    return wave;
  }

  Ring IsletIn(int column, int row) {
    Ring ring;
    for (int i = 0; i < 9; ++i) {
      const auto angle = static_cast<float>(i) * .69F;
      const float radius = Between(60, 140);
      ring.vertices.push_back({std::round(Place(column) + kCell / 2 + radius * std::cos(angle)),
                               std::round(Place(row) + kCell / 2 + radius * std::sin(angle))});
    }
    return ring;
  }

  std::vector<std::vector<Shape>> CellsOfAreas() {
    std::vector<Vertex> nodes;
    for (int i = 0; i < (kSide + 1) * (kSide + 1); ++i) {
      nodes.push_back({std::round(Place(i % (kSide + 1)) + Between(-150, 150)),
                       std::round(Place(i / (kSide + 1)) + Between(-150, 150))});
    }
    std::vector<std::vector<Vertex>> east;
    std::vector<std::vector<Vertex>> north;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
      east.push_back(Wave(nodes[i], nodes[std::min(i + 1, nodes.size() - 1)]));
      north.push_back(Wave(nodes[i], nodes[std::min(i + kSide + 1, nodes.size() - 1)]));
    }
    std::vector<std::vector<Shape>> areas(2);  // the first is a ring of cells around the second
    std::vector<std::size_t> areaOf(kSide * kSide);
    for (int i = 0; i < kSide * kSide; ++i) {
      const int column = i % kSide;
      const int row = i / kSide;
      const bool isRing = std::clamp(column, 1, 3) == column && std::clamp(row, 1, 3) == row;
      const auto chance = random() % 100;
      const auto at = static_cast<std::size_t>(i);
      std::size_t& area = areaOf[at] = areas.size();
      if (isRing) area = column == 2 && row == 2 ? 1 : 0;
      if (!isRing && chance < 40 && column > 0) area = areaOf[at - 1];
      if (!isRing && chance >= 40 && chance < 60 && row > 0) area = areaOf[at - kSide];
      const bool isSea = chance > 85 && (!isRing || area == 1);
      if (!isSea && area == areas.size()) areas.emplace_back();
      if (isSea && !isRing) area = 0;

      const std::size_t node = static_cast<std::size_t>(row * (kSide + 1) + column);
      Ring outline{east[node]};
      outline.vertices.pop_back();
      const auto append = [&](auto begin, auto end) {
        outline.vertices.insert(outline.vertices.end(), begin, end - 1);
      };
      append(north[node + 1].begin(), north[node + 1].end());
      append(east[node + kSide + 1].rbegin(), east[node + kSide + 1].rend());
      append(north[node].rbegin(), north[node].rend());
      Shape cell{outline};
      if (random() % 2 == 0) {
        const Ring islet = IsletIn(column, row);
        if (isSea || random() % 3 > 0) areas.push_back({{islet}});
        cell.push_back({islet.vertices, true});
      }
      if (!isSea) areas[area].push_back(std::move(cell));
    }
    std::erase_if(areas, [](const std::vector<Shape>& cells) { return cells.empty(); });
    return areas;
  }
};

struct Edge {
  Vertex from;
  Vertex to;

  Edge Back() const { return {to, from}; }
  bool EndsAt(Vertex vertex) const { return from == vertex || to == vertex; }
  friend bool operator==(const Edge&, const Edge&) = default;
  friend bool operator<(const Edge& a, const Edge& b) {
    return std::tie(a.from.x, a.from.y, a.to.x, a.to.y) <
           std::tie(b.from.x, b.from.y, b.to.x, b.to.y);
  }
};

using Edges = std::set<Edge>;

// With the inside at the left. Each may stand once.
Edges EdgesOf(const std::vector<const Shape*>& shapes) {
  Edges edges;
  for (const Shape* shape : shapes) {
    for (const Ring& ring : *shape) {
      const bool turned = (AreaOf(ring) < 0) != ring.isHole;
      Vertex last = ring.vertices.back();
      for (const Vertex vertex : ring.vertices) {
        const Edge edge = turned ? Edge{vertex, last} : Edge{last, vertex};
        EXPECT_TRUE(edges.insert(edge).second) << vertex.x << ' ' << vertex.y;
        last = vertex;
      }
    }
  }
  return edges;
}

Edges WithoutShared(const Edges& edges) {
  Edges bare;
  std::copy_if(edges.begin(), edges.end(), std::inserter(bare, bare.end()),
               [&](const Edge& edge) { return !edges.contains(edge.Back()); });
  return bare;
}

int Sign(std::int64_t side) { return side > 0 ? 1 : side < 0 ? -1 : 0; }

// Whether two edges have more in common than an end.
bool Meet(const Edge& a, const Edge& b) {
  const auto [left, right] = std::minmax(a.from.x, a.to.x);
  const auto [bottom, top] = std::minmax(a.from.y, a.to.y);
  if (std::max(b.from.x, b.to.x) < left || std::min(b.from.x, b.to.x) > right) return false;
  if (std::max(b.from.y, b.to.y) < bottom || std::min(b.from.y, b.to.y) > top) return false;
  const int from = Sign(Side(a.from, a.to, b.from));
  const int to = Sign(Side(a.from, a.to, b.to));
  if (a.EndsAt(b.from) || a.EndsAt(b.to)) {
    const Vertex shared = a.EndsAt(b.from) ? b.from : b.to;
    const Vertex own = a.from == shared ? a.to : a.from;
    const Vertex other = b.from == shared ? b.to : b.from;
    return from == 0 && to == 0 &&
           ((own.x - shared.x) * (other.x - shared.x) > 0 ||
            (own.y - shared.y) * (other.y - shared.y) > 0);
  }
  return from * to <= 0 && Sign(Side(b.from, b.to, a.from)) * Sign(Side(b.from, b.to, a.to)) <= 0;
}

bool AnyMeet(const Edges& edges) {
  Edges eastward;  // by their western ends
  for (const Edge& edge : edges) eastward.insert(std::min(edge, edge.Back()));
  for (auto a = eastward.begin(); a != eastward.end(); ++a) {
    for (auto b = std::next(a); b != eastward.end() && b->from.x <= a->to.x; ++b) {
      if (Meet(*a, *b)) return true;
    }
  }
  return false;
}

// What holds of all levels: the border of each whole is what its children do not share, each border
// between two of them stands at both, and nothing crosses.
void ExpectCoverage(const Coverage& land) {
  for (std::size_t whole = 0; whole < land.children.size(); ++whole) {
    const std::vector<const Shape*> parts = land.ChildrenOf(whole);
    const Edges edges = EdgesOf(parts);
    EXPECT_TRUE(WithoutShared(edges) == EdgesOf({&land.shapes[whole]})) << whole;
    EXPECT_EQ(std::accumulate(parts.begin(), parts.end(), std::int64_t{0},
                              [](auto sum, const Shape* part) { return sum + AreaOf(*part); }),
              AreaOf(land.shapes[whole]));
  }
  EXPECT_FALSE(AnyMeet(EdgesOf(PointersTo({land.shapes.begin() + 4, land.shapes.end()}))));
}

// The farthest that a vertex which went lies from the edge in its place.
double FarthestGone(const Ring& before, const Ring& after) {
  std::vector<Vertex> old = before.vertices;
  std::rotate(old.begin(), std::find(old.begin(), old.end(), after.vertices[0]), old.end());
  old.push_back(old[0]);
  double farthest = 0;
  auto from = old.begin();
  for (std::size_t i = 1; i <= after.vertices.size(); ++i) {
    const Vertex next = after.vertices[i % after.vertices.size()];
    const auto to = std::find(from + 1, old.end(), next);
    if (to == old.end()) return std::numeric_limits<double>::infinity();
    const double dx = next.x - from->x;
    const double dy = next.y - from->y;
    for (auto gone = from + 1; gone < to; ++gone) {
      const double along =
          ((gone->x - from->x) * dx + (gone->y - from->y) * dy) / (dx * dx + dy * dy);
      const double at = std::clamp(along, 0.0, 1.0);
      farthest =
          std::max(farthest, std::hypot(gone->x - from->x - at * dx, gone->y - from->y - at * dy));
    }
    from = to;
  }
  return farthest;
}

void ExpectRings(const Shape& before, const Shape& after, double tolerance) {
  ASSERT_EQ(after.size(), before.size());
  for (std::size_t i = 0; i < before.size(); ++i) {
    EXPECT_EQ(after[i].isHole, before[i].isHole);
    EXPECT_EQ(Sign(AreaOf(after[i])), Sign(AreaOf(before[i])));
    EXPECT_LE(FarthestGone(before[i], after[i]), tolerance * 1.0001);
  }
}

// From the same vertex in the same direction, whatever the ring's own.
Ring Canonical(Ring ring) {
  if (AreaOf(ring) < 0) std::reverse(ring.vertices.begin(), ring.vertices.end());
  const auto least =
      std::min_element(ring.vertices.begin(), ring.vertices.end(),
                       [](Vertex a, Vertex b) { return std::tie(a.x, a.y) < std::tie(b.x, b.y); });
  std::rotate(ring.vertices.begin(), least, ring.vertices.end());
  return ring;
}

void Stir(std::vector<Shape*>& order, std::mt19937& random) {
  std::shuffle(order.begin(), order.end(), random);
  for (Shape* shape : order) {
    for (Ring& ring : *shape) {
      const auto start = static_cast<std::ptrdiff_t>(random() % ring.vertices.size());
      std::rotate(ring.vertices.begin(), ring.vertices.begin() + start, ring.vertices.end());
      if (random() % 2 == 0) std::reverse(ring.vertices.begin(), ring.vertices.end());
    }
  }
}

// As Simplify, of the shapes in another order and their rings begun elsewhere.
std::vector<Shape> SimplifiedStirred(std::vector<Shape> shapes, double tolerance,
                                     std::mt19937& random) {
  std::vector<Shape*> order;
  for (Shape& shape : shapes) order.push_back(&shape);
  Stir(order, random);
  std::vector<Shape> stirred;
  for (Shape* shape : order) stirred.push_back(*shape);
  Simplify(stirred, tolerance);
  for (std::size_t i = 0; i < order.size(); ++i) *order[i] = stirred[i];
  return shapes;
}

std::size_t CountVertices(const std::vector<Shape>& shapes) {
  std::size_t count = 0;
  for (const Shape& shape : shapes) {
    for (const Ring& ring : shape) count += ring.vertices.size();
  }
  return count;
}

void ExpectSame(const std::vector<Shape>& shapes, const std::vector<Shape>& others) {
  for (std::size_t i = 0; i < shapes.size(); ++i) {
    for (std::size_t j = 0; j < shapes[i].size(); ++j) {
      EXPECT_EQ(Canonical(shapes[i][j]).vertices, Canonical(others[i][j]).vertices);
    }
  }
}

TEST(Simplify, KeepsTheBordersOfACoverage) {
  for (unsigned seed = 1; seed <= 12; ++seed) {
    const Coverage before(seed);
    for (const double tolerance : {25.0, 100.0, 300.0, 1e9}) {
      SCOPED_TRACE("seed " + std::to_string(seed) + ", tolerance " + std::to_string(tolerance));
      Coverage after = before;
      const Simplified told = Simplify(after.shapes, tolerance);
      EXPECT_EQ(told.verticesBefore, CountVertices(before.shapes));
      EXPECT_EQ(told.verticesAfter, CountVertices(after.shapes));
      EXPECT_LT(told.verticesAfter, told.verticesBefore * (tolerance < 50 ? 8 : 5) / 10);
      ExpectCoverage(after);
      for (std::size_t i = 0; i < before.shapes.size(); ++i) {
        ExpectRings(before.shapes[i], after.shapes[i], tolerance);
      }
      for (std::size_t whole = 0; whole < after.children.size(); ++whole) {
        const std::optional<Shape> joined = Dissolve(after.ChildrenOf(whole));
        ASSERT_TRUE(joined) << whole;
        EXPECT_EQ(joined->size(), after.shapes[whole].size()) << whole;
        EXPECT_TRUE(EdgesOf({&*joined}) == EdgesOf({&after.shapes[whole]})) << whole;
      }
      ExpectSame(after.shapes, SimplifiedStirred(before.shapes, tolerance, after.random));
    }
  }
}

TEST(Simplify, ChangesNothingWithoutATolerance) {
  const Coverage land(1);
  for (const double tolerance : {0.0, -1.0, std::nan("")}) {
    std::vector<Shape> shapes = land.shapes;
    EXPECT_EQ(Simplify(shapes, tolerance).verticesAfter, CountVertices(land.shapes));
    for (std::size_t i = 0; i < shapes.size(); ++i) {
      for (std::size_t j = 0; j < shapes[i].size(); ++j) {
        EXPECT_EQ(shapes[i][j].vertices, land.shapes[i][j].vertices);
      }
    }
  }
}

TEST(Dissolve, KeepsTheOuterBordersOfACoverage) {
  for (unsigned seed = 1; seed <= 40; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Coverage land(seed);
    ExpectCoverage(land);
    for (const Shape& shape : land.shapes) {
      for (const Ring& ring : shape) {
        EXPECT_EQ(AreaOf(ring) < 0, ring.isHole);
        EXPECT_EQ(EdgesOf({&shape}).size(), CountVertices({shape}));
      }
    }
    // From rings that begin anywhere and wind either way.
    std::vector<Shape> shapes = land.shapes;
    std::vector<Shape*> order;
    for (const std::size_t child : land.children[0]) order.push_back(&shapes[child]);
    Stir(order, land.random);
    const Shape whole = Dissolve(std::vector<const Shape*>(order.begin(), order.end())).value();
    EXPECT_TRUE(EdgesOf({&whole}) == EdgesOf({&land.shapes[0]}));
  }
}

Ring Box(float x, float y, float size, bool isHole = false) {
  return {{{x, y}, {x + size, y}, {x + size, y + size}, {x, y + size}}, isHole};
}

// Each ring as vertices:area, that of holes below 0.
std::string Told(const std::optional<Shape>& shape) {
  if (!shape) return "nothing";
  std::string text;
  for (const Ring& ring : *shape) {
    EXPECT_EQ(AreaOf(ring) < 0, ring.isHole);
    text += (text.empty() ? "" : " ") + std::to_string(ring.vertices.size()) + ':' +
            std::to_string(AreaOf(ring) / 2);
  }
  return text;
}

TEST(Simplify, JumpsOverNothing) {
  const Ring bay{{{0, 0}, {300, 0}, {300, 200}, {160, 200}, {150, 160}, {140, 200}, {0, 200}}};
  Ring cape = bay;
  cape.vertices[4] = {150, 240};
  const auto islet = [](float y, bool isHole = false) {
    return Ring{{{148, y}, {152, y}, {150, y + 4}}, isHole};
  };
  const struct {
    const char* what;
    std::vector<Shape> shapes;
    const char* told;
  } cases[] = {
      {"nothing in a bay", {{bay}}, "4:60000"},
      {"island before the bay", {{bay}, {islet(210)}}, "4:60000 3:8"},
      {"island in the bay", {{bay}, {islet(180)}}, "5:54000 3:8"},
      {"lake on a cape", {{cape, islet(220, true)}}, "5:66000 3:-8"},
      {"enclave on the cape", {{cape, islet(220, true)}, {islet(220)}}, "5:66000"},
  };
  for (auto [what, shapes, told] : cases) {
    Simplify(shapes, 60);
    EXPECT_EQ(Told(Dissolve(PointersTo(shapes))), told) << what;
  }
}

std::vector<Shape> UnitBoxes(const std::vector<Vertex>& corners) {
  std::vector<Shape> boxes;
  for (const auto& [x, y] : corners) boxes.push_back({Box(x, y, 1)});
  return boxes;
}

TEST(Dissolve, TellsPartsThatItCannotJoin) {
  const struct {
    const char* what;
    std::vector<Shape> parts;
    const char* told;
  } cases[] = {
      {"none", {}, ""},
      {"two beside", UnitBoxes({{0, 0}, {1, 0}}), "6:2"},
      {"wound against each other", {{Box(0, 0, 1)}, {{{{1, 0}, {1, 1}, {2, 1}, {2, 0}}}}}, "6:2"},
      {"ring", UnitBoxes({{0, 0}, {1, 0}, {2, 0}, {0, 1}, {2, 1}, {0, 2}, {1, 2}, {2, 2}}),
       "12:9 4:-1"},
      {"open ring", UnitBoxes({{0, 0}, {1, 0}, {2, 0}, {0, 1}, {2, 1}, {0, 2}, {1, 2}}),
       "12:8 4:-1"},
      {"corner", UnitBoxes({{0, 0}, {1, 1}}), "4:1 4:1"},
      {"within", {{Box(0, 0, 9)}, {Box(2, 2, 2)}}, "4:81"},
      {"filled", {{Box(0, 0, 9), Box(2, 2, 2, true)}, {Box(2, 2, 2)}}, "4:81"},
      {"island in a lake", {{Box(0, 0, 9), Box(2, 2, 5, true)}, {Box(3, 3, 1)}}, "4:81 4:-25 4:1"},
      {"lake on an island",
       {{Box(0, 0, 9), Box(1, 1, 7, true)}, {Box(2, 2, 5), Box(3, 3, 2, true)}},
       "4:81 4:-49 4:25 4:-4"},
      {"said twice", {{{{{0, 0}, {0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0}}}}}, "4:1"},
      {"without area", {{Box(0, 0, 1)}, {{{{5, 5}, {6, 6}}}}, {{{{7, 7}}}}}, "4:1"},
      {"overlap", {{Box(0, 0, 2)}, {Box(1, 1, 2)}}, "nothing"},
      {"upon each other", {{Box(0, 0, 1)}, {Box(0, 0, 1)}}, "nothing"},
      {"T-junction", {{Box(0, 0, 2)}, {Box(2, 0, 1)}}, "nothing"},
      {"touch between", {{Box(0, 0, 4)}, {{{{4, 2}, {6, 1}, {6, 3}}}}}, "nothing"},
  };
  for (const auto& [what, parts, told] : cases) {
    EXPECT_EQ(Told(Dissolve(PointersTo(parts))), told) << what;
  }
}

TEST(EnclosedPairs, AreThoseWithAnOutlineInAHole) {
  const Shape outer{Box(0, 0, 9), Box(1, 1, 7, true)};
  const Shape bent{{{{0, 0}, {7, 0}, {7, 3}, {3, 3}, {3, 7}, {0, 7}}},
                   {{{1, 1}, {6, 1}, {6, 2}, {2, 2}, {2, 6}, {1, 6}}, true}};
  const struct {
    const char* what;
    std::vector<Shape> shapes;
    Pairs pairs;
  } cases[] = {
      {"enclave", {{Box(1, 1, 7)}, outer}, {{1, 0}}},
      {"second outline", {outer, {Box(20, 0, 1), Box(2, 2, 1)}, {Box(30, 0, 1)}}, {{0, 1}}},
      {"lake", {outer, {Box(9, 0, 9)}}, {}},
      {"island in its own lake", {{outer[0], outer[1], Box(2, 2, 1)}}, {}},
      {"one in another",
       {outer, {Box(1, 1, 7), Box(2, 2, 4, true)}, {Box(2, 2, 4)}},
       {{0, 1}, {0, 2}, {1, 2}}},
      {"each in the other",
       {{outer[0], outer[1], Box(3, 3, 1)}, {Box(1, 1, 7), Box(2, 2, 4, true)}},
       {{0, 1}, {1, 0}}},
      {"touching", {outer, {{{{1, 1}, {4, 2}, {2, 4}}}}}, {{0, 1}}},
      {"two that touch", {outer, {Box(1, 1, 3)}, {Box(4, 4, 4)}}, {{0, 1}, {0, 2}}},
      {"beside a bent hole", {bent, {Box(4, 4, 1)}}, {}},
      {"in a bent hole", {bent, {Box(1, 4, 1)}}, {{0, 1}}},
  };
  for (const auto& [what, shapes, pairs] : cases) {
    EXPECT_EQ(EnclosedPairs(PointersTo(shapes)), pairs) << what;
  }
}

}  // namespace
}  // namespace vexel::import
