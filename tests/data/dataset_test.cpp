#include "data/dataset.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "data/areaindex.h"
#include "data/calculation.h"
#include "data/data_fixture.h"
#include "legend/legend.h"
#include "platform/exceptions.h"

namespace vexel::test {
namespace {

CAreaData Row(std::initializer_list<std::int32_t> codes, std::initializer_list<double> values) {
  CAreaData row(Key(codes));
  for (const double value : values) row.values.Add(value);
  return row;
}

TEST(AreaData, CopiesTheKeyAndAssignsAsManyValuesAsItHas) {
  const CAreaData five = Row({1}, {1, 2, 3, 4, 5});
  const CAreaData copy(five);  // NOLINT: the copy is what is tested
  EXPECT_THROW(copy.GetValue(0), CInvalidArgException);
  CAreaData two = Row({9}, {0, 0});
  two = five;
  EXPECT_EQ(two.values.GetSize(), 2);
  EXPECT_EQ(two.GetValue(1), 2);
  EXPECT_EQ(two.GetArea(), Key({1}));
  CAreaData six = Row({1}, {1, 2, 3, 4, 5, 6});
  EXPECT_THROW(six = five, CInvalidArgException);
  EXPECT_NE(copy == five, 0);
  EXPECT_NE(two == five, 0);
  EXPECT_THROW(static_cast<void>(five == two), CInvalidArgException);
  EXPECT_EQ(Row({1}, {NO_DATA_VALUE, 3}) == five, 0);
}

TEST(DataSet, AppendsRowsWholeAndFindsTheFirstOfAKey) {
  ProbeData data;
  EXPECT_EQ(data.FindAreaData(Key({1})), nullptr);
  std::vector<int> capacities;
  for (int i = 0; i < 47; ++i) {
    EXPECT_EQ(data.AddAreaData(Row({i % 40}, {1.0 * i, 7})), i);
    if (capacities.empty() || capacities.back() != data.areas.GetCapacity()) {
      capacities.push_back(data.areas.GetCapacity());
    }
  }
  EXPECT_EQ(capacities, (std::vector<int>{1, 5, 9, 13, 17, 21, 25, 29, 33, 37, 41, 46, 51}));
  EXPECT_EQ(data.FindAreaData(Key({3}))->GetValue(0), 3);
  EXPECT_EQ(data.GetAreaData(43).GetValue(1), 7);
}

TEST(DataSet, AssignmentCopiesTableSettingsAndSelectionButNotItself) {
  ProbeData a;
  a.SetNumVars(1);
  a.varDecs.SetSize(2);
  a.varNames.SetSize(2);
  a.SetVarName(0, "x");
  a.SetVarDecs(0, 3);
  a.SetNoValue("-");
  a.SetVar2Selected(0);
  a.AddAreaData(Row({1}, {5, 6}));
  a.error = "kept";
  ProbeData b;
  EXPECT_THROW(b.CVELAData::operator=(a), CInvalidArgException);
  b.varDecs.SetSize(2);
  b.varNames.SetSize(2);
  b.CVELAData::operator=(a);
  EXPECT_EQ(b.GetVarName(0), "x");
  EXPECT_EQ(b.GetAreaData(0).GetValue(1), 6);
  EXPECT_EQ(b.GetSelected(), 1);
  EXPECT_EQ(b.GetError(), "");
  a.CVELAData::operator=(a);
  EXPECT_EQ(a.GetNumAreas(), 1);
}

TEST(DataSet, PointersReachTheFirstRowOfEachNode) {
  CVELAMap map;
  CVELAData data;
  std::mt19937 random(11);
  for (int i = 0; i < 300; ++i) {
    const int code = static_cast<int>(random() % 200);
    map.InsertArea("", Key({code % 9, code}));
    data.AddAreaData(
        Row({static_cast<int>(random() % 9), static_cast<int>(random() % 200)}, {1.0 * i}));
  }
  map.SetAreaDataPointers(&data);
  int linked = 0;
  for (int i = 0; i < map.GetNumChildren(); ++i) {
    for (int j = 0; j < map.GetChild(i)->GetNumChildren(); ++j) {
      const CMapOb* node = map.GetChild(i)->GetChild(j);
      EXPECT_EQ(node->GetAreaData(), data.FindAreaData(node->GetArea()));
      linked += node->GetAreaData() != nullptr ? 1 : 0;
    }
  }
  EXPECT_GT(linked, 10);
}

struct IndicatorCase {
  double x, y;
  double percentChange, percent, ratio, difference;
};

TEST(Calculation, FollowsItsFormulaAndGuards) {
  constexpr double kNone = NO_DATA_VALUE;
  const std::vector<IndicatorCase> cases{{150, 120, 25, 125, 1.25, 30},
                                         {5, 0, kNone, kNone, kNone, 5},
                                         {kNone, 0, kNone, kNone, kNone, kNone},
                                         {5, kNone, kNone, kNone, kNone, kNone},
                                         {0, 4, -100, 0, 0, -4},
                                         {1e308, 1e-300, kNone, kNone, kNone, 1e308}};
  for (const IndicatorCase& c : cases) {
    SCOPED_TRACE(testing::Message() << c.x << ' ' << c.y);
    EXPECT_DOUBLE_EQ(Indicator(0, c.x, c.y), c.percentChange);
    EXPECT_DOUBLE_EQ(Indicator(1, c.x, c.y), c.percent);
    EXPECT_DOUBLE_EQ(Indicator(2, c.x, c.y), c.ratio);
    EXPECT_DOUBLE_EQ(Indicator(3, c.x, c.y), c.difference);
    EXPECT_EQ(Indicator(4, c.x, c.y), kNone);
  }
}

TEST(Calculation, DecimalsFollowATypicalValue) {
  constexpr double kNone = NO_DATA_VALUE;
  const std::vector<std::pair<std::vector<double>, int>> cases{
      {{}, 0},
      {{kNone, kNone}, 0},
      {{kNone, kNone, 1, 2, 3, 40, 50}, 2},
      {{-30, -20, -10}, 1},
      {{-4, -2, 1, 3, 5}, 2},
      {{-5, 0}, 0},
      {{0, 0, 0, 7}, 0},
      {{0.0004}, 6},
      {{20000}, 0},
      {{0.5}, 3},
      {{50}, 1},
      {{-std::numeric_limits<double>::max() / 2, std::numeric_limits<double>::max() / 2}, 0}};
  for (const auto& [sorted, decimals] : cases) {
    EXPECT_EQ(TypicalDecimals(sorted), decimals) << testing::PrintToString(sorted);
  }
}

class CalcTest : public DataTest {
 protected:
  CalcTest() {
    map.legend = &legend;
    legend.numGroups = 2;
    EXPECT_EQ(Load(kHead + kHeader + "12;X;~;150;120|12;3;~;5.5;0"), 1);
    map.SetAreaDataPointers(&data);
    data.SetVar2Selected(1);
  }
  CLegend legend;
};

TEST_F(CalcTest, FillsTheColumnAndItsDecimals) {
  const std::vector<int> decimals{1, 1, 2, 0};
  for (int calculation = 0; calculation < 4; ++calculation) {
    data.SetCalcSelected(calculation);
    data.PerformCalc();
    EXPECT_EQ(data.GetAreaData(0).GetValue(2), Indicator(calculation, 150, 120));
    EXPECT_EQ(data.GetAreaData(1).GetValue(2), Indicator(calculation, 5.5, 0));
    EXPECT_EQ(data.GetVarDecs(2), decimals[static_cast<std::size_t>(calculation)]) << calculation;
  }
  EXPECT_EQ(host.waitCursors, 0);
  data.SetVar2Selected(-1);
  EXPECT_THROW(data.PerformCalc(), CInvalidArgException);
  EXPECT_EQ(host.waitCursors, 0);
}

TEST_F(CalcTest, TitlesSayWhatIsShown) {
  const std::vector<std::string> titles{"Births - Land",
                                        "Births - Deaths (Percent change): Land",
                                        "Births / Deaths (Percent): Land",
                                        "Births / Deaths (Ratio): Land",
                                        "Births - Deaths (Difference): Land",
                                        "Land"};
  for (int calculation = -1; calculation < 5; ++calculation) {
    data.SetCalcSelected(calculation);
    EXPECT_EQ(map.GenerateTitle(), titles[static_cast<std::size_t>(calculation + 1)].c_str());
  }
  data.SetCalcSelected(2);
  map.ratioLabel = "je";
  map.ZoomTo(map.GetChild(0));
  EXPECT_EQ(map.GenerateTitle(), "Births / Deaths (je): North");
  data.SetVar2Selected(-1);
  EXPECT_THROW(map.GenerateTitle(), CInvalidArgException);
}

TEST_F(CalcTest, ValueTextsFollowTheMachine) {
  CMapOb* north = map.GetChild(0);
  EXPECT_EQ(map.GetDataStr(north), "0");  // the calculated column before its calculation
  data.SetVar2Selected(-1);
  EXPECT_EQ(map.GetDataStr(north), "150.0");
  host.profile = {{"sThousand", "."}, {"sDecimal", ","}};
  data.GetAreaData(0).SetValue(0, 1234567.25);
  EXPECT_EQ(map.GetDataStr(north), "1.234.567,2");
  data.GetAreaData(0).SetValue(0, NO_DATA_VALUE);
  EXPECT_EQ(map.GetDataStr(north), "<no data>");
  EXPECT_EQ(map.GetDataStr(&map), "<no data>");
}

}  // namespace
}  // namespace vexel::test
