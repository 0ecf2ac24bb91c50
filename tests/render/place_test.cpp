#include "render/place.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <random>
#include <vector>

namespace vexel::test {
namespace {

constexpr int kLeast = std::numeric_limits<int>::min();
constexpr int kMost = std::numeric_limits<int>::max();

class PlaceTest : public testing::Test {
 protected:
  int Random(int least, int most) {
    return std::uniform_int_distribution<int>(least, most)(random_);
  }

  // What both axes give for each point, by 64-bit integers.
  static void ExpectAxes(const std::vector<CPoint>& points, const Axis& column, const Axis& row) {
    std::vector<CPoint> placed(points.size());
    PlaceVertices(points, column, row, placed.data());
    for (std::size_t i = 0; i < points.size(); ++i) {
      const CPoint expected{column(points[i].x), row(points[i].y)};
      ASSERT_EQ(placed[i], expected)
          << points[i].x << ", " << points[i].y << " from " << column.GetFrom() << ", "
          << row.GetFrom() << " by " << column.GetLength() << '/' << column.GetDivisor() << ", "
          << row.GetLength() << '/' << row.GetDivisor();
    }
  }

  std::mt19937 random_{20240211};
};

// Each coordinate alone as well, since one that is far has all of a ring placed in another way.
TEST_F(PlaceTest, NothingOverflowsAtTheEndsOfAnyRange) {
  constexpr int kNear = 1 << 24;
  constexpr int kLongest = 1 << 20;
  constexpr std::array kValues{kLeast, kLeast + 1, -kNear - 1, -kNear,    -kNear + 1, -32000, -1, 0,
                               1,      kNear - 1,  kNear,      kNear + 1, kMost - 1,  kMost};
  constexpr std::array kLengths{kLeast, -kLongest - 1, -kLongest, -1, 0, 1, 799, kLongest, kMost};
  std::vector<CPoint> points;
  for (const int x : kValues) points.emplace_back(x, x / 2);
  for (const int from : kValues) {
    for (const int to : kValues) {
      for (const int length : kLengths) {
        for (const int start : {-kLongest, 0, kMost}) {
          const Axis axis(from, to, start, length);
          ExpectAxes(points, axis, axis);
          for (const CPoint& point : points) ExpectAxes({point}, axis, Axis(to, from, start, 3));
        }
      }
    }
  }
}

// Quotients are whole, or a step to either side of it, as often as they can be.
TEST_F(PlaceTest, RandomMapsComeToThePixelsOfTheAxes) {
  std::vector<CPoint> points(64);
  for (int i = 0; i < 20'000; ++i) {
    const int size = Random(1, 1 << Random(1, 24));
    const Axis column(Random(-size, size), Random(-size, size), Random(-50, 50), Random(0, 4000));
    const Axis row(Random(-size, size), Random(-size, size), Random(-50, 50), Random(0, 65535));
    for (CPoint& point : points) point = {Random(-size, size), Random(-size, size)};
    ExpectAxes(points, column, row);
  }
}

}  // namespace
}  // namespace vexel::test
