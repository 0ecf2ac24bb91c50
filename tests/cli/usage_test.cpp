// What the program refuses, how it says so, and that it leaves nothing behind.

#include <algorithm>
#include <filesystem>

#include "cli_fixture.h"
#include "platform/string.h"

namespace vexel::test {
namespace {

struct Refusal {
  std::string arguments;
  int status;
  std::string told;  // what standard error must hold in any letter case, cut by '|'
};

void PrintTo(const Refusal& refusal, std::ostream* to) { *to << refusal.arguments; }

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

class CliRefusal : public Cli, public testing::WithParamInterface<Refusal> {
 protected:
  CliRefusal() {
    std::string junk = "\x7F";
    for (unsigned i = 0; i < 3000; ++i) junk += static_cast<char>(i * i % 251 * 31);
    for (const char* name : {"junk.map", "junk.mdf", "junk.mpc"}) folder.Write(name, junk);
    for (const char* name : {"empty.map", "empty.mdf", "empty.mpc"}) folder.Write(name, "");
    std::filesystem::create_directory(folder.Path("folder"));
    EXPECT_EQ(Call("compile land.map -o whole.mpc").status, 0);
    const std::string whole = folder.Read("whole.mpc");
    folder.Write("torn.mpc", whole.substr(0, whole.size() / 4));
    std::string bad(kLandMap);
    bad.insert(bad.find("1, 1"), "one");
    folder.Write("bad.map", bad);
    folder.Write("stray.mdf", DataFor("nowhere", kLandRows));
    folder.Write("bare.map", WithoutDistricts());
    folder.Write("bare.mdf", DataFor("bare", kLandRows));
    folder.Write("doubtful.mdf", DataFor("land", "1\tX\t~\t12%\t1\n8\t8\tFar\t1\t1\n"));
    folder.Write("wide.mdf", std::string("\xFF\xFE[\0M\0", 6));
    folder.Write("shapes.json", "{\"type\": \"FeatureCollection\", \"features\": []}");
    folder.Write("book.mdf", "PK\x03\x04 and so on");
    folder.Write("good.json", "{\"data\": \"land.mdf\", \"level\": 2}");
    folder.Write("wrong.json", "{\"data\": \"land.mdf\",\n \"grups\": 3}");
    folder.Write("long.mdf", DataFor("land", "1\t1\t~\t1\t2\t3\n"));
  }
};

TEST_P(CliRefusal, SaysWhyAndLeavesNothing) {
  const std::vector<std::string> before = folder.List();
  const RunResult done = Call(GetParam().arguments);
  EXPECT_EQ(done.status, GetParam().status) << done.err;
  EXPECT_EQ(done.out, "");
  EXPECT_TRUE(done.err.starts_with("vexel: ")) << done.err;
  for (const std::string& part : Cut(GetParam().told, '|')) {
    EXPECT_NE(Lower(done.err).find(Lower(part)), std::string::npos) << part << " in " << done.err;
  }
  EXPECT_EQ(folder.List(), before);
}

const Refusal kUsage[] = {
    {"rendr land.mdf", 2, "rendr|render"},
    {"frobnicate", 2,
     "frobnicate|render, locate, info, compile, decompile, convert, check, palettes, tree"},
    {"render", 2, "DATA"},
    {"render land.mdf --pallete blue", 2, "--pallete|mean --palette"},
    {"render land.mdf --var", 2, "--var"},
    {"render land.mdf --palette pinkish", 2, "pinkish|vexel palettes"},
    {"render land.mdf --calc ratio", 2, "--var2"},
    {"render land.mdf --var2 2", 2, "--calc"},
    {"render land.mdf --groups 0", 2, "--groups|1 to 7"},
    {"render land.mdf --groups 2.5", 2, "--groups|1 to 7"},
    {"render land.mdf --size 800", 2, "--size|800x600"},
    {"render land.mdf --size 800x99999999999", 2, "--size|800x600"},
    {"render land.mdf --bounds 3,2", 2, "--bounds|3,2"},
    {"render land.mdf --bounds 1,2 --groups 3", 2, "--bounds"},
    {"render land.mdf --intervals bounds", 2, "--bounds"},
    {"render land.mdf --group-names a,b --groups 3", 2, "--group-names"},
    {"render land.mdf --var Brths", 2, "--var|Brths|mean Births"},
    {"render land.mdf --level 3", 2, "--level|Region|District"},
    {"render land.mdf --zoom 1,x", 2, "--zoom|12,3"},
    {"render land.mdf --zoom 7,7", 2, "--zoom|7,7"},
    {"render land.mdf --level 2 --outline 1", 2, "--outline|on show"},
    {"render land.mdf --level 2 --zoom 1 --box 2,1", 2, "--box|on show"},
    {"render land.mdf --level 2 --zoom 1 --box 2", 2, "--box|on show"},
    {"render land.mdf --palette YlGnBy", 2, "mean YlGnBu"},
    {"render land.mdf --intervals naturl", 2, "mean natural"},
    {"render land.mdf --colors #fff,#zzz", 2, "--colors|#zzz"},
    {"render land.mdf --same-bounds Births,Deths", 2, "--same-bounds|mean Deaths"},
    {"render land.mdf -o page.webp", 2, "page.webp|gif, svg, pdf|png"},
    {"check", 2, "FILE"},
    {"help rendr", 2, "mean render"},
    {"tree land.map -o areas.txt", 2, "--base-url"},
    {"locate land.mdf", 2, "missing"},
    {"locate land.mdf 5,y", 2, "400,300"},
    {"convert land.mdf", 2, "-o"},
    {"decompile land.map -o other.map", 2, "mpc"},
};
INSTANTIATE_TEST_SUITE_P(Usage, CliRefusal, testing::ValuesIn(kUsage));

const Refusal kFiles[] = {
    {"render none.mdf", 1, "none.mdf|No such file"},
    {"render bare.mdf --level 2", 1, "level 2 (District)|level 1 (Region)"},
    {"render doubtful.mdf --strict", 1, "doubtful.mdf|1 doubtful place and 1 lost row"},
    {"render wide.mdf", 1, "wide.mdf|UTF-16"},
    {"render shapes.json", 1, "shapes.json|GeoJSON"},
    {"render book.mdf", 1, "book.mdf|spreadsheet"},
    {"render --view wrong.json", 1, "wrong.json:2|grups|mean groups"},
    {"render land.mdf -o ./land.mdf", 2, "land.mdf|made from"},
    {"render land.mdf -o page.gif --report land.map", 2, "land.map|made from"},
    {"render --view good.json -o page.gif --html good.json", 2, "good.json|made from"},
    {"convert land.mdf -o land.map", 2, "land.map|place of the map"},
    {"render land.mdf --map land.mdf", 1, "land.mdf|data file"},
    {"render folder", 1, "folder"},
    {"render empty.mdf", 1, "empty.mdf|empty"},
    {"render junk.mdf", 1, "junk.mdf"},
    {"render land.map", 1, "land.map"},
    {"render long.mdf", 1, "long.mdf|line 13"},
    {"render stray.mdf", 1, "nowhere"},
    {"render land.mdf --map junk.map", 1, "junk.map"},
    {"render land.mdf --map junk.mpc", 1, "junk.mpc"},
    {"render land.mdf --map torn.mpc", 1, "torn.mpc|early"},
    {"render land.mdf --map bad.map", 1, "bad.map|line 22"},
    {"render land.mdf -o nowhere/page.gif", 1, "nowhere/page.gif"},
    {"render land.mdf -o nowhere/page.gif --html page.html --report page.json", 1, "page.gif"},
    {"locate land.mdf 0,0", 1, "0,0"},
    {"info empty.map", 1, "empty.map|empty"},
    {"info junk.mpc", 1, "junk.mpc"},
    {"compile junk.map", 1, "junk.map"},
    {"compile land.map -o nowhere/land.mpc", 1, "nowhere/land.mpc"},
    {"decompile junk.mpc -o other.map", 1, "junk.mpc"},
    {"decompile whole.mpc -o nowhere/land.map", 1, "nowhere/land.map"},
    {"convert stray.mdf -o other.mdf", 1, "nowhere"},
    {"convert land.mdf -o nowhere/land.mdf", 1, "nowhere/land.mdf"},
    {"tree land.map -o nowhere/areas.txt --base-url x", 1, "nowhere/areas.txt"},
};
INSTANTIATE_TEST_SUITE_P(Files, CliRefusal, testing::ValuesIn(kFiles));

TEST_F(Cli, RefusesWhatItMayNotReadOrReplace) {
  if (::geteuid() == 0) GTEST_SKIP() << "nothing is forbidden to root";
  namespace fs = std::filesystem;
  fs::permissions(folder.Path("land.mdf"), fs::perms::none);
  const RunResult unreadable = Call("render land.mdf");
  EXPECT_EQ(unreadable.status, 1);
  EXPECT_NE(unreadable.err.find("land.mdf"), std::string::npos);

  fs::permissions(folder.Path("land.mdf"), fs::perms::owner_all);
  folder.Write("page.gif", "old");
  fs::permissions(folder.Path(""), fs::perms::owner_read | fs::perms::owner_exec);
  EXPECT_EQ(Call("render land.mdf -o page.gif").status, 1);
  fs::permissions(folder.Path(""), fs::perms::owner_all);
  EXPECT_EQ(folder.Read("page.gif"), "old");
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
               "Region\tArea Name\tRate\n1\t~\t(5)\n2\tFar\t7\n");
  const std::vector<std::string> told{
      "odd.map:11: area 1, x: \"9,5\" is read as 9",
      "odd.mdf:11: area 1, column 1 (Rate): \"(5)\" is no number and is read as 0",
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

  // A page tells the first few, and its report keeps all counts when nothing is to be printed.
  const RunResult page = Call("render odd.mdf -o page.gif");
  EXPECT_EQ(page.status, 0);
  EXPECT_NE(page.err.find("vexel: " + told[1]), std::string::npos) << page.err;
  const Json report = Report("odd.mdf");
  EXPECT_EQ(report["remarks"]["count"], 2);
  EXPECT_EQ(report["remarks"]["first"][1], told[1]);
  EXPECT_EQ(report["rowsWithoutArea"][0]["key"], Json::array({2}));
  EXPECT_NE(report["notes"].size(), 0U);
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
  EXPECT_EQ(nothing.out, "");
  EXPECT_NE(nothing.err.find("vexel --help"), std::string::npos) << nothing.err;

  const RunResult help = Call("--help");
  EXPECT_EQ(help.status, 0);
  for (const std::string command : {"render", "locate", "info", "compile", "decompile", "convert",
                                    "check", "palettes", "tree"}) {
    EXPECT_NE(help.out.find("  " + command), std::string::npos) << command;
    const RunResult own = Call(command + " --help");
    EXPECT_EQ(own.status, 0) << command;
    EXPECT_EQ(own.err, "") << command;
    EXPECT_NE(own.out.find("Example:\n  vexel " + command), std::string::npos) << own.out;
    EXPECT_EQ(Call("help " + command).out, own.out);
  }
  const RunResult version = Call("--version");
  EXPECT_EQ(version.status, 0);
  EXPECT_TRUE(version.out.starts_with("vexel ")) << version.out;
}

}  // namespace
}  // namespace vexel::test
