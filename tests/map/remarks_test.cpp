// What the reader of maps takes but tells of.

#include <set>

#include "map/map_fixture.h"

namespace {

using vexel::test::Lines;
using vexel::test::ProbeMap;
using vexel::test::Shape;

struct Case {
  const char* name;
  const char* lines;  // behind "[Map]" and "MapName=M", so they begin at line 3
  const char* remarks;
};

class MapRemarks : public vexel::test::MapTest, public testing::WithParamInterface<Case> {};

TEST_P(MapRemarks, AreTheseWithTheirLinesAndAreas) {
  ProbeMap map;
  Load(map, Lines(std::string("M|MapName=M|") + GetParam().lines));
  EXPECT_EQ(host.TakeRemarks(), GetParam().remarks);
}

constexpr Case kCases[] = {
    {"None",
     "LongLat=yes|G|Name=A|AreaStructure=1|P|Hole=Yes|0 0|40 0.5|4e1 30|-0 +30|U|Name=B|"
     "AreaStructure=1, 2|P|.5 0.|10 0|10 10|U|Name=C|AreaStructure=1,3|E|U|Name=D|AreaStructure=2",
     ""},
    {"Coordinates", "U|Name=A|AreaStructure=7|P|north 1|nan 1e3|10,5 3|1 2 3|1e99 -1e999|4 5x|6 7",
     "7 not-a-number: 7; x; north > 0\n"
     "8 not-a-number: 7; x; nan > 0\n"
     "9 number-in-part: 7; x; 10,5 > 10\n"
     "10 surplus-coordinates: 7; ; 3\n"
     "11 beyond-range: 7; x; 1e99 > 3.4028234663852886e+38\n"
     "11 beyond-range: 7; y; -1e999 > -3.4028234663852886e+38\n"
     "12 number-in-part: 7; y; 5x > 5\n"},
    {"ShortRings",
     "U|Name=A|AreaStructure=7|P|P|1 1|P|1 1|2 2|1 1|P|1 1|2 2|2 1|1 1|P|1 1|2 2|1 1|2 2",
     "6 short-ring: 7; ;  0/3\n7 short-ring: 7; ;  1/3\n9 short-ring: 7; ;  2/3\n"
     "18 short-ring: 7; ;  2/3\n"},
    {"Holes", "U|Name=A|AreaStructure=7|P|Hole=No|HOLE|1 1|2 2|2 1|P|Hole=yes|1 1|2 2|2 1",
     "7 hole-in-doubt: 7; ; Hole=No\n8 hole-in-doubt: 7; ; HOLE\n"},
    {"BeyondDegrees",
     "LongLat=Yes|U|Name=A|AreaStructure=7|P|Hole=Yes|9 9|9 8|181 8|9 92|P|1 1|"
     "2 2||1 -91",
     "11 beyond-degrees: 7; ; 181 8\n13 beyond-degrees: 7; ; 1 -91\n"},
    {"DegreesInThePlane", "U|Name=A|AreaStructure=7|P|900 9|-900 8|9 92", ""},
    {"JumpAcross180",
     "LongLat=Yes|U|Name=A|AreaStructure=7|P|170 1|179 1|-179 2|-179 1|P|-90 1|0 2|90 1",
     "10 jump-across-180: 7; ; 179 to -179\n"},
    {"JumpBackToTheFirst", "LongLat=Yes|U|Name=A|AreaStructure=7|P|-91 1|0 1|91 2",
     "8 jump-across-180: 7; ; 91 to -91\n"},
    {"LatitudeFirst", "LongLat=Yes|U|Name=A|AreaStructure=7|P|40 -120|41 -120|41 -89",
     "8 beyond-degrees: 7; ; 40 -120\n"
     "0 latitude-first: ; ; the first numbers go 40 to 41, the second -120 to -89\n"},
    {"LongLatWord", "LongLat=True", "3 neither-yes-nor-no: ; ; True\n"},
    {"TwinsInAnyOrder",
     "U|Name=A|AreaStructure=2|U|Name=B|AreaStructure=1|U|Name=C|AreaStructure=2|G|Name=D|"
     "AreaStructure=3|U|Name=E|AreaStructure=3 1|U|Name=F|AreaStructure=3 1|U|Name=G|"
     "AreaStructure=3 0|E",
     "9 duplicate-key: 2; ; \n18 duplicate-key: 3, 1; ; \n"},
    {"UnorderedWithoutTwins",
     "U|Name=A|AreaStructure=2|U|Name=B|AreaStructure=1|U|Name=C|AreaStructure=-2", ""},
    {"TwinOfAStranger",
     "G|Name=A|AreaStructure=1|U|Name=B|AreaStructure=2|E|U|Name=C|AreaStructure=2",
     "6 key-of-another-parent: 2; ;  > 1\n6 key-of-another-level: 2; ;  1/2\n"
     "10 duplicate-key: 2; ; \n"},
    {"KeysOutOfPlace",
     "G|Name=A|AreaStructure=1|U|Name=B|AreaStructure=2 1|U|Name=C|AreaStructure=1 2 3|U|Name=D|E",
     "6 key-of-another-parent: 2, 1; ;  > 1\n9 key-of-another-level: 1, 2, 3; ;  3/2\n"
     "12 no-key: ; ; D\n"},
    {"CodeBeyond32Bits", "U|Name=A|AreaStructure=4294967298",
     "5 beyond-range: 2; AreaStructure; 4294967298 > 2\n"},
    {"Names", "L|Name=\xFF|U|AreaStructure=1|U|Name=\xC3(|AreaStructure=2",
     "4 not-utf8: ; ; \xFF\n5 no-name: 1; ; \n8 not-utf8: ; ; \xC3(\n"},
    {"NoEndOfGroup",
     "G|Name=A|AreaStructure=1|G|Name=B|AreaStructure=1 2|U|Name=C|AreaStructure=1 2 3",
     "6 no-end-group: 1, 2; ; \n3 no-end-group: 1; ; \n"},
    {"SurplusEndOfGroup", "U|Name=A|AreaStructure=1|E|E", "6 surplus-end-group: ; ; \n"},
    {"BlanksInWords",
     "Map Name=N|[ AreaLevels ]|L|[Geo Unit]|U|Name=A|Area Structure=1|AreaStructure=1|[End Group]",
     "3 blanks-in-word: ; ; Map Name=N > MapName\n4 blanks-in-word: ; ; [ AreaLevels ] > "
     "[AreaLevels]\n"
     "6 blanks-in-word: ; ; [Geo Unit] > [GeoUnit]\n9 blanks-in-word: ; ; Area Structure=1 > "
     "AreaStructure\n"
     "11 blanks-in-word: 1; ; [End Group] > [EndGroup]\n"}};

INSTANTIATE_TEST_SUITE_P(Table, MapRemarks, testing::ValuesIn(kCases),
                         [](const auto& tested) { return tested.param.name; });

TEST_F(MapRemarks, OfTheHeadingAndOfAFileThatIsNotThere) {
  ProbeMap map;
  EXPECT_EQ(Load(map, "[Maps]\n[ Map ]\n"), 0);
  EXPECT_EQ(host.TakeRemarks(), "2 blanks-in-word: ; ; [ Map ] > [Map]\n");
  EXPECT_EQ(map.Build(Path("no.map"), 0, 0), 0);
  EXPECT_EQ(host.sentences.back(),
            dir.Path("no.map") + ": the file cannot be opened: No such file or directory");
}

// How many rows of integers the latitudes of a map come to lie on, of as many as there are.
int CountRows(double middle, double height, vexel::test::RecordingHost& host,
              const vexel::test::TempDir& dir) {
  std::string text =
      "[Map]\nMapName=M\nLongLat=Yes\n[GeoUnit]\nName=A\nAreaStructure=1\n[Polygon]\n";
  constexpr int kPoints = 2000;
  for (int i = 0; i <= kPoints; ++i) {
    text += "0.1 " + std::to_string(middle + height * (double{0.5} - i / double{kPoints})) + '\n';
  }
  dir.Write("p.map", text);
  CVELAMap map;
  EXPECT_EQ(map.Build(dir.Path("p.map").c_str(), 0, 0), 1);
  std::set<int> rows;
  for (const CPoint& point : map.GetChild(0)->GetPoly(0)->GetPoints()) rows.insert(point.y);
  EXPECT_TRUE(host.boxes.empty());
  return static_cast<int>(rows.size());
}

TEST_F(MapRemarks, TellOfAMapThatLosesItsHeightNearTheEquator) {
  struct Frame {
    double middle;
    double height;
    bool isCoarse;
  };
  for (const Frame& frame : {Frame{45, 10, false},
                             {0, 40, false},
                             {0.1, 40, false},
                             {0.01, 40, true},
                             {0.01, 10, true},
                             {-0.01, 10, true},
                             {1e-5, 40, true},
                             {50, 0.1, false}}) {
    const int rows = CountRows(frame.middle, frame.height, host, dir);
    const bool isTold = host.TakeRemarks().find("coarse-near-equator") != std::string::npos;
    EXPECT_EQ(isTold, frame.isCoarse) << frame.middle << ' ' << frame.height << ' ' << rows;
    EXPECT_EQ(rows < 1500, frame.isCoarse) << frame.middle << ' ' << frame.height << ' ' << rows;
  }
}

// The compiled form has no lines to tell, and tells the same of its keys.
TEST_F(MapRemarks, TellOfTheKeysOfACompiledMap) {
  ProbeMap map;
  Load(map, Lines("M|MapName=M|U|Name=A|AreaStructure=7|P|0 0|1 0|1 1|U|Name=B|AreaStructure=7|P|"
                  "0 0|1 0|1 1"));
  EXPECT_EQ(host.TakeRemarks(), "10 duplicate-key: 7; ; \n");
  ASSERT_EQ(map.SaveMpc(CVELAString(dir.Path("m.mpc").c_str())), 1);
  ProbeMap compiled;
  EXPECT_EQ(compiled.Build(dir.Path("m.mpc").c_str(), 0, 0), 1);
  EXPECT_EQ(host.TakeRemarks(), "0 duplicate-key: 7; ; \n");
}

// Without a name of its own the map takes that of its first level.
TEST_F(MapRemarks, TellOfAMapWithoutAName) {
  ProbeMap map;
  Load(map, Lines("M|L|Name=Region|U|Name=A|AreaStructure=7|P|0 0|1 0|1 1"));
  EXPECT_EQ(host.TakeRemarks(), "4 no-name: ; MapName; \n");
}

}  // namespace
