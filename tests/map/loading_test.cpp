#include <chrono>
#include <filesystem>

#include "map/formats.h"
#include "map/map_fixture.h"

namespace {

using vexel::test::Lines;
using vexel::test::ProbeMap;
using vexel::test::Shape;

// What a road brings into the map: nothing, parents, levels and marks, or integer points as well.
enum class Steps { none, compiled, full };

struct Road {
  const char* name;
  const char* file;  // "a.mpc" and the like
  const char* text;  // null for a file that is missing, "mpc" for a compiled map
  int showProgress;
  int cancelAt;  // the question at which the user cancels, 0 for never
  int result;
  Steps steps;
  const char* boxes = "";  // "$" stands for the path, "^" for the path in capitals
};

class Loading : public vexel::test::MapTest, public testing::WithParamInterface<Road> {
 protected:
  Loading() {
    ProbeMap source;
    Load(source, vexel::test::kSmallMap);
    source.SaveMpc(Path("source"));
    compiled = dir.Read("source");
    host.waits = 0;
  }

  std::string compiled;
};

TEST_P(Loading, EndsAsTheRoadSays) {
  const Road& road = GetParam();
  const CVELAString path = Path(road.file);
  const bool isMap = road.text != nullptr && road.text == std::string_view("mpc");
  if (road.text != nullptr) dir.Write(road.file, isMap ? compiled : Lines(road.text));
  // A node that stands there before shows which steps were taken.
  ProbeMap map;
  auto* before = new CMapOb("before", {});
  before->AddPoly(new CPolygon);
  before->GetPoly(0)->AddPointF(1, 1);
  map.AddChild(before);
  map.SetDrawLevel(5);
  map.floatsLoaded = 7;
  CFileStatus status;
  status.size = -1;
  map.SetFileStatus(status);
  host.cancelAt = road.cancelAt;

  EXPECT_EQ(map.Build(path, 2, road.showProgress), road.result);

  std::string boxes = road.boxes;
  if (const auto at = boxes.find('$'); at != std::string::npos) boxes.replace(at, 1, path.View());
  CString capitals = path;
  capitals.MakeUpper();
  if (const auto at = boxes.find('^'); at != std::string::npos)
    boxes.replace(at, 1, capitals.View());
  EXPECT_EQ(TakeBoxes(), boxes);
  const bool settled = road.steps != Steps::none;
  EXPECT_EQ(map.GetDrawLevel(), settled ? 1 : 5);
  EXPECT_EQ(before->GetParent(), settled ? &map : nullptr);
  EXPECT_EQ(vexel::test::IsSettled(map, 1), settled);
  EXPECT_EQ(before->GetPoly(0)->GetSize(), road.steps == Steps::full ? 1 : 0);
  EXPECT_EQ(map.floatsLoaded, !settled ? 7 : road.steps == Steps::full ? 1 : 2);
  const bool isText = CString(path).Right(3).CompareNoCase("mpc") != 0;
  EXPECT_EQ(map.GetFileStatus().size == -1, road.result == 0 && !isText);
  EXPECT_EQ(map.GetFileStatus().mtime != CFileStatus::Time(), settled);
  EXPECT_EQ(host.progressLog.empty(), road.showProgress == 0 || !isText || !settled);
  EXPECT_FALSE(host.progressOpen);
  EXPECT_EQ(host.waits, isText || road.text == nullptr ? 0 : 1);
  EXPECT_EQ(host.waitCursors, 0);
}

constexpr const char* kText = "M|MapName=M|U|Name=A|P|0 0|1 1";
constexpr Road kRoads[] = {
    {"CompiledMissing", "a.mpc", nullptr, 1, 0, 0, Steps::none,
     "10 Error: could not open compiled map file $ for reading\n"},
    {"CompiledIsText", "a.Mpc", kText, 1, 0, 0, Steps::none,
     "0 'MapFile' parameter points to invalid file:  ^\n"},
    {"CompiledIsEmpty", "ampc", "", 0, 0, 0, Steps::none,
     "0 'MapFile' parameter points to invalid file:  ^\n"},
    {"Compiled", "a.MPC", "mpc", 1, 0, 1, Steps::compiled},
    {"TextMissing", "pc", nullptr, 1, 0, 0, Steps::none},
    {"TextIsEmpty", "a.map", "", 0, 0, 0, Steps::full, "0 Didn't find [MAP] section heading\n"},
    {"TextWithoutHeading", "a.mpcx", "[Maps]|MapName=M|U", 1, 0, 0, Steps::full,
     "0 Didn't find [MAP] section heading\n40 Map file not loaded.\n"},
    {"Text", "a.map", kText, 0, 0, 1, Steps::full},
    {"TextWithLinesBefore", "a.map", "junk|L|MapName=X|[mAP]|MapName=M|U", 1, 0, 1, Steps::full,
     "0 WARNING:  .MAP file has GeoGroup(s) and/or GeoUnit(s) with no polygons\n"},
    {"TextRefused", "a.map", "M|U", 1, 0, 0, Steps::full,
     "0 No AreaLevels in map file\n40 Map file not loaded.\n"},
    {"TextRefusedSilently", "a.map", "M|U", 0, 0, 0, Steps::full, "0 No AreaLevels in map file\n"},
    {"CancelledReading", "a.map", kText, 1, 1, 0, Steps::full, "40 Map file not loaded.\n"},
    {"CancelledBehindTheEnd", "a.map", kText, 1, 2, 0, Steps::full, "40 Map file not loaded.\n"},
    {"NoDialogNoCancelling", "a.map", kText, 0, 1, 1, Steps::full}};

INSTANTIATE_TEST_SUITE_P(Roads, Loading, testing::ValuesIn(kRoads),
                         [](const auto& tested) { return tested.param.name; });

TEST_F(Loading, ShowsADialogOverATextMap) {
  const std::string text = Lines("M|MapName=" + std::string(2500, 'x') + "|U|P|0 0");
  ProbeMap map;
  EXPECT_EQ(Load(map, text, 1), 1);
  EXPECT_EQ(host.progressLog,
            (std::vector<std::string>{"open", "text Loading map file ... please wait", "range 0 2",
                                      "position 2", "position 2", "close"}));
  EXPECT_EQ(map.GetFileStatus().size, static_cast<std::int64_t>(text.size()));
}

TEST_F(Loading, TakesTheNewerOfTwoFormsAndTheCompiledOneOfOneAge) {
  namespace fs = std::filesystem;
  Put("a.map", "");
  Put("a.mpc", "");
  const auto age = fs::last_write_time(dir.Path("a.map"));
  for (const auto& [later, form] : {std::pair{-1, "a.map"}, {0, "a.mpc"}, {1, "a.mpc"}}) {
    fs::last_write_time(dir.Path("a.mpc"), age + std::chrono::nanoseconds(later * 1000));
    EXPECT_EQ(vexel::NewerMapFile(Path("a")), Path(form)) << later;
  }
  // A folder is none.
  fs::create_directory(dir.Path("b.mpc"));
  EXPECT_TRUE(vexel::NewerMapFile(Path("b")).IsEmpty());
  Put("b.map", "");
  EXPECT_EQ(vexel::NewerMapFile(Path("b")), Path("b.map"));
}

TEST_F(Loading, AddsToWhatIsThereAndLeavesTheDrawRoot) {
  ProbeMap map;
  EXPECT_EQ(Load(map, Lines(kText)), 1);
  map.ZoomTo(map.GetChild(0));
  map.AddPoly(new CPolygon);
  EXPECT_EQ(map.Build(Path("source"), 1, 0), 0);  // no text map: the name decides
  TakeBoxes();
  dir.Write("c.mpc", compiled);
  EXPECT_EQ(map.Build(Path("c.mpc"), 1, 0), 1);
  EXPECT_EQ(Shape(map), "M{A A{B} C}");
  EXPECT_EQ(map.GetChild(1)->GetPoly(0)->GetSizeF(), 4);
  EXPECT_EQ(map.GetDrawRoot(), map.GetChild(0));
  EXPECT_EQ(map.GetDrawLevel(), 1);
}

}  // namespace
