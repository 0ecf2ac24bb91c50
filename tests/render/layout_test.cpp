#include "platform/exceptions.h"
#include "render/render_fixture.h"

namespace vexel::test {
namespace {

struct LayoutCase {
  const char* path;
  int width;
  int height;
  int extentWidth;
  int extentHeight;
  int longestText;
  int groups;
  const char* mapRect;
  const char* legendRect;
};

std::ostream& operator<<(std::ostream& out, const LayoutCase& layout) { return out << layout.path; }

class LayoutTest : public testing::TestWithParam<LayoutCase> {};

TEST_P(LayoutTest, PlacesMapAndLegend) {
  const LayoutCase& layout = GetParam();
  Scene scene({0, 0, layout.extentWidth, -layout.extentHeight}, layout.longestText);
  scene.legend.numGroups = layout.groups;
  ProbePage page(&scene.map, &scene.legend, nullptr, "page.gif");
  page.PrepareCoords(100, 100);
  page.PrepareCoords(layout.width, layout.height);
  EXPECT_EQ(ToText(page.mapRect), layout.mapRect);
  EXPECT_EQ(ToText(page.legendRect), layout.legendRect);
  EXPECT_EQ(page.titleRect.top, 0);
  EXPECT_EQ(page.titleRect.bottom, 20);
  EXPECT_EQ(page.extent, scene.map.GetBoundRect());
}

INSTANTIATE_TEST_SUITE_P(
    Paths, LayoutTest,
    testing::Values(
        LayoutCase{"wide", 600, 600, 32000, 16000, 15, 4, "10, 155, 590, 445",
                   "240, 455, 360, 565"},
        LayoutCase{"wideMovedUp", 500, 400, 32000, 16000, 13, 4, "10, 30, 490, 270",
                   "196, 280, 304, 390"},
        LayoutCase{"wideShrunk", 500, 300, 32000, 16000, 13, 4, "110, 30, 389, 170",
                   "196, 180, 304, 290"},
        LayoutCase{"tall", 600, 500, 16000, 32000, 15, 4, "185, 30, 415, 490",
                   "425, 380, 545, 490"},
        LayoutCase{"tallMovedLeft", 400, 500, 16000, 32000, 13, 4, "42, 30, 272, 490",
                   "282, 380, 390, 490"},
        LayoutCase{"tallShrunkLegendBeside", 500, 300, 32000, 20000, 13, 7, "10, 30, 372, 256",
                   "382, 86, 490, 256"},
        LayoutCase{"tallShrunkLegendBelow", 500, 600, 24000, 32000, 35, 7, "107, 30, 392, 410",
                   "130, 420, 370, 590"},
        // 2000 * 250 and 1000 * 500: a tie goes to the wide form.
        LayoutCase{"tie", 510, 260, 2000, 1000, 13, 0, "75, 30, 434, 210", "240, 220, 270, 250"},
        // The tall form looks at widths alone, however high the legend is.
        LayoutCase{"tallLegendAboveThePage", 600, 140, 1000, 1000, 13, 7, "250, 30, 350, 130",
                   "360, -40, 468, 130"},
        LayoutCase{"tallLegendJustFitsBelow", 510, 540, 24000, 32000, 35, 7, "135, 30, 375, 350",
                   "135, 360, 375, 530"},
        // Where something is too wide for the page, each place has a clamp of its own.
        LayoutCase{"wideBroadLegend", 200, 400, 32000, 16000, 35, 4, "10, 155, 190, 245",
                   "10, 255, 250, 365"},
        LayoutCase{"tallBroadLegendBelow", 200, 600, 10000, 32000, 35, 4, "31, 30, 168, 470",
                   "0, 480, 240, 590"},
        LayoutCase{"tallBroadMapLegendBelow", 500, 10000, 489, 9990, 15, 0, "10, 30, 495, 9950",
                   "235, 9960, 265, 9990"},
        LayoutCase{"noExtent", 600, 600, 0, 0, 15, 4, "10, 300, 590, 300", "240, 310, 360, 420"},
        LayoutCase{"noWidth", 600, 500, 0, 1000, 15, 4, "300, 30, 300, 490", "310, 380, 430, 490"}),
    [](const auto& layout) { return std::string(layout.param.path); });

TEST(LegendMeasureTest, GoesByTheRowsAndWhatTheyShow) {
  Scene scene({}, 13);
  CMapGif page(&scene.map, &scene.legend, nullptr, "page.gif");
  scene.legend.numGroups = 5;
  scene.legend.groups[7].rangeLabel = "twenty characters...";
  scene.legend.groups[3].groupName = "Łódź";
  EXPECT_EQ(page.GetLegendWidth(), 108);
  EXPECT_EQ(page.GetLegendHeight(), 130);
  scene.legend.numMissing = 1;
  EXPECT_EQ(page.GetLegendWidth(), 150);
  EXPECT_EQ(page.GetLegendHeight(), 150);
  scene.legend.useGroupNames = 1;
  for (LegendGroup& group : scene.legend.groups) group.groupName = "";
  scene.legend.groups[3].groupName = "Łódź, Łódź";  // ten characters, sixteen bytes
  EXPECT_EQ(page.GetLegendWidth(), 90);
  scene.legend.numGroups = 0;
  scene.legend.numMissing = 0;
  EXPECT_EQ(page.GetLegendWidth(), 30);
  EXPECT_EQ(page.GetLegendHeight(), 30);
  scene.legend.numGroups = 9;
  EXPECT_THROW(page.GetLegendWidth(), CInvalidArgException);
}

TEST(LayoutOfATurnedMapTest, TakesTheExtentOfTheTurnedPoints) {
  Scene scene;
  CMapOb& root = AddArea(scene.map, "r", 1, {{1000, 0}, {0, 3000}, {-1000, 0}}, 0);
  TurnNode(root, 45);
  root.SetBoundRect({-1000, 3000, 1000, 0});
  scene.map.ZoomTo(&root);
  ProbePage page(&scene.map, &scene.legend, nullptr, "page.gif");
  EXPECT_EQ(ToText(page.extent), "-1000, 3000, 1000, 0");
  page.PrepareCoords(600, 600);
  EXPECT_EQ(ToText(page.extent), "-2121, -707, 707, 2121");
}

}  // namespace
}  // namespace vexel::test
