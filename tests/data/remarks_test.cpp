// What the reader of data files takes but tells of.

#include "data/data_fixture.h"

namespace vexel::test {
namespace {

struct Case {
  const char* name;
  std::string text;  // behind kHead, so it begins at line 10; the rows behind kHeader at line 12
  const char* remarks;
  const char* boxes = "";  // null for a load that shows none
};

class DataRemarks : public DataTest, public testing::WithParamInterface<Case> {};

TEST_P(DataRemarks, AreTheseWithTheirLinesAreasAndColumns) {
  Load(kHead + GetParam().text, GetParam().boxes == nullptr ? 1 : 0);
  EXPECT_EQ(host.TakeRemarks(), GetParam().remarks);
  EXPECT_EQ(TakeBoxes(), GetParam().boxes == nullptr ? "" : GetParam().boxes);
}

const Case kCases[] = {
    {"None", kHeader + "12;X;~;1,234;-.5|12;3;Upper;1,234,567.25;n/a|", ""},
    {"Values",
     kHeader + "12;X;~;abc;-|12;3;~;12%;12,34|-1;X;~;\"665\";(665)|-2;X;~;\u2212665;1\u00A0665|"
               "-3;X;~;1e999;1.234,5|-4;X;~;1 2;5.|-5;X;~;12345,678;,5",
     "12 not-a-number: 12; 1 Births; abc > 0\n12 not-a-number: 12; 2 Deaths; - > 0\n"
     "13 number-in-part: 12, 3; 1 Births; 12% > 12\n13 odd-grouping: 12, 3; 2 Deaths; 12,34 > "
     "1234\n"
     "14 not-a-number: -1; 1 Births; \"665\" > 0\n14 not-a-number: -1; 2 Deaths; (665) > 0\n"
     "15 not-a-number: -2; 1 Births; \u2212665 > 0\n"
     "15 number-in-part: -2; 2 Deaths; 1\u00A0665 > 1\n"
     "16 beyond-range: -3; 1 Births; 1e999 > 1.7976931348623155e+308\n"
     "16 odd-grouping: -3; 2 Deaths; 1.234,5 > 1.2345\n"
     "17 number-in-part: -4; 1 Births; 1 2 > 1\n"
     "18 odd-grouping: -5; 1 Births; 12345,678 > 12345678\n"
     "18 odd-grouping: -5; 2 Deaths; ,5 > 5\n",
     nullptr},
    {"DotInsideADecimalComma", "Thousands=Space|Decimal=Comma|" + kHeader + "12;X;~;1 665,5;1.5",
     "10 repeated-keyword: ; ; Thousands\n11 repeated-keyword: ; ; Decimal\n"
     "14 number-in-part: 12; 2 Deaths; 1.5 > 1\n"},
    {"ManyDecimals", kHeader + "12;X;~;1.1234567;1|12;3;~;1.7654321;1",
     "12 many-decimals: 12; 1 Births; 1.1234567 7/0\n"},
    {"Codes", kHeader + "12a;x;~;1;1|4294967308;3;~;1;1|twelve;X;~;1;1",
     "12 number-in-part: ; State; 12a > 12\n13 beyond-range: ; State; 4294967308 > 12\n"
     "14 not-a-number: ; State; twelve > 0\n",
     nullptr},
    {"Counts", "AreaLevels=2x|Variables=4294967298|" + kHeader + "12;X;~;1;1",
     "10 repeated-keyword: ; ; AreaLevels\n10 number-in-part: ; AreaLevels; 2x > 2\n"
     "11 repeated-keyword: ; ; Variables\n11 beyond-range: ; Variables; 4294967298 > 2\n"},
    {"EmptyCellBeforeAllElse", kHeader + "12;X;~;;12%|;12;X;~;1;2|12;;3;~;1;2;|12;X;~;1;2;;",
     "12 empty-cell: 12; 1 Births;  4/5\n12 number-in-part: 12; 1 Births; 12% > 12\n",
     "0 Not enough data values at line 12\n"},
    {"EmptyCodes", kHeader + ";12;X;~;1;2|12;;3;~;1;2;|-1;X;~;1;2;;",
     "12 empty-cell: 12; State;  5/5\n13 empty-cell: 12, 3; County;  5/5\n", nullptr},
    {"EmptyHeading", "[Data]|State;;County;Area Name;Births;Deaths|12;X;~;1;2",
     "11 empty-cell: ; District;  5/5\n"},
    {"Blanks", "[Data]|State;County ;Area Name; Births;Deaths|12;X;Northland ;1;  2|12; 3;~;1; ",
     "11 blanks-around-cell: ; County ; County \n11 blanks-around-cell: ; 1  Births;  Births\n"
     "12 blanks-around-cell: ; Area Name; Northland \n12 blanks-around-cell: ; 2 Deaths;   2\n"
     "13 blanks-around-cell: ; County ;  3\n13 blanks-around-cell: ; 2 Deaths;  \n"
     "13 not-a-number: 12, 3; 2 Deaths;   > 0\n"},
    {"SurplusHeading", "[Data]|State;County;Area Name;Births;Deaths;Rate|12;X;~;1;2",
     "11 surplus-heading: ; ; Rate\n"},
    {"SecondRows", kHeader + "12;X;~;1;2|7;X;~;1;2|12;X;~;3;4|7;X;~;3;4",
     "14 duplicate-row: 12; ;  12/0\n15 duplicate-row: 7; ;  13/0\n", nullptr},
    {"NoRows", kHeader, "0 no-rows: ; ; \n"},
    {"NoTable", "LinkTo=x", "0 no-rows: ; ; \n"},
    {"Words", "[ Data ]|", "10 blanks-in-word: ; ; [ Data ] > [Data]\n", nullptr},
    {"Keyword", "Map Label=x|" + kHeader + "12;X;~;1;2",
     "10 blanks-in-word: ; ; Map Label=x > MapLabel\n",
     "0 Unrecognized command at line 10:\nMap Label=x\n"},
    {"Versions", "Version=Ortex 9|Version=TAVO 4.1|" + kHeader + "12;X;~;1;2",
     "10 repeated-keyword: ; ; Version\n10 unknown-version: ; ; Ortex 9\n"
     "11 repeated-keyword: ; ; Version\n"},
    {"Names", "MapLabel=\xFF|[Data]|\xFE;~;Area Name;\xFD;Deaths|12;X;\xFC;1;2",
     "10 repeated-keyword: ; ; MapLabel\n10 not-utf8: ; MapLabel; \xFF\n12 not-utf8: ; ; \xFE\n12 "
     "not-utf8: ; ; \xFD\n"
     "13 not-utf8: ; Area Name; \xFC\n"},
    {"NoLabel", "MapLabel=|" + kHeader + "12;X;~;1;2",
     "10 repeated-keyword: ; ; MapLabel\n0 no-name: ; MapLabel; \n"}};

INSTANTIATE_TEST_SUITE_P(Table, DataRemarks, testing::ValuesIn(kCases),
                         [](const auto& tested) { return tested.param.name; });

TEST_F(DataRemarks, SamplesGiveNone) {
  for (const char* name : {"names", "us-conus", "us-counties"}) {
    CVELAMap ownMap;
    CVELAData own;
    own.map = &ownMap;
    ownMap.data = &own;
    const std::string path = std::string(VEXEL_SAMPLES_DIR) + '/' + name + ".mdf";
    EXPECT_EQ(own.Build(path.c_str(), 1, 0), 1);
    EXPECT_EQ(host.TakeRemarks(), "") << name;
  }
}

}  // namespace
}  // namespace vexel::test
