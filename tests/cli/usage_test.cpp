// What the program refuses, how it says so, and that it leaves nothing behind.

#include <algorithm>
#include <filesystem>

#include "cli_fixture.h"
#include "platform/string.h"

namespace vexel::test {
namespace {

std::string Lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](char c) { return ToLowerAscii(c); });
  return text;
}

// The land with districts that have names and keys and nothing else.
std::string WithoutDistricts() {
  std::string map(kLandMap);
  for (std::size_t at = 0; (at = map.find("[GeoUnit]", at)) != std::string::npos; ++at) {
    const std::size_t begin = map.find("[Polygon]", at);
    map.erase(begin, std::min(map.find("[GeoUnit]", begin), map.find("[EndGroup]", begin)) - begin);
  }
  return map;
}

TEST_F(Cli, SaysWhyItRefusesAndLeavesNothing) {
  folder.Write("junk.mpc", "junk");
  std::filesystem::create_directory(folder.Path("folder"));
  std::filesystem::create_hard_link(folder.Path("land.mdf"), folder.Path("same.mdf"));
  EXPECT_EQ(Call("compile land.map -o whole.mpc").status, 0);
  const std::string whole = folder.Read("whole.mpc");
  folder.Write("land.dat", whole);
  folder.Write("torn.mpc", whole.substr(0, whole.size() / 4));
  folder.Write("half.mpc", whole.substr(0, whole.size() - 9));
  folder.Write("bare.map", WithoutDistricts());
  folder.Write("bare.mdf", DataFor("bare", kLandRows));
  folder.Write("doubtful.mdf", DataFor("land", "1\tX\t~\t12%\t1\n8\t8\tFar\t1\t1\n"));
  folder.Write("long.mdf", DataFor("land", "1\t1\t~\t1\t2\t3\n"));
  folder.Write("book.mdf", "PK\x03\x04 and so on");
  folder.Write("good.json", "{\"data\": \"land.mdf\", \"level\": 2}");
  folder.Write("huge.json", std::string(2'000'000, ' '));
  const std::vector<std::string> before = folder.List();
  const struct {
    std::string arguments;
    int status;
    std::string told;  // what standard error must hold in any letter case, cut by '|'
  } kRefusals[] = {
      {"rendr land.mdf", 2, "rendr|render"},
      {"frobnicate", 2,
       "render, locate, info, compile, decompile, convert, check, import, palettes, tree, print, "
       "serve"},
      {"render", 2, "DATA"},
      {"render land.mdf --pallete blue", 2, "--pallete|mean --palette"},
      {"render land.mdf --var Brths", 2, "--var|Brths|mean Births"},
      {"render land.mdf --level 3", 2, "--level|Region|District"},
      {"render land.mdf --zoom 7,7", 2, "--zoom|7,7"},
      {"render land.mdf --level 2 --outline 1", 2, "--outline|on show"},
      {"render land.mdf --level 2 --zoom 1 --box 2,1", 2, "--box|on show"},
      {"render land.mdf --separators ..", 2, "--separators|two different"},
      {"render land.mdf --midpoint inf", 2, "--midpoint|inf"},
      {"render land.mdf -o page.webp", 2, "page.webp|gif, svg, pdf, png"},
      {"render land.mdf -o a.gif --report a.gif", 2, "two things"},
      {"render land.mdf -o - --html a.html", 2, "picture with a name"},
      {"--loud", 2, "unknown option"},
      {"render land.mdf -o ./land.mdf", 2, "land.mdf|made from"},
      {"render land.mdf -o same.mdf", 2, "same.mdf|made from"},
      {"render land.mdf -o page.gif --report land.map", 2, "land.map|made from"},
      {"render --view good.json -o page.gif --html good.json", 2, "good.json|made from"},
      {"render --view huge.json", 1, "huge.json|more than 1000000 bytes"},
      {"render bare.mdf --level 2", 1, "level 2 (District)|level 1 (Region)"},
      {"render doubtful.mdf --strict", 1, "doubtful.mdf|1 doubtful place and 1 lost row"},
      {"render book.mdf", 1, "book.mdf|spreadsheet"},
      {"render long.mdf", 1, "long.mdf|line 13"},
      {"render folder", 1, "folder|is a folder"},
      {"render land.mdf --map torn.mpc", 1, "torn.mpc|the compiled file ends early"},
      {"render land.mdf -o nowhere/page.gif", 1, "nowhere/page.gif"},
      {"locate land.mdf", 2, "missing"},
      {"locate land.mdf 5,y", 2, "400,300"},
      {"locate land.mdf 5,6,7", 2, "400,300"},
      {"locate land.mdf 0,0", 1, "0,0"},
      {"info land.dat", 1, "land.dat|ends in mpc"},
      {"compile whole.mpc", 2, "whole.mpc|already"},
      {"compile land.map -o land.bin", 2, "land.bin|ends in mpc"},
      {"decompile land.map -o other.map", 2, "land.map|ends in mpc"},
      {"decompile whole.mpc", 2, "-o is missing"},
      {"decompile whole.mpc -o other.mpc", 2, "other.mpc|compiled map"},
      {"decompile junk.mpc -o other.map", 1, "junk.mpc"},
      {"decompile half.mpc -o other.map", 1, "half.mpc|second half"},
      {"decompile whole.mpc -o nowhere/land.map", 1, "nowhere/land.map"},
      {"convert land.mdf", 2, "-o"},
      {"convert land.mdf -o land.map", 2, "land.map|place of the map"},
      {"check", 2, "FILE"},
      {"tree land.map -o areas.txt", 2, "--base-url"},
  };
  for (const auto& [arguments, status, told] : kRefusals) {
    SCOPED_TRACE(arguments);
    const RunResult done = Call(arguments);
    EXPECT_EQ(done.status, status) << done.err;
    EXPECT_EQ(done.out, "");
    EXPECT_TRUE(done.err.starts_with("vexel: ")) << done.err;
    for (const std::string& part : Cut(told, '|')) {
      EXPECT_NE(Lower(done.err).find(Lower(part)), std::string::npos) << part << " in " << done.err;
    }
    EXPECT_EQ(folder.List(), before);
  }
  EXPECT_NE(Call("info half.mpc").out.find("no map units"), std::string::npos);
}

TEST_F(Cli, KeepsTheOldPictureWhenAnOutputFails) {
  for (const char* name : {"page.gif", "page.html"}) folder.Write(name, "old");
  const std::vector<std::string> before = folder.List();
  constexpr rlim_t kTooSmall = 2048;
  for (const auto& [arguments, limit] :
       {std::pair<std::string, std::optional<rlim_t>>{"--html nowhere/page.html", {}},
        {"--report nowhere/page.json", {}},
        {"--size 2000x1500", kTooSmall},
        {"--html page.html --size 100x80", kTooSmall}}) {
    RunOptions options;
    options.fileLimit = limit;
    folder.Write("page.gif", "old");
    const RunResult done = Call("render land.mdf -o page.gif " + arguments, options);
    EXPECT_EQ(done.status, 1) << arguments;
    EXPECT_TRUE(done.err.starts_with("vexel: ")) << arguments << ": " << done.err;
    EXPECT_TRUE(folder.Read("page.gif") == "old") << arguments;
    EXPECT_EQ(folder.List(), before) << arguments;
  }
}

TEST_F(Cli, TellsALineThatItPassesOver) {
  std::string odd(kLandMap);
  odd.insert(odd.find("AreaStructure=1, 1"), "Colour=3\n");
  folder.Write("odd.map", odd);
  const RunResult done = Call("render land.mdf --map odd.map -o page.gif");
  EXPECT_EQ(done.status, 0);
  EXPECT_NE(done.err.find("odd.map:22: Error at line 22: Colour"), std::string::npos) << done.err;
}

TEST_F(Cli, ListsEverythingDoubtful) {
  folder.Write("odd.map",
               "[Map]\nMapName=Odd\nLongLat=No\n[AreaLevels]\nName=Region\n"
               "[GeoUnit]\nName=A\nAreaStructure=1\n[Polygon]\n0 0\n9,5 0\n9 9\n");
  folder.Write("odd.mdf",
               "[MapDataFile]\nVersion=Ortex 3.2\nMapFile=odd\nAreaLevels=1\n"
               "Variables=1\nThousands=Comma\nDecimal=Dot\nMapLabel=~\n[Data]\n"
               "Region\tArea Name\tRate\n1\t~\t(5)\x1B\n2\tFar\t7\n");
  const std::vector<std::string> told{
      "odd.map:11: area 1, x: \"9,5\" is read as 9",
      "odd.mdf:11: area 1, column 1 (Rate): \"(5)?\" is no number and is read as 0",
      "odd.mdf:12: area 2 (Far): the map has no such area"};
  const RunResult found = Call("check odd.mdf odd.map");
  EXPECT_EQ(found.status, 1);
  EXPECT_EQ(found.err, "");
  EXPECT_EQ(Cut(found.out, '\n'), told);
  const Json json = Json::parse(Call("check --json odd.mdf").out);
  EXPECT_EQ(json["count"], 3);
  EXPECT_EQ(json["found"][1]["kind"], "not-a-number");
  EXPECT_EQ(json["found"][1]["line"], 11);
  const RunResult clean = Call("check land.mdf " + kSample + ".map");
  EXPECT_EQ(clean.status, 0) << clean.out;
  EXPECT_EQ(clean.out, "");
  folder.Write("marked.map", "\xEF\xBB\xBF" + std::string(kLandMap));
  EXPECT_EQ(Call("check marked.map").status, 0);

  // A page tells the first few, and its report keeps all counts when nothing is to be printed.
  const RunResult page = Call("render odd.mdf -o page.gif");
  EXPECT_EQ(page.status, 0);
  EXPECT_NE(page.err.find("vexel: " + told[1]), std::string::npos) << page.err;
  const Json report = Report("odd.mdf");
  EXPECT_EQ(report["remarks"]["count"], 2);
  EXPECT_EQ(report["rowsWithoutArea"][0]["key"], Json::array({2}));
  EXPECT_NE(report["notes"].size(), 0U);
  std::string rows;
  for (int i = 0; i < 25; ++i) rows += "1\tX\t~\t?\t1\n";
  folder.Write("land.mdf", DataFor("land", rows));
  EXPECT_EQ(Report("land.mdf")["remarks"]["first"].size(), 20U);
}

TEST_F(Cli, MakesTheSamePageFromAKeptView) {
  const std::string options = "land.mdf --level 2 --groups 2 --palette viridis --box 1,1 --box 2";
  ASSERT_EQ(Call("render " + options + " -o a.gif --save-view view.json").status, 0);
  ASSERT_EQ(Call("render --view view.json -o b.gif").status, 0);
  EXPECT_TRUE(folder.Read("a.gif") == folder.Read("b.gif"));
  ASSERT_EQ(Call("render --groups 3 --view view.json -o c.gif --report c.json").status, 0);
  const Json report = Json::parse(folder.Read("c.json"));
  EXPECT_EQ(report["request"]["groups"], 3) << "options count for more than a file";
  EXPECT_EQ(report["request"]["palette"], "Viridis");
  EXPECT_EQ(Call("locate --view view.json 400,300").out,
            Call("locate " + options + " 400,300").out);
}

TEST_F(Cli, HelpsOnEveryCommand) {
  const RunResult nothing = Call("");
  EXPECT_EQ(nothing.status, 2);
  EXPECT_NE(nothing.err.find("vexel --help"), std::string::npos) << nothing.err;
  const RunResult help = Call("--help");
  EXPECT_EQ(help.status, 0);
  for (const std::string command : {"render", "locate", "info", "compile", "decompile", "convert",
                                    "check", "palettes", "tree"}) {
    EXPECT_NE(help.out.find("  " + command), std::string::npos) << command;
    const std::string own = Call(command + " --help").out;
    EXPECT_NE(own.find("Example:\n  vexel " + command), std::string::npos) << own;
    EXPECT_EQ(Call("help " + command).out, own);
  }
  EXPECT_TRUE(Call("--version").out.starts_with("vexel "));
  EXPECT_EQ(Call("--help", {.fileLimit = 0}).status, 1) << "nobody could take it";
}

}  // namespace
}  // namespace vexel::test
