// The forms of maps and data files, and standard input and output.

#include <filesystem>

#include "cli_fixture.h"

namespace vexel::test {
namespace {

namespace fs = std::filesystem;

TEST_F(Cli, DecompilesToTheTextThatWasCompiled) {
  fs::copy(kSample + ".map", folder.Path("sample.map"));
  for (const std::string map : {"land", "sample"}) {
    ASSERT_EQ(Call("compile " + map + ".map").status, 0);
    ASSERT_EQ(Call("decompile " + map + ".mpc -o again.map").status, 0);
    EXPECT_TRUE(folder.Read("again.map") == folder.Read(map + ".map")) << map;
    EXPECT_EQ(Call("decompile " + map + ".mpc -o -").out == folder.Read("again.map"), true) << map;
  }
}

TEST_F(Cli, ConvertsToWhatConvertsToItself) {
  ASSERT_EQ(Call("convert land.mdf -o once.mdf").status, 0);
  ASSERT_EQ(Call("convert once.mdf -o twice.mdf").status, 0);
  EXPECT_EQ(folder.Read("twice.mdf"), folder.Read("once.mdf"));
  EXPECT_EQ(Call("convert land.mdf -o -").out, folder.Read("once.mdf"));
  EXPECT_EQ(Report("once.mdf --level 2")["areas"], Report("land.mdf --level 2")["areas"]);
}

TEST_F(Cli, WritesPictureToStandardOutput) {
  ASSERT_EQ(Call("render land.mdf --level 2").status, 0);
  const std::vector<std::string> before = folder.List();
  const RunResult done = Call("render land.mdf --level 2 -o -");
  EXPECT_EQ(done.status, 0) << done.err;
  EXPECT_TRUE(done.out.starts_with("GIF87a")) << done.out.substr(0, 6);
  EXPECT_TRUE(done.out == folder.Read("land.gif"));
  EXPECT_EQ(folder.List(), before);
}

TEST_F(Cli, ReadsDataFromStandardInput) {
  const std::string data = folder.Read("land.mdf");
  fs::create_directory(folder.Path("maps"));
  fs::rename(folder.Path("land.map"), folder.Path("maps/land.map"));
  RunOptions options;
  options.input = data;
  const Json given = Report("- --map maps/land.map --level 2", options);
  EXPECT_EQ(given["areas"], Report("land.mdf --map maps/land.map --level 2")["areas"]);
  EXPECT_EQ(given["areas"][0]["value"], 10.0);
  EXPECT_EQ(Call("render - -o page.gif", options).status, 1) << "its map is not in the folder";
}

TEST_F(Cli, TellsWhatIsInAFile) {
  ASSERT_EQ(Call("compile land.map").status, 0);
  for (const char* file : {"land.map", "land.mpc"}) {
    const Json map = Json::parse(Call(std::string("info --json ") + file).out);
    EXPECT_EQ(map["name"], "Land") << file;
    EXPECT_EQ(map["areas"], 5) << file;
    EXPECT_EQ(map["polygons"], 6) << file;
    EXPECT_EQ(map["vertices"], 24) << file;
  }
  const Json data = Json::parse(Call("info --json land.mdf").out);
  EXPECT_EQ(data["rows"], 5);
  EXPECT_EQ(data["variables"][0]["missing"], 1);
  EXPECT_EQ(data["variables"][1]["name"], "Deaths");
  EXPECT_EQ(data["variables"][1]["decimals"], 1);
  EXPECT_NE(Call("info land.mdf").out.find("Births"), std::string::npos);
}

}  // namespace
}  // namespace vexel::test
