#include <cmath>

#include "platform/exceptions.h"
#include "render/render_fixture.h"

namespace vexel::test {
namespace {

TEST(ScalingTest, PutsTheLargestYOnTop) {
  Scene scene;
  const auto page = scene.MakePage(600, 600);
  ASSERT_EQ(ToText(page->mapRect), "10, 155, 590, 445");
  page->SetPolygon(MakePolygon({{0, 0}, {16000, -8000}, {32000, -16000}, {-7, 60}}).get());
  EXPECT_EQ(page->numPoints, 4);
  EXPECT_EQ(ToText(page->GetVertices()), "(10, 155)(300, 300)(590, 445)(10, 154)");
}

TEST(ScalingTest, ATurnedRootReadsTheExtentTheOtherWayRound) {
  Scene scene;
  const auto page = scene.MakePage(600, 600);
  page->extent = {-16000, -8000, 16000, 8000};
  const auto polygon = MakePolygon({{0, 8000}, {0, -8000}, {40, 0}});
  scene.map.AddPoly(new CPolygon);
  TurnNode(scene.map, 0);
  ASSERT_TRUE(std::signbit(scene.map.GetAngle()));  // a negative zero is no angle
  page->SetPolygon(polygon.get());
  EXPECT_EQ(ToText(page->GetVertices()), "(300, 445)(300, 155)(300, 300)");
  TurnNode(scene.map, 10);
  page->SetPolygon(polygon.get());
  EXPECT_EQ(ToText(page->GetVertices()), "(300, 155)(300, 445)(300, 300)");
  // The start vertex still goes by the rows of a map that is not turned: 0, 4 and 0 here.
  page->extent = {0, 0, 10, 10};
  page->mapRect = {0, 0, 10, 5};
  page->SetPolygon(MakePolygon({{0, 0}, {1, 9}, {2, 1}}).get());
  EXPECT_EQ(ToText(page->GetVertices()), "(2, 4)(0, 5)(1, 0)");
}

TEST(ScalingTest, TheRingBeginsWithTheLastRunOnTheRowOfItsFirstVertex) {
  Scene scene;
  const auto page = scene.MakePage(600, 600);
  page->extent = page->mapRect = {0, 0, 100, 100};
  page->SetPolygon(MakePolygon({{0, 3}, {1, 7}, {2, 9}, {3, 3}, {4, 3}}).get());
  EXPECT_EQ(ToText(page->GetVertices()), "(3, 3)(4, 3)(0, 3)(1, 7)(2, 9)");
  page->SetPolygon(MakePolygon({{0, 3}, {1, 3}, {2, 3}}).get());
  EXPECT_EQ(ToText(page->GetVertices()), "(0, 3)(1, 3)(2, 3)");
}

struct RotateCase {
  CPoint from;
  float angle;
  CPoint to;
};

TEST(RotatePolygonTest, TurnsCounterClockwiseAndTruncates) {
  const RotateCase cases[] = {{{1000, 0}, 1.5707964F, {0, 1000}},
                              {{3, 0}, 0.5235988F, {2, 1}},
                              {{0, 3}, 0.5235988F, {-1, 2}},
                              {{30800, -31000}, 0.361F, {39764, -18123}},
                              {{2147483647, 2147483647}, 0.78539816F, {0, 2147483647}}};
  for (const RotateCase& turn : cases) {
    const auto source = MakePolygon({turn.from});
    const auto target = MakePolygon({{7, 7}, {8, 8}});
    CMapGif::RotatePolygon(source.get(), target.get(), turn.angle);
    ASSERT_EQ(target->GetSize(), 1);
    EXPECT_NEAR(target->GetPoint(0).x, turn.to.x, turn.from.y > 1000 ? 200 : 0);
    EXPECT_EQ(target->GetPoint(0).y, turn.to.y);
    CMapGif::RotatePolygon(source.get(), source.get(), 0.0F);
    EXPECT_EQ(source->GetPoint(0), turn.from);
  }
  const auto target = MakePolygon({{7, 7}});
  const CPolygon empty;
  CMapGif::RotatePolygon(&empty, target.get(), 1.0F);
  EXPECT_EQ(target->GetSize(), 0);
}

TEST(OutlineColorTest, GoesByThePalette) {
  CLegend legend;
  const unsigned long colors[] = {0, 0x00FFFF, 0x00FFFF, 0x00FFFF, 0x0000FF, 0x00FFFF, 0x00FFFF, 0};
  for (int palette = 0; palette < 8; ++palette) {
    legend.palette = palette;
    EXPECT_EQ(CVELAMap::GetOutlineColor(&legend), colors[palette]) << palette;
  }
  legend.palette = -1;
  EXPECT_EQ(CVELAMap::GetOutlineColor(&legend), 0U);
}

// A page whose working space is its pixels, so that what is painted can be read off.
class PlainPageTest : public testing::Test {
 protected:
  PlainPageTest() { page->extent = page->mapRect = {0, 0, 100, 100}; }
  int At(int x, int y) const { return page->image->pixels[y][x]; }

  Scene scene;
  std::unique_ptr<ProbePage> page = scene.MakePage(100, 100);
};

TEST_F(PlainPageTest, LaterPolygonsAndChildrenPaintOverAndHolesDoNotCut) {
  CMapOb& parent = AddArea(scene.map, "p", 1, {{0, 0}, {80, 0}, {80, 80}, {0, 80}}, 0x0000FF);
  auto hole = MakePolygon({{10, 10}, {70, 10}, {70, 20}, {10, 20}});
  hole->SetHole(1);
  parent.AddPoly(hole.release());
  CMapOb& hidden = AddArea(parent, "h", 2, {{0, 60}, {80, 60}, {80, 80}, {0, 80}}, 0x00FF00);
  hidden.SetDraw(0);
  AddArea(hidden, "c", 3, {{40, 40}, {90, 40}, {90, 90}, {40, 90}}, 0xFF0000);
  page->DrawMap(&scene.map, "u");
  EXPECT_EQ(At(5, 5), 2);
  EXPECT_EQ(At(30, 15), 2);  // the hole is filled
  EXPECT_EQ(At(30, 10), 1);  // and outlined
  EXPECT_EQ(At(5, 70), 2);   // an area that is not drawn
  EXPECT_EQ(At(60, 80), 3);  // its child is, over the parent's outline
  EXPECT_EQ(At(90, 60), 1);
  EXPECT_EQ(At(95, 95), 0);

  scene.legend.palette = 1;
  page->DrawOutline(&hidden);
  EXPECT_EQ(At(30, 60), 5);  // yellow, which came after the area's green
  EXPECT_EQ(At(60, 70), 4);
  EXPECT_EQ(At(90, 85), 1);  // children stay out of it
}

TEST_F(PlainPageTest, APolygonWithoutPointsStopsThePageWhereItCame) {
  AddArea(scene.map, "a", 1, {{0, 0}, {9, 0}, {9, 9}, {0, 9}}, 0x0000FF).AddPoly(new CPolygon);
  EXPECT_THROW(page->DrawMap(&scene.map, ""), CInvalidArgException);
  EXPECT_EQ(At(5, 5), 2);
}

}  // namespace
}  // namespace vexel::test
