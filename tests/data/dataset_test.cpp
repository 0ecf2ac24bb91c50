#include "data/dataset.h"

#include <limits>
#include <random>

#include "data/calculation.h"
#include "data/data_fixture.h"
#include "legend/legend.h"
#include "platform/exceptions.h"

namespace vexel::test {
namespace {

constexpr double kNone = NO_DATA_VALUE;
constexpr double kMost = std::numeric_limits<double>::max();

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

TEST(DataSet, AssignmentCopiesTableSettingsAndSelectionButNotItself) {
  ProbeData a;
  a.SetNumVars(1);
  a.varDecs.SetSize(2);
  a.varNames.SetSize(2);
  a.SetVarName(0, "x");
  a.SetVar2Selected(0);
  EXPECT_EQ(a.AddAreaData(Row({1}, {5, 6})), 0);
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
  const auto key = [&] {
    const int code = static_cast<int>(random() % 200);
    return Key({code % 9, code});
  };
  for (int i = 0; i < 300; ++i) {
    map.InsertArea("", key());
    CAreaData row(key());
    row.values.Add(i);
    EXPECT_EQ(data.AddAreaData(row), i);
  }
  map.SetAreaDataPointers(&data);
  int linked = 0;
  for (int i = 0; i < map.GetNumChildren(); ++i) {
    for (int j = 0; j < map.GetChild(i)->GetNumChildren(); ++j) {
      const CMapOb* node = map.GetChild(i)->GetChild(j);
      int row = 0;
      while (row < 300 && !(data.GetAreaData(row).GetArea() == node->GetArea())) ++row;
      EXPECT_EQ(node->GetAreaData(), row < 300 ? &data.GetAreaData(row) : nullptr);
      EXPECT_EQ(node->GetAreaData(), data.FindAreaData(node->GetArea()));
      linked += row < 300 ? 1 : 0;
    }
  }
  EXPECT_GT(linked, 10);
}

TEST(Calculation, FollowsItsFormulaAndGuards) {
  struct Case {
    double x, y, results[4];
  };
  for (const auto& [x, y, results] :
       {Case{150, 120, {25, 125, 1.25, 30}}, Case{5, 0, {kNone, kNone, kNone, 5}},
        Case{kNone, 0, {kNone, kNone, kNone, kNone}}, Case{5, kNone, {kNone, kNone, kNone, kNone}},
        Case{0, 4, {-100, 0, 0, -4}}, Case{1e308, 1e-300, {kNone, kNone, kNone, 1e308}}}) {
    for (int calculation = 0; calculation < 4; ++calculation)
      EXPECT_DOUBLE_EQ(Indicator(calculation, x, y), results[calculation]) << x << ' ' << y;
    EXPECT_EQ(Indicator(4, x, y), kNone);
  }
}

TEST(Calculation, DecimalsFollowATypicalValue) {
  struct Case {
    std::vector<double> sorted;
    int decimals;
  };
  for (const auto& [sorted, decimals] :
       {Case{{}, 0}, Case{{kNone, kNone}, 0}, Case{{kNone, kNone, 1, 2, 3, 40, 50}, 2},
        Case{{-30, -20, -10}, 1}, Case{{-4, -2, 1, 3, 5}, 2}, Case{{-5, 0}, 0},
        Case{{0, 0, 0, 7}, 0}, Case{{-1, 0, 0, 0, 700}, 3}, Case{{0, 15, 15}, 1}, Case{{0.0004}, 6},
        Case{{20000}, 0}, Case{{0.5}, 3}, Case{{50}, 1}, Case{{-kMost / 2, kMost / 2}, 0}}) {
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
  const int decimals[] = {1, 1, 2, 0};
  for (int calculation = 0; calculation < 4; ++calculation) {
    data.SetCalcSelected(calculation);
    data.PerformCalc();
    EXPECT_EQ(data.GetAreaData(0).GetValue(2), Indicator(calculation, 150, 120));
    EXPECT_EQ(data.GetAreaData(1).GetValue(2), Indicator(calculation, 5.5, 0));
    EXPECT_EQ(data.GetVarDecs(2), decimals[calculation]) << calculation;
  }
  data.SetVar2Selected(-1);
  EXPECT_THROW(data.PerformCalc(), CInvalidArgException);
  EXPECT_EQ(host.waitCursors, 0);
}

TEST_F(CalcTest, TitlesSayWhatIsShown) {
  const char* titles[] = {"Land",
                          "Births - Land",
                          "Births - Deaths (Percent change): Land",
                          "Births / Deaths (Percent): Land",
                          "Births / Deaths (Ratio): Land",
                          "Births - Deaths (Difference): Land",
                          "Land"};
  for (int calculation = -2; calculation < 5; ++calculation) {
    data.SetCalcSelected(calculation);
    EXPECT_EQ(map.GenerateTitle(), titles[calculation + 2]);
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
  host.profile = {{"sThousand", "."}, {"sDecimal", ","}};
  data.GetAreaData(0).SetValue(0, 1234567.25);
  EXPECT_EQ(map.GetDataStr(north), "1.234.567,2");
  data.GetAreaData(0).SetValue(0, NO_DATA_VALUE);
  EXPECT_EQ(map.GetDataStr(north), "<no data>");
  EXPECT_EQ(map.GetDataStr(&map), "<no data>");
}

}  // namespace
}  // namespace vexel::test
