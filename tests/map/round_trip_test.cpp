#include <random>

#include "map/map_fixture.h"

namespace {

using vexel::test::Describe;
using vexel::test::ProbeMap;

// Maps at random, as a host would make them.
class RandomMap {
 public:
  explicit RandomMap(unsigned seed) : random_(seed) {}

  void Fill(CVELAMap& map) {
    map.SetName(Name());
    for (int i = Number(1, 8); i > 0; --i) map.AddLevelName(Name());
    for (int i = Number(0, 6); i > 0; --i) map.AddChild(Node(1));
  }

 private:
  int Number(int least, int most) {
    return std::uniform_int_distribution<int>(least, most)(random_);
  }

  CVELAString Name() {
    static constexpr const char* kPieces[] = {"Doña Ana",     "\"q\"",    "=",   "\t", "[x]",  " ",
                                              "\xE6\x9D\xB1", "Hole=Yes", "1 2", "'",  "\xFF", ","};
    std::string name;
    for (int i = Number(0, 4); i > 0; --i) name += kPieces[Number(0, std::size(kPieces) - 1)];
    return CVELAString(std::string_view(name));
  }

  CMapOb* Node(int depth) {
    CAreaStruct key;
    for (std::int32_t& code : key.codes) code = Number(0, 2) == 0 ? key.kUnset : Number(-3, 99999);
    auto* node = new CMapOb(Name(), key);
    for (int i = Number(1, 3); i > 0; --i) node->AddPoly(Polygon());
    for (int i = depth < 4 ? Number(0, 3) : 0; i > 0; --i) node->AddChild(Node(depth + 1));
    return node;
  }

  // Coordinates on a grid that four decimals hold, in the range of degrees.
  CPolygon* Polygon() {
    auto* polygon = new CPolygon;
    polygon->SetHole(Number(0, 1));
    for (int i = Number(1, 9); i > 0; --i) {
      polygon->AddPointF(static_cast<float>(Number(-2880, 2880)) / 16,
                         static_cast<float>(Number(-1000, 1360)) / 16);
    }
    return polygon;
  }

  std::mt19937 random_;
};

class RoundTrip : public vexel::test::MapTest {
 protected:
  std::string TextOf(CVELAMap& map) {
    map.SaveMap(Path("t.map"), nullptr);
    return dir.Read("t.map");
  }

  std::string CompiledOf(CVELAMap& map) {
    EXPECT_EQ(map.SaveMpc(Path("c.mpc")), 1);
    return dir.Read("c.mpc");
  }

  // That a map read from text comes back from either form, and each form from the other.
  void ExpectSameInBothForms(ProbeMap& map) {
    const std::string text = TextOf(map);
    const std::string compiled = CompiledOf(map);
    ProbeMap full;
    ASSERT_EQ(full.Build(Path("c.mpc"), 1, 0), 1);
    EXPECT_EQ(Describe(full, true), Describe(map, true));
    EXPECT_EQ(full.GetNumMapLevels(), map.GetNumMapLevels());
    EXPECT_EQ(full.longLat, map.longLat);
    EXPECT_EQ(CompiledOf(full), compiled);
    EXPECT_EQ(TextOf(full), text);
    ProbeMap integers;
    ASSERT_EQ(integers.Build(Path("c.mpc"), 0, 0), 1);
    EXPECT_EQ(Describe(integers, false), Describe(map, false));
    ProbeMap again;
    again.longLat = map.longLat;  // which the text does not keep
    ASSERT_EQ(Load(again, text), 1);
    EXPECT_EQ(TextOf(again), text);
    EXPECT_EQ(CompiledOf(again), compiled);
    EXPECT_EQ(TakeBoxes(), "");
  }
};

TEST_F(RoundTrip, FormsHoldTheSameMap) {
  for (unsigned seed = 1; seed <= 40 && !HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    ProbeMap made;
    RandomMap(seed).Fill(made);
    // Tabs and blanks at the ends of names do not outlive the first writing; all else does.
    for (const int longLat : {0, 1}) {
      ProbeMap map;
      map.longLat = longLat;
      ASSERT_EQ(Load(map, TextOf(made)), 1);
      ExpectSameInBothForms(map);
    }
  }
}

TEST_F(RoundTrip, SampleMapsSurviveBothForms) {
  for (const char* name : {"/us-counties.map", "/us-conus.map"}) {
    ProbeMap map;
    ASSERT_EQ(map.Build((std::string(VEXEL_SAMPLES_DIR) + name).c_str(), 0, 0), 1);
    ExpectSameInBothForms(map);
  }
}

}  // namespace
