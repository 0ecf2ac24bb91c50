#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

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

struct RefusalCase {
  const char* name;
  std::string text;
  std::string boxes;
  int rows = 0;
};

class Refusals : public DataTest, public testing::WithParamInterface<RefusalCase> {};

TEST_P(Refusals, EndTheLoadWithTheirMessage) {
  const RefusalCase& expected = GetParam();
  EXPECT_EQ(Load(expected.text), 0);
  EXPECT_EQ(TakeBoxes(), expected.boxes);
  EXPECT_EQ(data.GetNumAreas(), expected.rows);
}

const std::string kNoMap = "[MapDataFile]|Version=Ortex 3.2|";

INSTANTIATE_TEST_SUITE_P(
    DataFile, Refusals,
    testing::Values(
        RefusalCase{"Empty", "", "0 Not a valid Atlas Desk data file\n"},
        RefusalCase{"OtherHeading", "[Map]", "0 Not a valid Atlas Desk data file\n"},
        RefusalCase{"SameSeparators", kNoMap + "Thousands=Dot|Decimal=Dot|[Data]",
                    "0 Thousands parameter must not be the same as Decimal parameter\n"},
        RefusalCase{"NoLevels", kNoMap + "Variables=1|[Data]", "0 Missing AreaLevels statement\n"},
        RefusalCase{"NoVariables", kNoMap + "AreaLevels=1|[Data]",
                    "0 Missing Variables statement\n"},
        RefusalCase{"TooManyLevels", kNoMap + "AreaLevels=8",
                    "0 Invalid AreaLevels parameter at line 3\n"},
        RefusalCase{"NegativeVariables", kNoMap + "Variables=-1",
                    "0 Invalid Variables parameter at line 3\n"},
        RefusalCase{"MoreVariablesThanAnyTable", kNoMap + "Variables=2000000000",
                    "0 Invalid Variables parameter at line 3\n"},
        RefusalCase{"MoreVariablesThanAnyTableInSum", kNoMap + "Variables=600000|Variables=600000",
                    "0 Invalid Variables parameter at line 4\n"},
        RefusalCase{"MoreVariablesThanTheFileCanHold", kNoMap + "AreaLevels=1|Variables=900|[Data]",
                    "0 Invalid Variables parameter at line 5\n"},
        RefusalCase{"HeadingAtTheEnd", kNoMap + "[Other]|x",
                    "0 Invalid section heading at line 3:\n[Other]\n"
                    "0 Not a valid Atlas Desk data file\n"},
        RefusalCase{"NoMapGiven",
                    kNoMap + "MapFile=", "0 No Map File specified in Ortex Map Data File\n"},
        RefusalCase{"MapNotFound", kNoMap + "MapFile=m.map",
                    "0 Can't find Ortex Map File:  m.map\n"},
        RefusalCase{"NothingBehindData", kHead + "[Data]", ""},
        RefusalCase{"HeaderWithoutLevels", kHead + "[Data]|State",
                    "0 Not enough area level names at line 11\n"},
        RefusalCase{"HeaderWithoutNames", kHead + "[Data]|State;County;Area Name;Births",
                    "0 Not enough variable names at line 11\n"},
        RefusalCase{"RowWithoutCodes", kHead + kHeader + "12;3;~;1;2|12",
                    "0 Area Level value missing at line 13\n", 1},
        RefusalCase{"RowTooLong", kHead + kHeader + "12;3;~;1;2;3",
                    "0 Too many data values at line 12\n"},
        RefusalCase{"RowTooShort", kHead + kHeader + "12;3;~;1",
                    "0 Not enough data values at line 12\n"},
        RefusalCase{
            "HeadingInTheHead", kNoMap + "[Other]|Name=x|[Data]|more",
            "0 Invalid section heading at line 3:\n[Other]\n0 Not a valid Atlas Desk data file\n"}),
    [](const auto& test) { return test.param.name; });

TEST_F(DataTest, MessagesThatLetTheLoadGoOn) {
  EXPECT_EQ(Load("[MapDataFile]|Thousands=Point|Decimal=Space|Colour=red|MapLabel=~"), 1);
  EXPECT_EQ(TakeBoxes(),
            "0 Invalid Thousands parameter\n0 Invalid Decimal parameter\n"
            "0 Unrecognized command at line 4:\nColour\n");
  EXPECT_EQ(data.GetThousand(), ',');
  EXPECT_EQ(data.GetDecimal(), '.');
  EXPECT_EQ(data.oldVersion, 0);
}

TEST_F(DataTest, MissingFileIsReportedWithItsPath) {
  const std::string path = dir.Path("none.mdf");
  EXPECT_EQ(data.Build(path.c_str(), 1, 0), 0);
  EXPECT_EQ(TakeBoxes(), "0 Can not open map data file " + path + '\n');
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
  host.boxes.clear();
  EXPECT_EQ(Load(text, 1, 0), 1);
  EXPECT_TRUE(host.boxes.empty());
  EXPECT_EQ(data.GetError(), message.c_str());
}

TEST_F(DataTest, CodesFollowTheVersion) {
  const std::string rows = kHeader + "12;0;~;1;2|12;x;~;3;4";
  ASSERT_EQ(Load(kHead + rows, 1), 1);
  EXPECT_EQ(data.GetAreaData(0).GetArea().codes[1], 0);
  EXPECT_EQ(data.GetAreaData(1).GetArea().codes[1], CAreaStruct::kUnset);
  ASSERT_EQ(Load(kHead + "Version=TAVO 4.1|" + rows, 1, 0), 1);
  EXPECT_EQ(data.oldVersion, 1);
  EXPECT_EQ(data.GetAreaData(2).GetArea().codes[1], CAreaStruct::kUnset);
  EXPECT_EQ(data.GetAreaData(3).GetArea().codes[1], CAreaStruct::kUnset);
}

TEST_F(DataTest, SeparatorsAndDecimalsAreThoseOfTheFile) {
  const std::string head = kHead + "Thousands=Dot|Decimal=comma|NoValue=n.v,x|";
  ASSERT_EQ(Load(head + kHeader + "12;3;~;1.234,5;N.V,X|12;X;~;7,250;-8"), 1);
  EXPECT_EQ(data.GetAreaData(0).GetValue(0), 1234.5);
  EXPECT_EQ(data.GetAreaData(0).GetValue(1), NO_DATA_VALUE);
  EXPECT_EQ(data.GetVarDecs(0), 3);
  EXPECT_EQ(data.GetVarDecs(1), 1);  // of the text for a missing value
}

TEST_F(DataTest, ColumnsAreSizedByTheirLineWhateverFollows) {
  EXPECT_EQ(Load("[MapDataFile]|Variables=5|MapLabel=~"), 1);
  EXPECT_EQ(data.varNames.GetSize(), 6);
  EXPECT_EQ(Load("[MapDataFile]|Variables=2|MapFile=none"), 0);
  EXPECT_EQ(data.varNames.GetSize(), 3);
  EXPECT_EQ(data.varDecs.GetSize(), 3);
}

TEST_F(DataTest, RowFailsAfterItHasRenamedItsArea) {
  EXPECT_EQ(Load(kHead + kHeader + "12;3;Lower;1"), 0);
  EXPECT_EQ(NameOf(Key({12, 3})), "Lower");
}

TEST_F(DataTest, FileWithoutLabelBlanksTheNameOfTheMap) {
  ASSERT_EQ(Load("[MapDataFile]|MapFile=m"), 1);
  EXPECT_EQ(map.GetName(), "");
  ASSERT_EQ(Load("[MapDataFile]|MapLabel=Country", 0, 0), 1);
  EXPECT_EQ(map.GetName(), "Country");
}

TEST_F(DataTest, TakesTheNewerMapAndOfEqualsTheCompiledOne) {
  CVELAMap compiler;
  ASSERT_EQ(compiler.Build(dir.Path("m.map").c_str(), 0, 0), 1);
  ASSERT_EQ(compiler.SaveMpc(dir.Path("m.mpc").c_str()), 1);
  const auto time = std::filesystem::last_write_time(dir.Path("m.map"));
  const auto loads = [&](std::chrono::seconds later) {
    std::filesystem::last_write_time(dir.Path("m.mpc"), time + later);
    EXPECT_EQ(Load("[MapDataFile]|MapFile=m|MapLabel=~"), 1);
    return data.mapIsText == 0 ? "compiled" : "text";
  };
  EXPECT_STREQ(loads(std::chrono::seconds(0)), "compiled");
  EXPECT_STREQ(loads(std::chrono::seconds(9)), "compiled");
  EXPECT_STREQ(loads(std::chrono::seconds(-9)), "text");
}

TEST_F(DataTest, QuietLoadShowsProgressAndTextStaysInError) {
  EXPECT_EQ(Load(kHead + kHeader + "12", 1), 0);
  EXPECT_TRUE(host.boxes.empty());
  EXPECT_EQ(data.GetError(), "Area Level value missing at line 12");
  EXPECT_EQ(host.progressLog.front(), "open");
  EXPECT_FALSE(host.progressOpen);
}

TEST_F(DataTest, SetWithoutAMapIsAnErrorOfTheHost) {
  data.map = nullptr;
  EXPECT_THROW(Load(kHead), CInvalidArgException);
}

// Every 40th row and the first and last of the real file, told apart from the engine's own reading.
TEST_F(DataTest, ReadsTheSampleAsItStands) {
  ASSERT_EQ(data.Build(VEXEL_SAMPLES_DIR "/us-counties.mdf", 1, 0), 1);
  EXPECT_TRUE(host.boxes.empty());
  std::ifstream file(VEXEL_SAMPLES_DIR "/us-counties.mdf");
  std::string line;
  while (std::getline(file, line) && line != "[Data]") {
  }
  std::getline(file, line);
  int row = 0;
  for (; std::getline(file, line); ++row) {
    if (row % 40 != 0) continue;
    std::istringstream cells(line);
    std::string cell;
    for (int i = 0; std::getline(cells, cell, '\t'); ++i) {
      if (i < 3) continue;
      const double wanted = cell == "N/A" ? NO_DATA_VALUE : std::stod(cell);
      EXPECT_EQ(data.GetAreaData(row).GetValue(i - 3), wanted) << line;
    }
  }
  EXPECT_EQ(row, data.GetNumAreas());
  map.SetAreaDataPointers(&data);
  CMapOb* node = nullptr;
  ASSERT_EQ(map.Find(Key({35, 13}), node), 1);
  EXPECT_EQ(node->GetName(),
            "Do\xC3\xB1"
            "a Ana");
  EXPECT_EQ(node->GetAreaData()->GetArea(), Key({35, 13}));
}

}  // namespace
}  // namespace vexel::test
