#include <array>
#include <cstring>
#include <limits>

#include "data/data_fixture.h"
#include "legend/legend.h"
#include "legend/palettes.h"
#include "platform/exceptions.h"

namespace vexel::test {
namespace {

constexpr double kSentinel = std::numeric_limits<double>::max();

// A map of areas 1, 2, 3, ... with one variable; an area past the rows has none.
struct Page {
  explicit Page(const std::vector<double>& column, int decimals = 0, int areasWithoutRow = 0) {
    data.SetNumVars(1);
    data.varDecs.SetSize(2);
    data.SetVarDecs(0, decimals);
    for (int i = 0; i < static_cast<int>(column.size()) + areasWithoutRow; ++i) {
      map.InsertArea("area", Key({i + 1}));
      if (i >= static_cast<int>(column.size())) continue;
      CAreaData row(Key({i + 1}));
      row.values.Add(column[static_cast<std::size_t>(i)]);
      data.AddAreaData(row);
    }
    map.SetAreaDataPointers(&data);
    legend.numGroups = 3;
    legend.palette = CLegend::Palette::red;
  }

  LegendGroup& Group(int i) { return legend.groups[static_cast<std::size_t>(i)]; }
  unsigned long ColorOf(int area) { return map.GetChild(area)->GetColor(); }
  void Update() { legend.UpdateData(&map, &data); }

  // "lower..upper:count" for each group.
  std::string Groups() {
    std::ostringstream out;
    for (int i = 0; i < legend.numGroups; ++i) {
      const LegendGroup& group = Group(i);
      out << (i == 0 ? "" : " ") << group.lower << ".." << group.upper << ':' << group.count;
    }
    return out.str();
  }

  CVELAMap map;
  ProbeData data;
  CLegend legend;
};

TEST(Classification, BoundsFollowTheValues) {
  struct Case {
    int type;
    std::vector<double> hostLower;
    std::vector<double> values;
    std::string_view groups;
    int decimals = 0;
  };
  for (const Case& c : {
           Case{0, {}, {9, 2, 3, 4, 5, 6, 7, 8, 1, 10}, "1..3:3 4..6:3 7..10:4"},
           Case{0, {}, {1, 1, 1, 1, 1, 1, 2, 3}, "1..1:6 2..2:1 3..3:1 4..4:0"},
           Case{0, {}, {5}, "5..5:1 6..6:0 7..7:0"},
           Case{0, {}, {4, 2, 6}, "2..6:3"},
           Case{1, {}, {0, 10, 30}, "0..9.9:1 10..19.9:1 20..30:1", 1},
           Case{1, {}, {5, 5, 5}, "5..5:3 6..6:0 7..7:0"},
           Case{1, {}, {-1.5e308, 0, 1.5e308}, "-1.5e+308..-1:1 0..1.5e+308:2"},
           Case{2, {0, 10, 20}, {1, 12, 25, 40}, "1..9:1 10..19:1 20..40:2"},
           Case{2, {0, 10, 20}, {15, 16, 25}, "9..9:0 10..19:2 20..25:1"},
           Case{2, {0, 10}, {-5, 12}, "-5..9:1 10..12:1"},
           Case{2, {0, 10, 5}, {1, 2, 3}, "1..9:3 10..10:0 11..11:0"},
           Case{2, {0, 10, 10.05}, {1, 10, 10.1}, "1..9.9:1 10..10:1 10.1..10.1:1", 1},
           Case{2, {0, 10, 20, kSentinel}, {1, 2, 3}, "1..9:3 10..19:0 20..20:0 21..21:0"},
       }) {
    Page page(c.values, c.decimals);
    page.legend.intervalType = c.type;
    page.legend.numGroups = static_cast<int>(std::ranges::count(c.groups, ':'));
    for (std::size_t i = 0; i < c.hostLower.size(); ++i)
      page.legend.groups[i].lower = c.hostLower[i];
    page.Update();
    EXPECT_EQ(page.Groups(), c.groups);
    EXPECT_EQ(page.Group(page.legend.numGroups).lower, kSentinel);
  }
}

TEST(Classification, CountsMissingAreasApartAndColoursThemAsSuch) {
  Page page({3, NO_DATA_VALUE, 1, 2}, 0, 1);
  page.Update();
  EXPECT_EQ(page.legend.IsMissingData(), 2);
  EXPECT_EQ(page.Group(7).count, 2);
  EXPECT_EQ(page.Groups(), "1..1:1 2..2:1 3..3:1");
  const unsigned long colors[] = {0x0000FF, 0xFFFFFF, 0xC0C0FF, 0x8080FF, 0xFFFFFF};
  for (int i = 0; i < 5; ++i) EXPECT_EQ(page.ColorOf(i), colors[i]) << i;
}

// A host's NaN is a missing value, wherever it stands; bounds as low as the mark take none either.
TEST(Classification, KnowsMissingValuesOfEveryKind) {
  Page page({3, std::numeric_limits<double>::quiet_NaN(), 1, NO_DATA_VALUE, 2});
  page.Update();
  EXPECT_EQ(page.legend.numMissing, 2);
  EXPECT_EQ(page.Groups(), "1..1:1 2..2:1 3..3:1");
  EXPECT_EQ(page.ColorOf(1), 0xFFFFFFU);
  page.legend.intervalType = CLegend::hostBounds;
  for (int i = 0; i < 3; ++i) page.Group(i).lower = kSentinel;
  page.Update();
  EXPECT_EQ(page.ColorOf(3), 0xFFFFFFU);
}

TEST(Classification, LeavesTheUpperEndOfOneGroupToTheHost) {
  Page page({1, 2, 3});
  page.legend.intervalType = CLegend::hostBounds;
  page.legend.numGroups = 1;
  page.Group(0).upper = 23;
  page.Update();
  EXPECT_EQ(page.Groups(), "1..23:3");
}

TEST(Classification, WithoutAnyValueHasZeroBoundsOrKeepsTheHosts) {
  Page page({NO_DATA_VALUE, NO_DATA_VALUE});
  page.Group(1).lower = 8;
  page.legend.intervalType = CLegend::hostBounds;
  page.Update();
  EXPECT_EQ(page.Group(1).lower, 8);
  EXPECT_EQ(page.ColorOf(0), 0xFFFFFFU);
  page.legend.intervalType = CLegend::equalWidths;
  page.Update();
  EXPECT_EQ(page.Groups(), "0..0:0 0..0:0 0..0:0");
  EXPECT_EQ(page.ColorOf(0), 0xFFFFFFU);
}

// Whatever the data and the settings: each value falls into one group or none, the counts say so,
// and the nodes have the colours of their groups.
TEST(Classification, CountsAddUpAndColoursAgreeWithThem) {
  std::vector<double> column;
  for (int i = 0; i < 50; ++i) column.push_back(i % 7 == 0 ? NO_DATA_VALUE : (i * i) % 23);
  for (int setting = 0; setting < 21; ++setting) {
    Page page(column);
    page.legend.intervalType = setting / 7;
    page.legend.numGroups = setting % 7 + 1;
    page.legend.palette = 0;
    page.Group(0).upper = 23;
    for (int i = 0; i < page.legend.numGroups; ++i) page.Group(i).lower = 3 * i;
    page.Update();
    int counted = page.legend.numMissing;
    for (int i = 0; i < page.legend.numGroups; ++i) {
      int colored = 0;
      for (int area = 0; area < 50; ++area) colored += page.ColorOf(area) == page.Group(i).color;
      EXPECT_EQ(colored, page.Group(i).count) << setting << ' ' << i;
      counted += page.Group(i).count;
    }
    EXPECT_EQ(counted, 50) << setting;
  }
}

TEST(Classification, LabelsFollowTheMachineAndTheHostsWords) {
  RecordingHost host;
  host.profile = {{"sThousand", "."}, {"sDecimal", ","}};
  Page page({1000, 2500.5, 99999}, 1);
  page.legend.toText = "bis";
  page.legend.noDataText = "fehlt";
  page.Update();
  EXPECT_EQ(page.Group(0).rangeLabel, "1.000,0 bis 2.500,4");
  EXPECT_EQ(page.Group(7).rangeLabel, "fehlt");
  host.profile = {{"sThousand", ""}, {"sDecimal", ""}};
  page.legend.UpdateLegend();
  EXPECT_EQ(page.Group(2).upperText, "99999.0");
}

TEST(Classification, CustomPaletteStartsFromTheColoursInUseAndThenFollowsTheHost) {
  Page page({1, 2, 3});
  page.legend.reverseColors = 1;
  page.Update();
  EXPECT_EQ(page.Group(2).color, 0xC0C0FFU);
  page.legend.palette = CLegend::Palette::custom;
  page.Update();
  EXPECT_EQ(page.Group(0).customColor, 0x0000FFU);
  page.Group(0).customColor = 0x123456;
  page.Group(7).customColor = 0x777777;
  page.Update();
  EXPECT_EQ(page.ColorOf(0), 0x123456U);
  EXPECT_EQ(page.Group(7).color, 0x777777U);
  page.legend.palette = CLegend::Palette::blue;
  page.Update();
  EXPECT_EQ(page.Group(7).color, 0xFFFFFFU);
  page.legend.palette = CLegend::Palette::custom;
  page.Update();
  EXPECT_EQ(page.Group(0).color, 0x123456U);
}

TEST(Classification, RefusesWhatHasNoMeaning) {
  Page page({1, 2, 3});
  const auto refuses = [&](int groups, int level = 1) {
    page.legend.numGroups = groups;
    page.map.PrepareLevelDrawing(level);
    EXPECT_THROW(page.Update(), CInvalidArgException) << groups << level;
  };
  refuses(0);
  refuses(8);
  refuses(3, 4);
  page.data.SetVar1Selected(2);
  refuses(3);
  for (const auto& [palette, groups] : {std::pair{-1, 3}, {kNumFixedPalettes, 3}, {0, 0}, {0, 8}}) {
    EXPECT_THROW(PaletteColors(palette, groups), CInvalidArgException) << palette << groups;
  }
  for (const int slot : {-1, 8}) EXPECT_THROW(page.legend.GetRow(slot), CInvalidArgException);
}

TEST(Classification, AnUnknownPaletteKeepsTheColoursAndAnUnknownTypeTheBounds) {
  Page page({1, 2, 3});
  page.Update();
  for (const int unknown : {-1, 7}) {
    page.legend.palette = page.legend.intervalType = unknown;
    page.Group(1).lower = 3;
    page.Group(7).color = 0x123456;
    page.Update();
    EXPECT_EQ(page.Groups(), "1..1:2 3..2:0 3..3:1");
    EXPECT_EQ(page.Group(7).color, 0x123456U);
    EXPECT_EQ(page.ColorOf(1), 0xC0C0FFU);  // the first group has taken it
  }
}

// Bounds that are left as a host has set them need not ascend, nor be numbers.
TEST(Classification, ColoursFollowTheGroupOfEachValueWhateverTheBounds) {
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  std::vector<double> column{NO_DATA_VALUE};
  for (int i = -2; i < 14; ++i) column.push_back(i);
  for (const std::array<double, 3>& bounds :
       {std::array{0.0, 4.0, 9.0}, std::array{9.0, 4.0, 6.0}, std::array{0.0, kNan, 6.0},
        std::array{kNan, 2.0, 2.0}, std::array{NO_DATA_VALUE, 3.0, kSentinel}}) {
    Page page(column);
    page.Update();
    page.legend.intervalType = -1;
    for (int i = 0; i < 3; ++i) page.Group(i).lower = bounds[static_cast<std::size_t>(i)];
    page.Update();
    for (std::size_t area = 0; area < column.size(); ++area) {
      const int slot = page.legend.GroupOf(column[area]).value_or(CLegend::kNoDataSlot);
      EXPECT_EQ(page.ColorOf(static_cast<int>(area)), page.Group(slot).color)
          << bounds[0] << ' ' << bounds[1] << ' ' << column[area];
    }
  }
}

TEST(Legend, CopiesTheHostsPart) {
  CLegend other;
  std::strcpy(other.titleFont.lfFaceName, "Courier");
  std::strcpy(other.textFont.lfFaceName, "Courier");
  other.title = "Rate";
  other.palette = CLegend::Palette::grey;
  other.intervalType = CLegend::hostBounds;
  other.hostFlag = other.drawFrame = other.useGroupNames = other.reverseColors = 7;
  other.numGroups = 6;
  other.groups[2].count = 9;
  other.numMissing = other.customSaved = 1;
  other.noDataText = "none";
  CLegend legend;
  EXPECT_EQ(legend.groups[6].groupName, "Group 7");
  EXPECT_EQ(legend.values.GetSize(), 1000);
  legend = other;
  EXPECT_EQ(legend.title, "Rate");
  EXPECT_STREQ(legend.titleFont.lfFaceName, "Courier");
  EXPECT_STREQ(legend.textFont.lfFaceName, "Courier");
  EXPECT_EQ(legend.palette, CLegend::Palette::grey);
  EXPECT_EQ(legend.intervalType, CLegend::hostBounds);
  EXPECT_EQ(legend.hostFlag + legend.drawFrame + legend.useGroupNames + legend.reverseColors, 28);
  EXPECT_EQ(legend.numGroups, 6);
  EXPECT_EQ(legend.groups[2].count, 9);
  EXPECT_EQ(legend.numMissing + legend.customSaved, 0);
  EXPECT_EQ(legend.noDataText, "No data");
}

// A host hands these bytes to its platform.
TEST(Legend, CarriesFontsAsThePlatformsRecord) {
  unsigned char expected[60] = {0xF3, 0xFF, 0xFF, 0xFF};  // -13, the low byte first
  expected[16] = 0x90;                                    // 400
  expected[17] = 0x01;
  expected[27] = 34;
  std::strcpy(reinterpret_cast<char*>(expected) + 28, "Arial");
  const CLegend legend;
  EXPECT_EQ(std::memcmp(&legend.titleFont, expected, sizeof(expected)), 0);
  EXPECT_EQ(std::memcmp(&legend.textFont, expected, sizeof(expected)), 0);
}

}  // namespace
}  // namespace vexel::test
