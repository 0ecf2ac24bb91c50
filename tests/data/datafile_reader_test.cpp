#include "data/data_fixture.h"
#include "platform/exceptions.h"

namespace vexel::test {
namespace {

TEST_F(DataTest, LoadsMapNamesAndRows) {
  ASSERT_EQ(Load(kHead + "LinkTo=other.mdf|" + kHeader + "12;X;Northland;975;85.25|12;3;~;310;n/a"),
            1);
  EXPECT_EQ(TakeBoxes(), "");
  EXPECT_EQ(data.mapIsText, 1);
  EXPECT_EQ(data.GetMapFile(), "m");
  EXPECT_EQ(data.GetLinkToFile(), "other.mdf");
  EXPECT_EQ(data.GetMapLabel(), "Land");
  EXPECT_EQ(map.GetLevelName(1), "State");
  EXPECT_EQ(map.GetLevelName(2), "County");
  EXPECT_EQ(NameOf(Key({12})), "Northland");
  EXPECT_EQ(NameOf(Key({12, 3})), "Upper");
  ASSERT_EQ(data.GetNumAreas(), 2);
  EXPECT_EQ(data.GetAreaData(0).GetValue(1), 85.25);
  EXPECT_EQ(data.GetAreaData(1).GetValue(1), NO_DATA_VALUE);
  EXPECT_EQ(data.GetAreaData(1).GetValue(2), 0.0);
  EXPECT_EQ(data.GetVarName(1), "Deaths");
  EXPECT_EQ(data.GetVarName(2), "");
  EXPECT_EQ(data.GetVarDecs(1), 2);
}

TEST_F(DataTest, RefusalsEndTheLoadWithTheirMessage) {
  struct Case {
    std::string text;
    std::string_view boxes;
    int rows = 0;
  };
  const std::string noMap = "[MapDataFile]|Version=Ortex 3.2|";
  dir.Write("n.map", "[Map]\n");
  for (const Case& c : {
           Case{"", "0 Not a valid Atlas Desk data file\n"},
           Case{noMap + "Thousands=Dot|Decimal=Dot|[Data]",
                "0 Thousands parameter must not be the same as Decimal parameter\n"},
           Case{noMap + "AreaLevels=8", "0 Invalid AreaLevels parameter at line 3\n"},
           Case{noMap + "Variables=600000|Variables=600000",
                "0 Invalid Variables parameter at line 4\n"},
           Case{noMap + "MapFile=n|MapFile=n|MapFile=n|MapFile=n|MapFile=n",
                "0 Invalid MapFile parameter at line 7\n"},
           Case{noMap + "AreaLevels=1|Variables=900|[Data]",
                "0 Invalid Variables parameter at line 5\n"},
           Case{noMap + "[Other]|Name=x|[Data]|more",
                "0 Invalid section heading at line 3:\n[Other]\n"
                "0 Not a valid Atlas Desk data file\n"},
           Case{noMap + "Variables=1|[Data]", "0 Missing AreaLevels statement\n"},
           Case{noMap + "AreaLevels=7|[Data]", "0 Missing Variables statement\n"},
           Case{noMap + "MapFile=", "0 No Map File specified in Ortex Map Data File\n"},
           Case{noMap + "MapFile=none", "0 Can't find Ortex Map File:  none\n"},
           Case{kHead + "[Data]|State", "0 Not enough area level names at line 11\n"},
           Case{kHead + "[Data]|State;County;Area Name;Births",
                "0 Not enough variable names at line 11\n"},
           Case{kHead + kHeader + "12;3;~;1;2;3", "0 Too many data values at line 12\n"},
           Case{kHead + kHeader + "12;3;~;1", "0 Not enough data values at line 12\n"},
           Case{kHead + "[Data]", ""},
           Case{kHead + kHeader + "12;3;~;1;2|12", "0 Area Level value missing at line 13\n", 1},
       }) {
    CVELAMap fresh;
    ProbeData own;
    own.map = &fresh;
    dir.Write("own.mdf", Table(c.text));
    EXPECT_EQ(own.Build(Path("own.mdf"), 1, 0), 0);
    EXPECT_EQ(TakeBoxes(), c.boxes);
    EXPECT_EQ(own.GetNumAreas(), c.rows);
  }
}

TEST_F(DataTest, WordsThatMeanNothingLeaveTheUsualSeparators) {
  EXPECT_EQ(Load("[MapDataFile]|Thousands=Point|Decimal=Space|Colour=red|MapLabel=~"), 1);
  EXPECT_EQ(TakeBoxes(),
            "0 Invalid Thousands parameter\n0 Invalid Decimal parameter\n"
            "0 Unrecognized command at line 4:\nColour\n");
  EXPECT_EQ(data.GetThousand(), ',');
  EXPECT_EQ(data.GetDecimal(), '.');
  EXPECT_EQ(data.oldVersion, 0);
}

TEST_F(DataTest, AreaOutsideTheMapIsTheUsersChoice) {
  const std::string text = kHead + kHeader + "7;X;South;1;2|12;3;~;3;4";
  const std::string message =
      "Area in .MDF not found in map file:\n\nName  =  South\nAreaCodes  =  7 / -99999999";
  EXPECT_EQ(Load(text), 1);
  EXPECT_EQ(TakeBoxes(), "1 " + message + '\n');
  EXPECT_EQ(data.GetNumAreas(), 2);
  host.answers = {CHost::answerCancel};
  EXPECT_EQ(Load(text, 0, 0), 0);
  EXPECT_EQ(data.GetNumAreas(), 2);
  TakeBoxes();
  EXPECT_EQ(Load(text, 1, 0), 1);
  EXPECT_EQ(TakeBoxes(), "");
  EXPECT_EQ(data.GetError(), message.c_str());
}

TEST_F(DataTest, CodesFollowTheVersion) {
  const std::string rows = kHeader + "12;0;~;1;2|12;x;~;3;4";
  ASSERT_EQ(Load(kHead + rows, 1), 1);
  ASSERT_EQ(Load(kHead + "Version=TAVO 4.1|" + rows, 1, 0), 1);
  EXPECT_EQ(data.oldVersion, 1);
  EXPECT_EQ(data.GetAreaData(0).GetArea(), Key({12, 0}));
  for (const int row : {1, 2, 3}) EXPECT_EQ(data.GetAreaData(row).GetArea(), Key({12})) << row;
}

TEST_F(DataTest, SeparatorsAndDecimalsAreThoseOfTheFile) {
  const std::string head = kHead + "Thousands=Dot|Decimal=comma|NoValue=n.v,x|";
  ASSERT_EQ(Load(head + kHeader + "12;3;~;1.234,5;N.V,X|12;X;~;7,250;-8"), 1);
  EXPECT_EQ(data.GetAreaData(0).GetValue(0), 1234.5);
  EXPECT_EQ(data.GetAreaData(0).GetValue(1), NO_DATA_VALUE);
  EXPECT_EQ(data.GetVarDecs(0), 3);
  EXPECT_EQ(data.GetVarDecs(1), 1);  // of the text for a missing value
}

TEST_F(DataTest, AHostMayReadAHeadFromAFileThatItHasOpened) {
  dir.Write("d.mdf", Table("mine|" + kHead + kHeader + "12;3;~;1;2"));
  CSpecFile file(0);
  CSpecFile::Line line;
  ASSERT_NE(file.Open(Path("d.mdf").GetString(), 0), 0);
  EXPECT_TRUE(file.NextLine(line) && file.NextLine(line));
  EXPECT_EQ(map.Build(Path("m.map"), 0, 0), 1);
  EXPECT_EQ(data.Build(file, 0, 0), 1);
  data.numDataLevels = 8;
  EXPECT_THROW(data.BuildData(file, 0), CInvalidArgException);
  data.numDataLevels = 2;
  EXPECT_EQ(data.GetNumAreas(), 1);
  EXPECT_EQ(NameOf(Key({12, 3})), "Upper");
}

TEST_F(DataTest, FileWithoutLabelBlanksTheNameOfTheMap) {
  ASSERT_EQ(Load("[MapDataFile]|MapFile=m"), 1);
  EXPECT_EQ(map.GetName(), "");
  ASSERT_EQ(Load("[MapDataFile]|MapLabel=Country", 0, 0), 1);
  EXPECT_EQ(map.GetName(), "Country");
  data.map = nullptr;
  EXPECT_THROW(Load(kHead), CInvalidArgException);
}

}  // namespace
}  // namespace vexel::test
