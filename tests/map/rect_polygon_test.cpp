#include <numbers>

#include "map/map_fixture.h"

namespace {

using vexel::test::ToText;

CPolygon& Ring(CPolygon& polygon, std::initializer_list<CPoint> vertices) {
  for (const CPoint& vertex : vertices) polygon.AddPoint(vertex);
  return polygon;
}

TEST(RectF, NullNormalizedAndUnited) {
  EXPECT_TRUE(CRectF(0, -0.0F, 0, 0).IsRectNull());
  EXPECT_FALSE(CRectF(0, 0, 1, 0).IsRectNull());
  CRectF rect(5, 3, 1, 3);
  rect.NormalizeRect();
  EXPECT_EQ(ToText(rect), "1 3 5 3");
  EXPECT_EQ(CRectF(0, 9, 1, 2).Height(), -7);
  // A null rectangle counts as its zeros.
  const CRectF null;
  rect.UnionRect(&null, &rect);
  EXPECT_EQ(ToText(rect), "0 0 5 3");
}

TEST(PolygonHitTest, FollowsTheWindingRule) {
  CPolygon twice;  // inside by winding, outside by parity
  Ring(twice, {{0, 0}, {9, 0}, {9, 9}, {0, 9}, {0, 0}, {6, 0}, {6, 6}, {0, 6}});
  EXPECT_TRUE(twice.HitTest({3, 3}, 0));
  EXPECT_TRUE(twice.HitTest({8, 8}, 0));
  EXPECT_FALSE(twice.HitTest({10, 3}, 0));
  CPolygon undone;  // the second turn goes the other way
  Ring(undone, {{0, 0}, {9, 0}, {9, 9}, {0, 9}, {0, 0}, {0, 6}, {6, 6}, {6, 0}});
  EXPECT_FALSE(undone.HitTest({3, 3}, 0));
  EXPECT_TRUE(undone.HitTest({8, 8}, 0));
}

TEST(PolygonHitTest, TurnsTheRingButNotThePointAndTruncatesAfterwards) {
  CPolygon polygon;  // an eighth of a turn takes (3, 0) to (2.12, 2.12), which counts as (2, 2)
  Ring(polygon, {{0, 0}, {3, 0}, {0, 3}});
  constexpr auto kEighth = static_cast<float>(std::numbers::pi / 4);
  EXPECT_TRUE(polygon.HitTest({-1, 1}, kEighth));
  EXPECT_FALSE(polygon.HitTest({0, 2}, kEighth));
  EXPECT_FALSE(polygon.HitTest({2, 0}, kEighth));
}

TEST(PolygonHitTest, TakesIntegersOfAnySizeAndTheFirst64000Vertices) {
  constexpr int kFar = std::numeric_limits<int>::max();
  CPolygon far;
  Ring(far, {{-kFar, -kFar}, {kFar, -kFar}, {kFar, kFar}, {-kFar, kFar}}).AddPointF(0, 0);
  EXPECT_TRUE(far.HitTest({0, 0}, 0));
  EXPECT_TRUE(far.HitTest({0, 0}, 0.5F));
  far.RemoveAllPoints();
  EXPECT_EQ(far.GetSizeF(), 1);
  EXPECT_FALSE(far.HitTest({0, 0}, 0));
  CPolygon large;
  for (int i = 0; i < 63998; ++i) large.AddPoint(0, 0);
  Ring(large, {{8, 0}, {8, 8}, {0, 8}});
  EXPECT_TRUE(large.HitTest({5, 2}, 0));
  EXPECT_FALSE(large.HitTest({2, 5}, 0));
}

}  // namespace
