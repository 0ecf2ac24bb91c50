#include "render/fill.h"

#include <array>
#include <limits>

#include "render/line.h"
#include "render/render_fixture.h"

namespace vexel::test {
namespace {

constexpr int kColor = 3;

// Rings of one kind: where their vertices may lie, and how they are bent.
struct RingKind {
  const char* name;
  int left;
  int right;
  int top;
  int bottom;
};

std::ostream& operator<<(std::ostream& out, const RingKind& kind) { return out << kind.name; }

class DifferentialTest : public testing::TestWithParam<RingKind> {
 protected:
  int Random(int least, int most) {
    return std::uniform_int_distribution<int>(least, most)(random_);
  }

  // Up to 15 vertices, now and then up to 200; some repeat the one before, some stay on its row.
  std::vector<CPoint> RandomRing() {
    const RingKind& kind = GetParam();
    std::vector<CPoint> ring(static_cast<std::size_t>(Random(1, Random(0, 9) == 0 ? 200 : 15)));
    const int repeats = Random(0, 2);
    CPoint last{};
    for (CPoint& point : ring) {
      point = {Random(kind.left, kind.right), Random(kind.top, kind.bottom)};
      const int choice = Random(0, 5);
      if (repeats == 1 && choice < 3) point = last;
      if (repeats == 2 && choice < 2) point.y = last.y;
      last = point;
    }
    return ring;
  }

  std::mt19937 random_{20240117};
};

// Both halves of one law: our pixels are those of gd wherever gd can be asked.
TEST_P(DifferentialTest, FillAndOutlineTakeThePixelsOfGd) {
  PolygonFiller filler;
  for (int i = 0; i < 16000; ++i) {
    const int width = Random(1, 50);
    const int height = Random(1, 50);
    const std::vector<CPoint> ring = RandomRing();
    std::vector<gdPoint> points = ForGd(ring);
    const Picture theirs(width, height);
    const Picture ours(width, height);
    gdImageFilledPolygon(theirs.get(), points.data(), static_cast<int>(points.size()), kColor);
    filler.Fill(*ours, Ring(ring), kColor);
    ASSERT_EQ(Difference(*theirs, *ours), "") << "fill " << width << "x" << height << ToText(ring);
    gdImagePolygon(theirs.get(), points.data(), static_cast<int>(points.size()), 1);
    DrawRing(*ours, Ring(ring), 1);
    ASSERT_EQ(Difference(*theirs, *ours), "") << "line " << width << "x" << height << ToText(ring);
    std::vector<CPoint> distinct(ring.size());
    distinct.erase(distinct.begin() + (CopyDistinct(ring, distinct.data()) - distinct.data()),
                   distinct.end());
    const Picture shorter(width, height);
    filler.Fill(*shorter, Ring(distinct), kColor);
    DrawRing(*shorter, Ring(distinct), 1);
    ASSERT_EQ(Difference(*theirs, *shorter), "") << "shorter " << ToText(ring);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Rings, DifferentialTest,
    testing::Values(RingKind{"aroundThePage", -20, 70, -20, 70}, RingKind{"tiny", -2, 3, -2, 3},
                    RingKind{"onThePage", 0, 12, 0, 17}, RingKind{"onOneRow", -20, 70, 7, 7},
                    RingKind{"upright", 4, 6, -100, 100}, RingKind{"flat", -20000, 20000, -3, 55},
                    RingKind{"wide", -1000, 1000, -1000, 1000},
                    RingKind{"huge", -23170, 23169, -23170, 23169}),
    [](const auto& kind) { return std::string(kind.param.name); });

// The sloped side of the large triangles runs through the pixel of its row number: what a narrower
// multiplication would lose.
TEST(FillTest, ProductsBeyondAnIntAreExact) {
  PolygonFiller filler;
  for (const int far : {40000, 500000000, 1 << 30, std::numeric_limits<int>::max()}) {
    const Picture picture(20, 20);
    const std::vector<CPoint> ring{{-far, -far}, {far, far}, {-far, far}};
    filler.Fill(*picture, Ring(ring), kColor);
    DrawRing(*picture, Ring(ring), 1);
    for (int y = 0; y < 20; ++y) {
      for (int x = 0; x < 20; ++x) {
        ASSERT_EQ(picture->pixels[y][x], x < y    ? kColor
                                         : x == y ? 1
                                                  : 0)
            << far << ' ' << x << ' ' << y;
      }
    }
  }
}

// Half pixels go to the right and what is left of column 0 toward it, as with small numbers. The
// long sides run along x = y / 2 - 3 and x = 7 - y / 2.
TEST(FillTest, ProductsBeyondAnIntRoundAsOthersDo) {
  constexpr int kFar = 1 << 30;
  const std::vector<CPoint> rising{{-kFar / 2 - 3, -kFar}, {kFar / 2 - 3, kFar}, {-kFar, kFar}};
  const std::vector<CPoint> falling{{kFar / 2 + 7, -kFar}, {-kFar / 2 + 7, kFar}, {-kFar, -kFar}};
  PolygonFiller filler;
  const Picture rises(20, 20);
  const Picture falls(20, 20);
  filler.Fill(*rises, Ring(rising), kColor);
  filler.Fill(*falls, Ring(falling), kColor);
  for (int y = 0; y < 20; ++y) {
    const auto painted = [y](const Picture& picture) {
      return std::count(picture->pixels[y], picture->pixels[y] + 20, kColor);
    };
    EXPECT_EQ(painted(rises), y >= 4 ? (y - 5) / 2 + 1 : 0) << y;
    EXPECT_EQ(painted(falls), y <= 16 ? (15 - y) / 2 + 1 : 0) << y;
  }
}

TEST(FillTest, RingsAtTheEndsOfAnIntReachNoRowOutsideTheImage) {
  constexpr int kLeast = std::numeric_limits<int>::min();
  constexpr int kMost = std::numeric_limits<int>::max();
  const std::vector<CPoint> around{
      {kLeast, kLeast}, {kMost, kLeast}, {kMost, kMost}, {kLeast, kMost}};
  const std::vector<CPoint> above{{kLeast, kLeast}, {kMost, kLeast}, {0, -1}};
  PolygonFiller filler;
  const Picture picture(5, 5);
  filler.Fill(*picture, Ring(above), kColor);
  DrawRing(*picture, Ring(above), kColor);
  EXPECT_EQ(Difference(*picture, *Picture(5, 5)), "");
  filler.Fill(*picture, Ring(around), kColor);
  for (int y = 0; y < 5; ++y) {
    EXPECT_EQ(std::count(picture->pixels[y], picture->pixels[y] + 5, kColor), 5) << y;
  }
}

// More crossings than are held at a time, sorted and counted, in several bands each; and edges that
// come again and again.
TEST(FillTest, AnOutlineThatRunsUpAndDownThePageIsFilledAsAnyOther) {
  struct Case {
    int width, height, vertices, step;
  };
  constexpr int kMany = 120'000;
  PolygonFiller filler;
  for (const auto& [width, height, vertices, step] :
       {Case{300, 300, 1000, 7}, Case{9000, 300, 1000, 77}, Case{30000, 150, 3800, 41},
        Case{60, 60, 5001, 7}, Case{60, 60, kMany, 31}}) {
    std::vector<CPoint> ring;
    for (int i = 0; i < vertices; ++i) {
      ring.push_back({i * step % width - i % 3, i % 2 == 0 ? -1 : height - i % 5});
    }
    std::vector<gdPoint> points = ForGd(ring);
    const Picture theirs(width, height);
    const Picture ours(width, height);
    if (vertices < kMany) {  // gd would take minutes
      gdImageFilledPolygon(theirs.get(), points.data(), vertices, kColor);
      filler.Fill(*ours, Ring(ring), kColor);
    }
    EXPECT_EQ(Difference(*theirs, *ours), "") << "fill " << width << ' ' << vertices;
    gdImagePolygon(theirs.get(), points.data(), vertices, 1);
    DrawRing(*ours, Ring(ring), 1);
    EXPECT_EQ(Difference(*theirs, *ours), "") << "line " << width << ' ' << vertices;
  }
}

}  // namespace
}  // namespace vexel::test
