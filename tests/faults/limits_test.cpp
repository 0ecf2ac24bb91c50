// Numbers that are none or too many, and what becomes of the map and the table that hold them.

#include <sys/resource.h>
#include <unistd.h>

#include <cmath>
#include <fstream>
#include <limits>

#include "faults/model.h"

namespace vexel::test {
namespace {

using namespace std::string_view_literals;

constexpr float kFar = std::numeric_limits<float>::max();
const double kMost = std::nextafter(std::numeric_limits<double>::max(), 0.0);

struct Number {
  const char* name;
  std::string text;
  float coordinate;
  double value;
  std::int32_t whole;    // where a whole number is wanted
  bool isWhole = false;  // an area code of a map must be one
};

class Numbers : public MapTest, public testing::WithParamInterface<Number> {
 protected:
  // The table has the number as its code and twice as a value.
  int LoadData(Model& into, const std::string& text) {
    Put("m.map", Lines("M|MapName=M|L|Name=L|U|Name=A|AreaStructure=1|P|0 0|9 0|9 9|U|Name=B|"
                       "AreaStructure=2|P|0 0|9 0|9 -9"));
    Put("d.mdf", Cells("[MapDataFile]|Version=Ortex 3.2|MapFile=m|MapLabel=~|" + text));
    return into.data.Build(Path("d.mdf"), 1, 0);
  }

  Model model;
};

TEST_P(Numbers, AsCoordinatesAreReadAsFarAsTheyGoAndDrawn) {
  const auto& [name, text, coordinate, value, whole, isWhole] = GetParam();
  for (const char* longLat : {"No", "Yes"}) {
    Model own;
    ASSERT_EQ(Load(own.map, Lines(std::string("M|MapName=M|LongLat=") + longLat +
                                  "|U|AreaStructure=1|P|0 0|" + text + " 5|5 " + text + "|9 9")),
              1);
    EXPECT_EQ(own.map.GetChild(0)->GetPoly(0)->GetPointF(1).x, coordinate);
    EXPECT_EQ(own.map.GetChild(0)->GetPoly(0)->GetPointF(2).y, coordinate);
    EXPECT_GT(UseAll(own), 0);
    EXPECT_EQ(own.map.SaveMpc(Path("s.mpc")), 1);
    own.map.SaveMap(Path("s.map"), nullptr);
    ProbeMap compiled, again;
    EXPECT_EQ(compiled.Build(Path("s.mpc"), 1, 0), 1);
    EXPECT_EQ(Describe(compiled, true), Describe(own.map, true));
    EXPECT_EQ(again.Build(Path("s.map"), 1, 0), 1);
    EXPECT_NEAR(again.GetChild(0)->GetPoly(0)->GetPointF(1).x, coordinate, 0.0001);
    EXPECT_EQ(TakeBoxes(), "");
  }
}

TEST_P(Numbers, AsCodesOfAMapAreRefusedUnlessWhole) {
  const auto& [name, text, coordinate, value, whole, isWhole] = GetParam();
  EXPECT_EQ(Load(model.map, Lines("M|MapName=M|U|Name=A|AreaStructure=5 " + text + "|P|1 1")),
            isWhole ? 1 : 0);
  EXPECT_EQ(TakeBoxes(), isWhole ? "" : "0 Bad area structure at line 5\nAreaStructure\n");
  ASSERT_EQ(model.map.GetNumChildren(), isWhole ? 1 : 0);
  if (isWhole) {
    EXPECT_EQ(model.map.GetChild(0)->GetArea(), Key({5, whole}));
  }
}

TEST_P(Numbers, AsValuesAndCodesOfATableAreReadAsFarAsTheyGoAndClassified) {
  const auto& [name, text, coordinate, value, whole, isWhole] = GetParam();
  ASSERT_EQ(LoadData(model, "AreaLevels=1|Variables=2|[Data]|L;Area Name;V;W|1;~;" + text +
                                ";3|2;~;8;" + text + '|' + text + ";~;1;1"),
            1);
  const std::string stranger =
      "1 Area in .MDF not found in map file:\n\nName  =  ~\nAreaCodes  =  ";
  EXPECT_EQ(TakeBoxes(), whole == 1 ? "" : stranger + std::to_string(whole) + '\n');
  EXPECT_EQ(model.data.GetAreaData(0).GetValue(0), value);
  EXPECT_EQ(model.data.GetAreaData(2).GetArea(), Key({whole}));
  for (int way = 0; way < 12; ++way) {
    model.legend.intervalType = way % 3;
    model.data.SetCalcSelected(way / 3);
    model.data.SetVar2Selected(1);
    model.data.PerformCalc();
    EXPECT_GT(UseAll(model), 0) << way;
    model.data.SetVar2Selected(-1);
    model.data.SetCalcSelected(-1);
    EXPECT_GT(UseAll(model), 0) << way;
  }
  model.data.SetMapFile(Path("m"));
  model.map.SaveMdf(Path("d.mdf"));
  Model again;
  ASSERT_EQ(again.data.Build(Path("d.mdf"), 1, 1), 1);
  EXPECT_EQ(again.data.GetNumAreas(), 3);
  EXPECT_EQ(again.data.GetAreaData(2).GetArea(), Key({whole}));
}

TEST_P(Numbers, AsCountsAreRefusedUnlessAboveZero) {
  const auto& [name, text, coordinate, value, whole, isWhole] = GetParam();
  for (const std::string keyword : {"AreaLevels", "Variables"}) {
    Model own;
    const std::string other = keyword == "Variables" ? "AreaLevels=1|" : "Variables=1|";
    EXPECT_EQ(LoadData(own, other + keyword + '=' + text + "|[Data]|L;Area Name;V|1;~;5"),
              whole == 1 ? 1 : 0);
    const std::string refusal = whole == 0 ? "0 Missing " + keyword + " statement\n"
                                           : "0 Invalid " + keyword + " parameter at line 6\n";
    EXPECT_EQ(TakeBoxes(), whole == 1 ? "" : refusal);
    EXPECT_EQ(own.data.GetNumAreas(), whole == 1 ? 1 : 0);
  }
}

INSTANTIATE_TEST_SUITE_P(
    That, Numbers,
    testing::Values(Number{"IsAWord", "abc", 0, 0, 0}, Number{"IsInfinite", "inf", 0, 0, 0},
                    Number{"IsNone", "nan", 0, 0, 0}, Number{"IsBare", "+-", 0, 0, 0},
                    Number{"IsLarge", "1e308", kFar, 1e308, 1},
                    Number{"IsSmall", "1e-310", 0, 1e-310, 1},
                    Number{"IsBeyond", "-1e999", -kFar, -kMost, -1},
                    Number{"IsHexadecimal", "0x10", 0, 0, 0},
                    Number{"IsMinusZero", "-0", 0, 0, 0, true},
                    Number{"HasManyDigits", std::string(400, '9'), kFar, kMost, -1, true},
                    Number{"HasManyDecimals", "0." + std::string(400, '3'), 1.0F / 3, 1.0 / 3, 0}),
    [](const auto& tested) { return tested.param.name; });

TEST_F(Numbers, SevenLevelsAreTheLimitOfATable) {
  const std::string rest = "|Variables=1|[Data]|1;2;3;4;5;6;7;Area Name;V|1;X;X;X;X;X;X;~;5";
  EXPECT_EQ(LoadData(model, "AreaLevels=7" + rest), 1);
  EXPECT_EQ(TakeBoxes(), "");
  EXPECT_EQ(LoadData(model, "AreaLevels=8" + rest), 0);
  EXPECT_EQ(TakeBoxes(), "0 Invalid AreaLevels parameter at line 5\n");
}

// Memory for data can grow by so much while it lives.
class MemoryLimit {
 public:
  explicit MemoryLimit(rlim_t bytes) {
    ::getrlimit(RLIMIT_DATA, &before_);
    rlim_t pages = 0;
    std::ifstream statm("/proc/self/statm");
    for (int field = 0; field < 6; ++field) statm >> pages;  // the sixth is of data and stack
    const rlimit limit{pages * static_cast<rlim_t>(::sysconf(_SC_PAGESIZE)) + bytes,
                       before_.rlim_max};
    ::setrlimit(RLIMIT_DATA, &limit);
  }
  MemoryLimit(const MemoryLimit&) = delete;
  MemoryLimit& operator=(const MemoryLimit&) = delete;
  ~MemoryLimit() { ::setrlimit(RLIMIT_DATA, &before_); }

 private:
  rlimit before_{};
};

// Whatever number stands at whatever place of a compiled map: a count that promises two thousand
// million entries, a coordinate or an angle that is none. What loads is drawn and written.
TEST_F(Numbers, AnywhereInACompiledMapTakeNoMemoryBeforeTheirBytesCome) {
  ASSERT_EQ(Load(model.map, kSmallMap), 1);
  ASSERT_EQ(model.map.SaveMpc(Path("m.mpc")), 1);
  const std::string whole = dir.Read("m.mpc");
  constexpr rlim_t kRoom = 16 << 20;
  int refused = 0;
  int pages = 0;
  for (const std::string_view number : {"\xFF\xFF\xFF\x77"sv, "\xFF\xFF\xFF\x7F"sv, "\0\0\0\x80"sv,
                                        "\0\0\xC0\x7F"sv, "\0\0\x80\xFF"sv}) {
    for (std::size_t at = 10; at + 4 <= whole.size(); ++at) {
      std::string damaged = whole;
      Put("d.mpc", damaged.replace(at, 4, number));
      const MemoryLimit limit(kRoom);
      Model own;
      try {
        own.map.Build(Path("d.mpc"), 1, 0);
      } catch (const CArchiveException&) {
        ++refused;
      }
      pages += UseAll(own);
    }
  }
  EXPECT_GT(refused, 100);
  EXPECT_GT(pages, 1000);
}

}  // namespace
}  // namespace vexel::test
