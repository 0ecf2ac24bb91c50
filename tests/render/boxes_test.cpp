#include <gdfontmb.h>
#include <gdfonts.h>

#include "data/dataset.h"
#include "render/render_fixture.h"

namespace vexel::test {
namespace {

void Write(const Picture& picture, gdFontPtr font, int x, int y, std::string text) {
  gdImageString(picture.get(), font, x, y, reinterpret_cast<unsigned char*>(text.data()), 1);
}

void Box(const Picture& picture, int left, int top, int right, int bottom, int fill) {
  if (fill >= 0) gdImageFilledRectangle(picture.get(), left, top, right, bottom, fill);
  gdImageRectangle(picture.get(), left, top, right, bottom, 1);
}

class BoxesTest : public testing::Test {
 protected:
  BoxesTest() {
    scene.map.data = &data;
    scene.map.SetName("Region");
    data.SetCalcSelected(7);  // the title is the root's name alone
  }

  Scene scene{{0, 0, 32000, -16000}, 13};
  CVELAData data;
};

TEST_F(BoxesTest, TheTitleIsCentredByFivePixelsACharacterOrRunsOffThePage) {
  const std::pair<std::string, int> titles[] = {{"Forty characters of a title, counted out", 150},
                                                {std::string(100000, 'W'), 0}};
  for (const auto& [title, x] : titles) {
    const auto page = scene.MakePage(500, 400);
    const Picture expected(500, 400);
    scene.map.SetName(CVELAString(title));
    page->DrawTitle();
    Write(expected, gdFontGetMediumBold(), x, 0, title);
    EXPECT_EQ(Difference(*page->image, *expected), "");
  }
}

TEST_F(BoxesTest, TheLegendHasFrameHeadingAndRows) {
  scene.legend.numGroups = 3;
  scene.legend.numMissing = 2;
  scene.legend.groups[0].color = 0x0000FF;
  scene.legend.groups[1].color = 0x00FF00;
  scene.legend.groups[2].color = 0xFF0000;
  scene.legend.groups[7].rangeLabel = "Łódź";
  for (const int frame : {1, 0}) {
    scene.legend.drawFrame = frame;
    const auto page = scene.MakePage(500, 400);
    ASSERT_EQ(ToText(page->legendRect), "196, 280, 304, 390");
    page->DrawLegend();
    const Picture expected(500, 400);
    if (frame != 0) Box(expected, 196, 280, 303, 389, -1);
    Write(expected, gdFontGetSmall(), 232, 285, "Legend");
    const char* texts[] = {"x", "xxxxxxxxxxxxx", "x", "\xA3\xF3\x64\xBC"};
    for (int row = 0; row < 4; ++row) {
      const int y = 305 + 20 * row;
      Box(expected, 201, y, 216, y + 15, row == 3 ? 0 : row + 2);
      Write(expected, gdFontGetSmall(), 221, y, texts[row]);
    }
    EXPECT_EQ(Difference(*page->image, *expected), "") << frame;
  }
}

TEST_F(BoxesTest, AHeadingWiderThanTheBoxStartsAtItsEdge) {
  scene.legend.numGroups = 0;
  scene.legend.title = "A heading that is wider than the box";
  scene.legend.drawFrame = 0;
  const auto page = scene.MakePage(500, 400);
  page->DrawLegend();
  const Picture expected(500, 400);
  const CRect& box = page->legendRect;
  Write(expected, gdFontGetSmall(), box.left, box.top + 5, "A heading that is wider than the box");
  EXPECT_EQ(Difference(*page->image, *expected), "");
}

struct ValueBoxCase {
  const char* name;
  CRect bound;
  int left;
  int top;
};

std::ostream& operator<<(std::ostream& out, const ValueBoxCase& box) { return out << box.name; }

class ValueBoxTest : public BoxesTest, public testing::WithParamInterface<ValueBoxCase> {};

TEST_P(ValueBoxTest, StandsWithItsCornerOverTheCentreAndStaysOnThePage) {
  const ValueBoxCase& box = GetParam();
  CMapOb& area = AddArea(scene.map, "Abcdef", 1,
                         {{box.bound.left, box.bound.top}, {box.bound.right, box.bound.bottom}}, 0);
  area.SetBoundRect(box.bound);
  const auto page = scene.MakePage(600, 600);
  page->extent = {0, 0, 32000, -16000};
  page->mapRect = {10, 155, 590, 445};
  page->DrawValueBox(&area);
  const Picture expected(600, 600);
  gdImageFilledRectangle(expected.get(), box.left, box.top, box.left + 63, box.top + 39, 0);
  Box(expected, box.left, box.top, box.left + 63, box.top + 39, 0);
  Write(expected, gdFontGetSmall(), box.left + 5, box.top + 5, "Abcdef");
  gdImageLine(expected.get(), box.left, box.top + 20, box.left + 63, box.top + 20, 1);
  Write(expected, gdFontGetSmall(), box.left + 5, box.top + 25, "<no data>");
  EXPECT_EQ(Difference(*page->image, *expected), "");
}

INSTANTIATE_TEST_SUITE_P(
    Places, ValueBoxTest,
    testing::Values(ValueBoxCase{"middle", {8000, -4000, 16000, -12000}, 227, 300},
                    ValueBoxCase{"sidesInAnyOrder", {16000, -12000, 8000, -4000}, 227, 300},
                    ValueBoxCase{"rightEdge", {30000, -4000, 31400, -12000}, 535, 300},
                    ValueBoxCase{"bottomRight", {31000, -30000, 33000, -31000}, 535, 559},
                    ValueBoxCase{"topLeftIsLeftAlone", {-1655, 9104, -1655, 9104}, -19, -10}),
    [](const auto& place) { return std::string(place.param.name); });

TEST_F(BoxesTest, OnATurnedMapTheValueBoxStandsOverTheTurnedPoints) {
  scene.map.AddPoly(new CPolygon);
  TurnNode(scene.map, 30);
  CMapOb& area = AddArea(scene.map, "Abcdef", 1, {{9000, -4000}}, 0);
  const auto page = scene.MakePage(600, 600);
  page->extent = {0, -16000, 32000, 16000};
  CPolygon turned;
  CMapGif::RotatePolygon(area.GetPoly(0), &turned, scene.map.GetAngle());
  page->SetPolygon(&turned);
  const CPoint corner = page->points[0];
  page->DrawValueBox(&area);
  const auto& pixels = page->image->pixels;
  EXPECT_EQ(pixels[corner.y][corner.x], 1);
  EXPECT_EQ(pixels[corner.y + 39][corner.x + 63], 1);
  EXPECT_EQ(pixels[corner.y - 1][corner.x] + pixels[corner.y][corner.x - 1], 0);
}

}  // namespace
}  // namespace vexel::test
