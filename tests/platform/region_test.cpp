#include "platform/region.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <random>
#include <vector>

namespace vexel::test {
namespace {

bool Inside(const std::vector<CPoint>& ring, CPoint point) {
  PolygonPointTest test(point);
  for (const CPoint& vertex : ring) test.AddVertex(vertex);
  return test.Contains();
}

// How often a ring winds around a point: the angles under which its edges are seen, summed up. The
// point is moved off the edges, by more in x than in y: that is the half-open rule.
long TurnsAround(const std::vector<CPoint>& ring, CPoint point) {
  const double x = point.x + 1e-3;
  const double y = point.y + 1e-6;
  double angle = 0;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const CPoint& from = ring[i];
    const CPoint& to = ring[(i + 1) % ring.size()];
    angle += std::atan2((from.x - x) * (to.y - y) - (to.x - x) * (from.y - y),
                        (from.x - x) * (to.x - x) + (from.y - y) * (to.y - y));
  }
  return std::lround(angle / (2 * std::numbers::pi));
}

TEST(Region, HoldsWhatItsOutlineWindsAround) {
  std::mt19937 random(11);
  for (int round = 0; round < 500; ++round) {
    std::vector<CPoint> ring(3 + random() % 7);
    for (CPoint& vertex : ring) {
      vertex = {static_cast<int>(random() % 9), static_cast<int>(random() % 9)};
    }
    for (int at = 0; at < 81; ++at) {
      const CPoint point{at % 9, at / 9};
      ASSERT_EQ(Inside(ring, point), TurnsAround(ring, point) != 0)
          << "round " << round << " at " << point.x << ',' << point.y;
    }
  }
}

// The slanted edge runs through points whose products take more than 64 bits.
TEST(Region, IsExactForEveryInteger) {
  constexpr int kLeast = std::numeric_limits<int>::min();
  constexpr int kMost = std::numeric_limits<int>::max();
  const std::vector<CPoint> half{{kLeast, kLeast}, {kMost, kLeast}, {kMost, kMost}};
  for (const int at : {kLeast + 1, -1, 0, 5, kMost - 2}) {
    EXPECT_TRUE(Inside(half, {at, at})) << at;
    EXPECT_FALSE(Inside(half, {at - 1, at})) << at;
    EXPECT_TRUE(Inside(half, {at + 1, at})) << at;
  }
  EXPECT_FALSE(Inside({}, {0, 0}));
  EXPECT_FALSE(Inside({{1, 1}}, {1, 1}));
}

}  // namespace
}  // namespace vexel::test
