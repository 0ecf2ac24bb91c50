#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <vector>

#include "data/dataset.h"
#include "legend/legend.h"
#include "legend/palettes.h"
#include "map/map.h"
#include "platform/exceptions.h"
#include "support/recording_host.h"

namespace vexel::test {
namespace {

constexpr double kSentinel = std::numeric_limits<double>::max();

class ProbeData : public CVELAData {
 public:
  using CVELAData::varDecs;
};

// A map of areas 1, 2, 3, ... with one variable; an area past the rows has none.
struct Page {
  explicit Page(const std::vector<double>& column, int decimals = 0, int areasWithoutRow = 0) {
    data.SetNumVars(1);
    data.varDecs.SetSize(2);
    data.SetVarDecs(0, decimals);
    for (std::size_t i = 0; i < column.size() + static_cast<std::size_t>(areasWithoutRow); ++i) {
      CAreaStruct key;
      key.codes[0] = static_cast<int>(i) + 1;
      map.InsertArea("area", key);
      if (i >= column.size()) continue;
      CAreaData row(key);
      row.values.SetSize(2);
      row.SetValue(0, column[i]);
      data.AddAreaData(row);
    }
    map.SetAreaDataPointers(&data);
    legend.numGroups = 3;
    legend.palette = 3;
  }

  std::vector<double> Column(double LegendGroup::*field) const {
    std::vector<double> column;
    for (int i = 0; i < legend.numGroups; ++i) column.push_back(Group(i).*field);
    return column;
  }
  std::vector<int> Counts() const {
    std::vector<int> counts;
    for (int i = 0; i < legend.numGroups; ++i) counts.push_back(Group(i).count);
    return counts;
  }
  const LegendGroup& Group(int i) const { return legend.groups[static_cast<std::size_t>(i)]; }
  void Update() { legend.UpdateData(&map, &data); }

  CVELAMap map;
  ProbeData data;
  CLegend legend;
};

struct BoundsCase {
  const char* name;
  int type;
  std::vector<double> values;
  std::vector<double> lower;
  std::vector<double> upper;
  std::vector<int> count;
  int decimals = 0;
  std::vector<double> hostLower{};
};

class Bounds : public testing::TestWithParam<BoundsCase> {};

TEST_P(Bounds, FollowTheValues) {
  const BoundsCase& expected = GetParam();
  Page page(expected.values, expected.decimals);
  page.legend.numGroups = static_cast<int>(expected.lower.size());
  page.legend.intervalType = expected.type;
  for (std::size_t i = 0; i < expected.hostLower.size(); ++i) {
    page.legend.groups[i].lower = expected.hostLower[i];
  }
  page.Update();
  const auto expectNear = [](const std::vector<double>& found, const std::vector<double>& wanted) {
    ASSERT_EQ(found.size(), wanted.size());
    for (std::size_t i = 0; i < found.size(); ++i) EXPECT_DOUBLE_EQ(found[i], wanted[i]) << i;
  };
  expectNear(page.Column(&LegendGroup::lower), expected.lower);
  expectNear(page.Column(&LegendGroup::upper), expected.upper);
  EXPECT_EQ(page.Counts(), expected.count);
  EXPECT_EQ(page.Group(page.legend.numGroups).lower, kSentinel);
}

const std::vector<double> kOneToTen{1, 2, 3, 4, 5, 6, 7, 8, 9, 10};

INSTANTIATE_TEST_SUITE_P(
    Classification, Bounds,
    testing::Values(
        BoundsCase{"CountsInThree", 0, kOneToTen, {1, 4, 7}, {3, 6, 10}, {3, 3, 4}},
        BoundsCase{"CountsOfDuplicates",
                   0,
                   {1, 1, 1, 1, 1, 1, 2, 3},
                   {1, 2, 3, 4},
                   {1, 2, 3, 4},
                   {6, 1, 1, 0}},
        BoundsCase{"CountsAllEqual", 0, {5, 5, 5}, {5, 6}, {5, 6}, {3, 0}},
        BoundsCase{"CountsOfOneValue", 0, {5}, {5, 6, 7}, {5, 6, 7}, {1, 0, 0}},
        BoundsCase{"CountsInOneGroup", 0, {4, 2, 6}, {2}, {6}, {3}},
        BoundsCase{"Widths", 1, {0, 10, 30}, {0, 10, 20}, {9, 19, 30}, {1, 1, 1}},
        BoundsCase{"WidthsWithDecimal", 1, {0, 10, 30}, {0, 10, 20}, {9.9, 19.9, 30}, {1, 1, 1}, 1},
        BoundsCase{"WidthsAllEqual", 1, {5, 5, 5}, {5, 6, 7}, {5, 6, 7}, {3, 0, 0}},
        BoundsCase{
            "WidthsBeyondADouble", 1, {-1.5e308, 0, 1.5e308}, {-1.5e308, 0}, {-1, 1.5e308}, {1, 2}},
        BoundsCase{
            "HostKept", 2, {1, 12, 25, 40}, {1, 10, 20}, {9, 19, 40}, {1, 1, 2}, 0, {0, 10, 20}},
        BoundsCase{"HostRaisedToLeast",
                   2,
                   {7, 12, 25},
                   {7, 10, 20},
                   {9, 19, 25},
                   {1, 1, 1},
                   0,
                   {0, 10, 20}},
        BoundsCase{"HostFirstGroupEmpty",
                   2,
                   {15, 16, 25},
                   {9, 10, 20},
                   {9, 19, 25},
                   {0, 2, 1},
                   0,
                   {0, 10, 20}},
        BoundsCase{
            "HostOutOfOrder", 2, {1, 2, 3}, {1, 10, 11}, {9, 10, 11}, {3, 0, 0}, 0, {0, 10, 5}},
        BoundsCase{"HostWithOldSentinel",
                   2,
                   {1, 2, 3},
                   {1, 10, 20, 21},
                   {9, 19, 20, 21},
                   {3, 0, 0, 0},
                   0,
                   {0, 10, 20, kSentinel}},
        BoundsCase{"HostLoweredToLeast", 2, {-5, 12}, {-5, 10}, {9, 12}, {1, 1}, 0, {0, 10}}),
    [](const auto& test) { return test.param.name; });

TEST(Classification, CountsMissingAreasApartAndColoursThemAsSuch) {
  Page page({3, NO_DATA_VALUE, 1, 2}, 0, 1);
  page.Update();
  EXPECT_EQ(page.legend.IsMissingData(), 2);
  EXPECT_EQ(page.Group(7).count, 2);
  EXPECT_EQ(page.Group(7).rangeLabel, "No data");
  EXPECT_EQ(page.Counts(), (std::vector<int>{1, 1, 1}));
  const std::vector<unsigned long> colors{0x0000FF, 0xFFFFFF, 0xC0C0FF, 0x8080FF, 0xFFFFFF};
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(page.map.GetChild(i)->GetColor(), colors[static_cast<std::size_t>(i)]) << i;
  }
}

TEST(Classification, WithoutAnyValueHasZeroBoundsOrKeepsTheHosts) {
  Page page({NO_DATA_VALUE, NO_DATA_VALUE});
  page.legend.groups[1].lower = 8;
  page.legend.intervalType = CLegend::hostBounds;
  page.Update();
  EXPECT_EQ(page.Group(1).lower, 8);
  EXPECT_EQ(page.map.GetChild(0)->GetColor(), 0xFFFFFFU);
  page.legend.intervalType = CLegend::equalWidths;
  page.Update();
  EXPECT_EQ(page.Column(&LegendGroup::lower), (std::vector<double>{0, 0, 0}));
  EXPECT_EQ(page.Column(&LegendGroup::upper), (std::vector<double>{0, 0, 0}));
  EXPECT_EQ(page.Counts(), (std::vector<int>{0, 0, 0}));
  EXPECT_EQ(page.map.GetChild(0)->GetColor(), 0xFFFFFFU);
}

// Whatever the data and the settings: each value falls into one group or none, the counts say so,
// and the nodes have the colours of their groups.
TEST(Classification, CountsAddUpAndColoursAgreeWithThem) {
  for (const int type : {0, 1, 2}) {
    for (int groups = 1; groups <= 7; ++groups) {
      std::vector<double> column;
      for (int i = 0; i < 50; ++i) column.push_back(i % 7 == 0 ? NO_DATA_VALUE : (i * i) % 23);
      Page page(column);
      page.legend.intervalType = type;
      page.legend.numGroups = groups;
      page.legend.palette = 0;
      page.legend.groups[0].upper = 23;
      for (int i = 0; i < groups; ++i)
        page.legend.groups[static_cast<std::size_t>(i)].lower = 3 * i;
      page.Update();
      int counted = 0;
      for (int i = 0; i < groups; ++i) {
        const auto inGroup = [&](int child) {
          return page.map.GetChild(child)->GetColor() == page.Group(i).color;
        };
        int colored = 0;
        for (int child = 0; child < 50; ++child) colored += inGroup(child) ? 1 : 0;
        EXPECT_EQ(colored, page.Group(i).count) << type << '/' << groups << '/' << i;
        counted += page.Group(i).count;
      }
      EXPECT_EQ(counted + page.legend.numMissing, 50);
    }
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
  EXPECT_EQ(page.Group(2).upperText, "99.999,0");
  EXPECT_EQ(page.Group(7).rangeLabel, "fehlt");
  host.profile = {{"sThousand", ""}, {"sDecimal", "."}};
  page.legend.UpdateLegend();
  EXPECT_EQ(page.Group(2).upperText, "99999.0");
  host.profile = {{"sThousand", "\u202F"}, {"sDecimal", ""}};
  page.legend.UpdateLegend();
  EXPECT_EQ(page.Group(2).upperText, "99 999.0");
}

TEST(Classification, CustomPaletteStartsFromTheColoursInUseAndThenFollowsTheHost) {
  Page page({1, 2, 3});
  page.legend.reverseColors = 1;
  page.Update();
  EXPECT_EQ(page.Group(0).color, 0x0000FFU);
  EXPECT_EQ(page.Group(2).color, 0xC0C0FFU);
  page.legend.palette = CLegend::kCustomPalette;
  page.Update();
  EXPECT_EQ(page.Group(0).customColor, 0x0000FFU);
  EXPECT_EQ(page.legend.customSaved, 1);
  page.legend.groups[0].customColor = 0x123456;
  page.legend.groups[7].customColor = 0x777777;
  page.Update();
  EXPECT_EQ(page.map.GetChild(0)->GetColor(), 0x123456U);
  EXPECT_EQ(page.Group(7).color, 0x777777U);
  page.legend.palette = 1;
  page.Update();
  EXPECT_EQ(page.Group(7).color, 0xFFFFFFU);
  page.legend.palette = CLegend::kCustomPalette;
  page.Update();
  EXPECT_EQ(page.Group(0).color, 0x123456U);
}

TEST(Classification, RefusesWhatHasNoMeaning) {
  Page page({1, 2, 3});
  const auto refuses = [&](auto&& change) {
    CLegend& legend = page.legend;
    legend.numGroups = 3;
    legend.palette = legend.intervalType = 0;
    change(legend);
    EXPECT_THROW(page.Update(), CInvalidArgException);
  };
  refuses([](CLegend& legend) { legend.numGroups = 0; });
  refuses([](CLegend& legend) { legend.numGroups = 8; });
  refuses([](CLegend& legend) { legend.palette = 7; });
  refuses([](CLegend& legend) { legend.intervalType = 3; });
  refuses([&](CLegend&) { page.map.PrepareLevelDrawing(4); });
  page.map.PrepareLevelDrawing(1);
  refuses([&](CLegend&) { page.data.SetVar1Selected(2); });
}

TEST(Legend, StartsWithItsDefaultsAndCopiesTheHostsPart) {
  CLegend legend;
  EXPECT_EQ(legend.title, "Legend");
  EXPECT_EQ(legend.groups[6].groupName, "Group 7");
  EXPECT_EQ(legend.groups[7].groupName, "No data");
  EXPECT_EQ(legend.values.GetSize(), 1000);
  CLegend other;
  other.title = "Rate";
  other.groups[2].count = 9;
  other.numMissing = 4;
  other.customSaved = 1;
  other.noDataText = "none";
  legend = other;
  EXPECT_EQ(legend.title, "Rate");
  EXPECT_EQ(legend.groups[2].count, 9);
  EXPECT_EQ(legend.numMissing, 0);
  EXPECT_EQ(legend.customSaved, 0);
  EXPECT_EQ(legend.noDataText, "No data");
}

TEST(Palettes, GoFromTheFirstOfTwoToSevenColours) {
  for (int palette = 0; palette < kNumFixedPalettes; ++palette) {
    EXPECT_EQ(PaletteColors(palette, 1)[0], PaletteColors(palette, 2)[0]);
    for (int groups = 2; groups <= 7; ++groups) {
      const auto colors = PaletteColors(palette, groups);
      ASSERT_EQ(colors.size(), static_cast<std::size_t>(groups));
      for (std::size_t i = 1; i < colors.size(); ++i) EXPECT_NE(colors[i - 1], colors[i]);
    }
  }
  EXPECT_EQ(PaletteColors(0, 7)[6], 0x000080U);  // dark red, red in the low byte
  EXPECT_EQ(PaletteColors(1, 5)[2], 0xFF4040U);
  EXPECT_EQ(PaletteColors(2, 6)[0], 0x80FFC0U);
  EXPECT_EQ(PaletteColors(4, 4)[3], 0x00C0C0U);
  EXPECT_THROW(PaletteColors(6, 3), CInvalidArgException);
  EXPECT_THROW(PaletteColors(0, 8), CInvalidArgException);
}

}  // namespace
}  // namespace vexel::test
