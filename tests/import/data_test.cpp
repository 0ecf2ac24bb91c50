// Data files from tables and fields, and what is told of the join.

#include <gtest/gtest.h>

#include <memory>
#include <nlohmann/json.hpp>

#include "codes.h"
#include "importing.h"
#include "kit/view/page.h"
#include "kit/view/view.h"
#include "loose_form.h"
#include "support/refusal.h"

namespace vexel::import {

namespace {

constexpr const char* kFlat = "@areas.geojson --name name --key id ";

std::string RowsOf(const std::string& dataFile) {
  return dataFile.substr(dataFile.find("[Data]\n") + 7);
}

TEST(ImportData, HasARowForEachAreaThatHasOne) {
  const Importing folder;
  folder.Write("t.csv", "id;rate;name;pop\n01;2,50;x;1.000\n04;-3;y;\n02;;z;12\n");
  const Account account = folder.Run(kFlat + std::string("--table @t.csv --join id --var n"));
  const std::string data = folder.Read("to.mdf");
  EXPECT_TRUE(
      data.starts_with("[MapDataFile]\nVersion=Ortex 3.2\nMapFile=to\nAreaLevels=1\n"
                       "Variables=3\n"));
  EXPECT_EQ(RowsOf(data),
            "id\tArea "
            "Name\tn\trate\tpop\n1\t~\t2.7\t2.50\t1000\n2\t~\t2.7\tN/A\t12\n3\t~\t2.7\tN/A\tN/A\n"
            "4\t~\t2.7\t-3\tN/A\n");
  EXPECT_EQ(account.data->leftOut, std::vector<std::string>{"name"});
  EXPECT_EQ(account.data->decimal, "comma");
  EXPECT_EQ(account.data->separator, ";");

  folder.Run(kFlat + std::string("--table @t.csv --join id --columns pop --force"));
  EXPECT_EQ(RowsOf(folder.Read("to.mdf")), "id\tArea Name\tpop\n1\t~\t1000\n2\t~\t12\n4\t~\tN/A\n");
}

TEST(ImportData, TellsWhatDoesNotMatch) {
  const Importing folder;
  folder.Write("t.csv", "code,v\n01,1\n1,5\n9,2\n02,3\n02,4\n");
  const std::string words = kFlat + std::string("--table @t.csv --join code=id ");
  const Account account = folder.Run(words);
  EXPECT_EQ(RowsOf(folder.Read("to.mdf")), "id\tArea Name\tv\n1\t~\t1\n2\t~\t3\n");
  EXPECT_EQ(
      folder.Read("to.unmatched.csv"),
      "what,row,value,area,near\nrow without area,3,1,,\"Ärea, one\"\nrow without area,4,9,,\n"
      "further row of an area,6,02,Two,\narea without row,,03,Three,\narea without "
      "row,,04,Four,\n");
  EXPECT_TRUE(account.HasLoss());
  const auto json = nlohmann::json::parse(AccountJson(account));
  EXPECT_EQ(json["data"]["table"]["matched"], 2);
  EXPECT_EQ(json["data"]["rowsWithoutArea"][0]["near"], "Ärea, one");
  EXPECT_EQ(json["data"]["duplicateRows"][0]["row"], 6);
  EXPECT_EQ(json["data"]["areasWithoutRow"].size(), 2U);
  EXPECT_EQ(json["map"]["levels"][0]["areas"], 4);
  EXPECT_EQ(json["files"].size(), 4U);
  std::string told;
  for (const std::string& line : AccountLines(account)) told += line + '\n';
  EXPECT_NE(
      told.find("2 rows found no area: \"1\" in row 3 (near \"Ärea, one\"), \"9\" in row 4\n"),
      std::string::npos)
      << told;

  folder.Write("t.csv", "code,v\n1,5\n01,1\n9,2\n2,3\n");
  const Account loose = folder.Run(words + "--loose --force");
  EXPECT_EQ(RowsOf(folder.Read("to.mdf")), "id\tArea Name\tv\n1\t~\t1\n2\t~\t3\n");
  EXPECT_EQ(loose.data->Count(Unmatched::Kind::duplicate), 1U);  // "1", though it comes first
  EXPECT_EQ(loose.data->near, 1U);
  const std::vector<std::string> before = folder.List();
  const std::string kept = folder.Read("to.mdf");
  folder.Write("t.csv", "code,v\n01,7\n");
  EXPECT_TRUE(folder.Run(words + "--strict --force").files.empty());
  EXPECT_EQ(folder.Read("to.mdf"), kept);
  EXPECT_EQ(folder.List(), before);
}

TEST(ImportData, JoinsByAllLevelsAndTakesNoRowForSeveralAreas) {
  const Importing folder;
  folder.Write(
      "twice.geojson",
      Importing::Collection({Importing::Feature("A", "1", "Same", Importing::Square(0, 0, 1)),
                             Importing::Feature("B", "1", "Same", Importing::Square(2, 0, 1))}));
  folder.Write("t.csv", "g,i,n,v\nA,1,Same,1\nB,1,Same,2\nB,,Land,3\n");
  const std::string words = "@twice.geojson --name name --key group,id --table @t.csv --columns v ";
  folder.Run(words + "--join g=group,i=id");
  EXPECT_EQ(RowsOf(folder.Read("to.mdf")),
            "group\tid\tArea Name\tv\n1\t1\t~\t1\n2\tX\t~\t3\n2\t1\t~\t2\n");
  folder.Write("t.csv", "g,i,n,v\nA,,,7\nB,,,8\n");
  folder.Run(words + "--join g=group --force");
  EXPECT_EQ(RowsOf(folder.Read("to.mdf")), "group\tid\tArea Name\tv\n1\tX\t~\t7\n2\tX\t~\t8\n");
  folder.Write("t.csv", "g,i,n,v\nA,1,Same,1\nB,1,Same,2\nB,,Land,3\n");
  EXPECT_NE(folder.Refusal(words + "--join n=name --force").find("\"Same\", which names several"),
            std::string::npos);
  folder.Write("t.csv", "i,n,v\n01,Ärea,1\n02,Two,2\n03,Two,3\n");
  folder.Write(
      "areas.geojson",
      Importing::Collection({Importing::Feature("A", "1", "Two", Importing::Square(0, 0, 1)),
                             Importing::Feature("A", "2", "Two", Importing::Square(2, 0, 1)),
                             Importing::Feature("A", "3", "Ärea", Importing::Square(4, 0, 1))}));
  const Account account =
      folder.Run(kFlat + std::string("--table @t.csv --columns v --join n=name --force"));
  EXPECT_EQ(account.data->Count(Unmatched::Kind::ambiguous), 2U);
  EXPECT_EQ(RowsOf(folder.Read("to.mdf")), "id\tArea Name\tv\n3\t~\t1\n");
}

TEST(ImportData, FitsAMapThatIsThere) {
  const Importing folder;
  folder.Run("@areas.geojson --name name --key group,id");
  std::filesystem::create_directory(folder.Path("sub"));
  std::filesystem::rename(folder.Path("to.map"), folder.Path("sub/m.map"));
  const struct {
    const char* table;
    const char* join;
    bool hasKeys;
    const char* rows;
  } kCases[] = {
      {"k,v\nA01,1\nB04,2\n", "k", true, "1\t1\t~\t1\n2\t4\t~\t2\n"},
      {"k,v\n01,1\nA,2\n", "k", true, "1\tX\t~\t2\n1\t1\t~\t1\n"},
      {"g,k,v\nA,01,1\nB,,2\n", "g,k", true, "1\t1\t~\t1\n2\tX\t~\t2\n"},
      {"k,v\nTwo,1\n", "k=name", true, "1\t2\t~\t1\n"},
      {"k,v\n0002,1\n24,2\n", "k", false, "2\t4\t~\t2\n"},  // "2" is a group and an area
  };
  for (const auto& [table, join, hasKeys, rows] : kCases) {
    folder.Write("t.csv", table);
    if (hasKeys) {
      std::filesystem::copy(folder.Path("to.keys.csv"), folder.Path("sub/m.keys.csv"),
                            std::filesystem::copy_options::overwrite_existing);
    } else {
      std::filesystem::remove(folder.Path("sub/m.keys.csv"));
    }
    folder.Run("--map @sub/m.map --table @t.csv --columns v --force --join " + std::string(join));
    const std::string data = folder.Read("to.mdf");
    EXPECT_NE(data.find("MapFile=sub/m\n"), std::string::npos);
    EXPECT_EQ(RowsOf(data), "group\tid\tArea Name\tv\n" + std::string(rows)) << table;
  }
}

TEST(ImportData, IsRefusedAsAWhole) {
  const Importing folder;
  const struct {
    const char* table;
    const char* words;
    const char* said;
  } kCases[] = {
      {"id,v\n01,1*\n02,2\n", "--join id", "t.csv: row 2, column \"v\": \"1*\" is no number"},
      {"id,v\n77,1\n", "--join id",
       "t.csv: no row finds an area, the first, row 2, looks for \"77\""},
      {"id,v\n1,1\n", "--join id", "which is near \"Ärea, one\": --loose joins such rows"},
      {"id,v\n01,a\n", "--join id", "t.csv: has no column of numbers beside the join"},
      {"id,v\n01,1\n", "--join no=id", "t.csv: no column \"no\""},
      {"id,v\n01,1\n", "--join id --columns w", "t.csv: no column \"w\""},
      {"id,v\n01,1*\n02,2*\n", "--join id", "t.csv: row 2, column \"v\": \"1*\" is no number"},
  };
  for (const auto& [table, words, said] : kCases) {
    folder.Write("t.csv", table);
    const std::string refusal = folder.Refusal(kFlat + std::string("--table @t.csv ") + words);
    EXPECT_NE(refusal.find(said), std::string::npos) << refusal;
  }
  EXPECT_EQ(folder.List(), (std::vector<std::string>{"areas.geojson", "t.csv"}));
}

// The shipped map and its table as others have them give the page of the shipped files.
TEST(ImportData, BringsTheSampleBack) {
  const Importing folder;
  const std::string files = VEXEL_SAMPLES_DIR "/tutorial/";
  const Account account =
      folder.Run(files + "counties.shp --name name --key geoid:2,geoid --table " + files +
                 "jobs.csv --join geoid");
  EXPECT_EQ(account.map->levels[0].areas, 49U);
  EXPECT_EQ(account.map->levels[1].areas, 3108U);
  EXPECT_EQ(account.data->matched, 3108U);
  EXPECT_EQ(account.data->Count(Unmatched::Kind::row), 34U);  // Alaska and Hawaii

  const auto viewOf = [](const std::string& data, const std::string& variable) {
    Request request;
    request.data = data;
    request.variable = variable;
    request.level = 2;
    request.groups = 5;
    request.noTitle = true;
    return std::make_unique<View>(request);
  };
  const auto shipped = viewOf(VEXEL_SAMPLES_DIR "/us-conus.mdf", "4");
  const auto imported = viewOf(folder.Path("to.mdf"), "unemployment_rate");
  ASSERT_EQ(imported->legend.numGroups, shipped->legend.numGroups);
  WriteGif(*shipped, folder.Path("shipped.gif"));
  WriteGif(*imported, folder.Path("imported.gif"));
  EXPECT_EQ(folder.Read("imported.gif"), folder.Read("shipped.gif"));
  EXPECT_EQ(imported->map.GetBoundRect(), shipped->map.GetBoundRect());
  for (int i = 0; i < shipped->map.GetNumChildren(); ++i) {
    const CMapOb& state = *shipped->map.GetChild(i);
    const CMapOb& other = *imported->map.GetChild(i);
    EXPECT_EQ(other.GetBoundRect(), state.GetBoundRect()) << state.GetName().View();
    ASSERT_EQ(other.GetNumChildren(), state.GetNumChildren());
    for (int j = 0; j < state.GetNumChildren(); ++j) {
      EXPECT_EQ(other.GetChild(j)->GetColor(), state.GetChild(j)->GetColor());
    }
  }
}

TEST(ImportCodes, StayAndLeaveRoomForOthers) {
  const auto assigned = [](LevelCodes codes, const std::set<std::string>& values) {
    codes.Assign(values);
    std::string text;
    for (const std::string& value : values) {
      text += value + '=' + std::to_string(codes.Of(value)) + ' ';
    }
    for (const std::string& alike : codes.SameButForZeros()) text += '[' + alike + ']';
    for (const std::string& displaced : codes.Displaced()) text += '(' + displaced + ')';
    return text;
  };
  EXPECT_EQ(assigned({}, {"b", "a", "Z"}), "Z=1 a=2 b=3 ");
  EXPECT_EQ(assigned({}, {"01", "7", "2A", "007x"}), "007x=8 01=1 2A=9 7=7 ");
  EXPECT_EQ(assigned({}, {"01", "1", "001"}),
            "001=2 01=3 1=1 [\"1\" and \"001\"][\"1\" and \"01\"]");
  EXPECT_EQ(assigned({}, {"0", "4294967297", "-5", "2147483647"}),
            "-5=1 0=0 2147483647=2 4294967297=3 ");
  LevelCodes kept;
  kept.Keep("b", 3);
  kept.Keep("b", 3);
  EXPECT_EQ(assigned(kept, {"a", "b", "3", "2"}), "2=2 3=4 a=5 b=3 (3)");
  LevelCodes zeros;
  zeros.Keep("01", 5);
  EXPECT_EQ(assigned(zeros, {"001", "2"}), "001=5 2=2 ");
  EXPECT_EQ(test::Refusal([&] { kept.Keep("b", 4); }), "\"b\" has two codes, 3 and 4");
  EXPECT_EQ(test::Refusal([&] { kept.Keep("c", 3); }),
            "the code 3 belongs to both \"b\" and \"c\"");
}

TEST(ImportCodes, ComeFromTheKeysFileOfLastYear) {
  const Importing folder;
  folder.Run("@areas.geojson --name name --key name");
  const std::string keys = folder.Read("to.keys.csv");
  folder.Write(
      "more.geojson",
      Importing::Collection({Importing::Feature("", "", "Aachen", Importing::Square(0, 0, 1)),
                             Importing::Feature("", "", "Two", Importing::Square(3, 0, 1))}));
  folder.Run("@more.geojson --name name --key name --keys @to.keys.csv --force");
  EXPECT_EQ(folder.TreeOf("to.map"), "name Two (3) 4 Aachen (5) 4 ");
  EXPECT_NE(folder.Read("to.keys.csv").find("1,1,Four,1,Four\n"), std::string::npos);  // is gone
  folder.Write("bad.csv", "level,key,value,code,name\n1,x,a,1,b\n");
  EXPECT_EQ(folder.Refusal("@more.geojson --key name --keys @bad.csv --force"),
            "bad.csv: row 2: \"x\" is no key such as 12,3");
}

TEST(LooseForms, AreOneForSpellingsOfOneName) {
  for (const auto& [text, form] : {std::pair{"Doña Ana", "donaana"},
                                   {"St. Louis", "stlouis"},
                                   {"ŁÓDŹ", "lodz"},
                                   {"00120", "120"},
                                   {"0", "0"},
                                   {"", ""},
                                   {"O\xE2\x80\x99"
                                    "Brien",
                                    "obrien"},
                                   {"北京", "北京"},
                                   {"Москва", "москва"},
                                   {"a\xCC\x81", "a"},
                                   {"\xFF\xC3", "\uFFFD\uFFFD"}}) {
    EXPECT_EQ(LooseForm(text), form);
  }
}

}  // namespace

}  // namespace vexel::import
