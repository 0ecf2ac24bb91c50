// A user who cancels at the first, the second, ... question of a load, until it is not asked again.

#include "faults/model.h"

namespace vexel::test {
namespace {

struct Road {
  const char* name;
  int (*load)(Model& model, const TempDir& dir);
  // How many areas of the map are there after a cancel at the first, the second, ... question, and
  // after a load without one.
  std::string_view finished;
};

int LoadMap(Model& model, const TempDir& dir, const char* name) {
  return model.map.Build(dir.Path(name).c_str(), 1, 1);
}

int LoadData(Model& model, const TempDir& dir, int quiet) {
  return model.data.Build(dir.Path("d.mdf").c_str(), 1, quiet);
}

// Only a text map is read under a dialog that can be cancelled; with a data file a quiet load has
// one.
constexpr std::string_view kFinished = "000011112233";
constexpr Road kRoads[] = {
    {"TextMap", [](Model& model, const TempDir& dir) { return LoadMap(model, dir, "m.map"); },
     kFinished},
    {"CompiledMap", [](Model& model, const TempDir& dir) { return LoadMap(model, dir, "c.mpc"); },
     "3"},
    {"QuietData", [](Model& model, const TempDir& dir) { return LoadData(model, dir, 1); },
     kFinished},
    {"Data", [](Model& model, const TempDir& dir) { return LoadData(model, dir, 0); }, "3"}};

class Cancelling : public MapTest, public testing::WithParamInterface<Road> {
 protected:
  Cancelling() {
    std::string ring = "|P";
    for (int i = 0; i < 12; ++i) ring += '|' + std::to_string(i) + ' ' + std::to_string(i * i);
    ProbeMap source;
    Load(source, Lines("M|MapName=M|L|Name=S|Name=C|U|Name=A|AreaStructure=1" + ring +
                       "|G|Name=B|AreaStructure=2" + ring + "|U|Name=C|AreaStructure=2 1" + ring +
                       "|P|Hole=Yes|1 1|2 2|2 1|E|U|Name=D|AreaStructure=3" + ring));
    source.SaveMpc(Path("c.mpc"));
    Put("d.mdf", Cells("[MapDataFile]|Version=Ortex 3.2|MapFile=m|MapLabel=~|AreaLevels=2|"
                       "Variables=1|[Data]|S;C;Area Name;V|1;X;~;5|2;X;~;6|2;1;~;7"));
  }
};

TEST_P(Cancelling, AtAnyQuestionLeavesATreeThatCanBeUsed) {
  for (std::size_t at = 1;; ++at) {
    SCOPED_TRACE(at);
    host.cancelAt = static_cast<int>(at);
    host.questions = 0;
    Model model;
    const int result = GetParam().load(model, dir);
    const bool cancelled = host.questions >= host.cancelAt;
    ASSERT_EQ(result, cancelled ? 0 : 1);
    EXPECT_EQ(TakeBoxes(), cancelled ? "40 Map file not loaded.\n" : "");
    EXPECT_FALSE(host.progressOpen);
    EXPECT_EQ(host.waitCursors, 0);
    EXPECT_TRUE(IsSettled(model.map, 1));
    ASSERT_LE(at, GetParam().finished.size());
    EXPECT_EQ(model.map.GetNumChildren(), GetParam().finished[at - 1] - '0');
    const int pages = UseAll(model);
    model.map.SaveMap(Path("again.map"), nullptr);
    EXPECT_EQ(model.map.SaveMpc(Path("again.mpc")), 1);
    for (const char* form : {"again.map", "again.mpc"}) {
      ProbeMap again;
      EXPECT_EQ(again.Build(Path(form), 1, 0), 1);
      EXPECT_EQ(Shape(again), Shape(model.map));
    }
    EXPECT_EQ(TakeBoxes(), "");
    if (cancelled) continue;
    EXPECT_EQ(at, GetParam().finished.size());
    EXPECT_GT(pages, 0);
    break;
  }
}

INSTANTIATE_TEST_SUITE_P(Roads, Cancelling, testing::ValuesIn(kRoads),
                         [](const auto& tested) { return tested.param.name; });

}  // namespace
}  // namespace vexel::test
