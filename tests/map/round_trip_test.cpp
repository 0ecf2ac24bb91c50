#include "map/map_fixture.h"

namespace {

using vexel::test::Describe;
using vexel::test::ProbeMap;

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

TEST_F(RoundTrip, SampleMapsSurviveBothForms) {
  for (const char* name : {"/us-counties.map", "/us-conus.map"}) {
    ProbeMap map;
    ASSERT_EQ(map.Build((std::string(VEXEL_SAMPLES_DIR) + name).c_str(), 0, 0), 1);
    ExpectSameInBothForms(map);
  }
}

}  // namespace
