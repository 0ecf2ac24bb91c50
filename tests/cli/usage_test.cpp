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
    {"frobnicate", 2, "frobnicate|render, locate, info, compile, decompile, convert, tree"},
    {"render", 2, "DATA"},
    {"render land.mdf --pallete blue", 2, "--pallete|mean --palette"},
    {"render land.mdf --var", 2, "--var"},
    {"render land.mdf --palette pink", 2, "pink|spectrum, blue, green, red, yellow, grey"},
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
    {"locate land.mdf", 2, "missing"},
    {"locate land.mdf 5,y", 2, "400,300"},
    {"convert land.mdf", 2, "-o"},
    {"decompile land.map -o other.map", 2, "mpc"},
};
INSTANTIATE_TEST_SUITE_P(Usage, CliRefusal, testing::ValuesIn(kUsage));

const Refusal kFiles[] = {
    {"render none.mdf", 1, "none.mdf|No such file"},
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
  EXPECT_NE(done.err.find("odd.map: Error at line 22: Colour"), std::string::npos) << done.err;
}

TEST_F(Cli, HelpsOnEveryCommand) {
  const RunResult nothing = Call("");
  EXPECT_EQ(nothing.status, 2);
  EXPECT_EQ(nothing.out, "");
  EXPECT_NE(nothing.err.find("vexel --help"), std::string::npos) << nothing.err;

  const RunResult help = Call("--help");
  EXPECT_EQ(help.status, 0);
  for (const std::string command :
       {"render", "locate", "info", "compile", "decompile", "convert", "tree"}) {
    EXPECT_NE(help.out.find("  " + command), std::string::npos) << command;
    const RunResult own = Call(command + " --help");
    EXPECT_EQ(own.status, 0) << command;
    EXPECT_EQ(own.err, "") << command;
    EXPECT_NE(own.out.find("Example:\n  vexel " + command), std::string::npos) << own.out;
  }
  const RunResult version = Call("--version");
  EXPECT_EQ(version.status, 0);
  EXPECT_TRUE(version.out.starts_with("vexel ")) << version.out;
}

}  // namespace
}  // namespace vexel::test
