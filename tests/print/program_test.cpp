// The program as its users meet it: texts, standard input, what is not there, and full disks.

#include <filesystem>

#include "print_fixture.h"

namespace vexel::test {
namespace {

// Squares in a row, named, with a value each.
void WriteNames(const TempDir& folder, const std::vector<std::string>& names) {
  std::string map =
      "[Map]\nVersion=Ortex 3.2\nMapName=Names\nLongLat=No\n\n[AreaLevels]\nName=Place\n\n";
  std::string rows;
  for (std::size_t i = 0; i < names.size(); ++i) {
    const std::string key = std::to_string(i + 1);
    const std::string left = std::to_string(100 * i);
    const std::string right = std::to_string(100 * i + 100);
    map += "[GeoUnit]\nName=" + names[i] + "\nAreaStructure=" + key + "\n\n[Polygon]\n" + left +
           " 0\n" + right + " 0\n" + right + " 60\n" + left + " 60\n\n";
    rows += key + "\t~\t" + key + "\n";
  }
  folder.Write("names.map", map);
  folder.Write("names.mdf",
               "[MapDataFile]\nVersion=Ortex 3.2\nMapFile=names\nAreaLevels=1\nVariables=1\n"
               "Thousands=Comma\nDecimal=Dot\nNoValue=N/A\nMapLabel=~\n\n[Data]\n"
               "Place\tArea Name\tBirths\n" +
                   rows);
}

TEST_F(Print, TextsOfAllScriptsAreFoundInPdf) {
  const std::vector<std::string> names{"Αθήνα", "Самара", "北京", "Łódź", "R&D <b> \"q\"", "Zoë"};
  WriteNames(folder, names);
  Draw("names.mdf --level 1 --size 1600x600 --label all --note fine<print> --groups 2", "page.pdf");
  const std::string text = Tool("pdftotext -layout page.pdf -");
  for (const std::string& name : names) EXPECT_NE(text.find(name), text.npos) << name << text;
  for (const char* part : {"Births", "fine<print>", "1 to 3", "4 to 6"}) {
    EXPECT_NE(text.find(part), text.npos) << part << text;
  }
}

TEST_F(Print, BrokenNamesMakeNoBrokenPage) {
  WriteNames(folder, {"\xFF\xFE", "a\x01z", "عربي", "(/Type /Page >> endobj", "\xF0\x9F\x98\x80"});
  const std::string arguments = "names.mdf --level 1 --size 1200x400 --label all";
  for (const char* title : {"", " --title <</Type"}) {
    EXPECT_EQ(ReadPng(Draw(arguments + title, "page.png")).width, 1200);
    EXPECT_EQ(RasterizePdf(Draw(arguments + title, "page.pdf")).width, 1200);
  }
}

TEST_F(Print, SameBytesEachTime) {
  for (const std::string medium : {"png", "pdf"}) {
    const std::string page = Draw(kCountyPage, "a." + medium);
    EXPECT_FALSE(page.empty());
    EXPECT_TRUE(page == Draw(kCountyPage, "b." + medium)) << medium;
  }
}

TEST_F(Print, ViewOnStandardInputIsHandedOn) {
  const std::string arguments = "land.mdf --level 2 --size 300x260 --box 1,1";
  const std::string page = Draw(arguments, "page.png");
  Call("render " + arguments + " -o page.svg --quiet --save-view view.json");
  const std::string view = folder.Read("view.json");
  RunOptions options;
  options.input = view;
  EXPECT_EQ(Call("render --view - --quiet -o other.png", options).status, 0);
  EXPECT_TRUE(folder.Read("other.png") == page);
  EXPECT_EQ(Call("render --view - --box 1,1 --quiet -o - --format png", options).out, page);
}

TEST_F(Print, IsACommandAndAProgram) {
  const std::string page = Draw(kCountyPage, "page.png");
  EXPECT_EQ(Call("print " + kCountyPage + " --quiet -o print.png").status, 0);
  EXPECT_TRUE(folder.Read("print.png") == page);
  EXPECT_EQ(Call("print --version").out.substr(0, 12), "vexel-print ");
  EXPECT_NE(Call("help print").out.find("Usage: vexel-print"), std::string::npos);
  // Of a name without an ending, it makes a picture of its own kind.
  EXPECT_EQ(Call("print land.mdf --quiet -o land").status, 0);
  EXPECT_GT(ReadPng(folder.Read("land")).width, 0);
}

TEST_F(Print, TellsWhatIsNotInstalled) {
  std::filesystem::copy_file(VEXEL_CLI, folder.Path("vexel"));
  RunOptions options;
  options.folder = folder.Path("");
  options.environment = {
      "PATH=", "LD_LIBRARY_PATH=" + std::filesystem::path(VEXEL_CLI).parent_path().string()};
  for (const std::string arguments :
       {"render land.mdf -o page.png", "print land.mdf -o page.png"}) {
    const RunResult done = RunProgram(folder.Path("vexel"), Cut(arguments, ' '), options);
    EXPECT_EQ(done.status, 3) << done.err;
    EXPECT_NE(done.err.find("vexel-print, which is not installed; it comes with the package"),
              std::string::npos)
        << done.err;
  }
  EXPECT_EQ(folder.Read("page.png"), "");
}

TEST_F(Print, RefusesWhatIsTooLarge) {
  for (const std::string size : {"--size 40000x10", "--size 10x9000 --scale 4",
                                 "--size 20000x20000", "--size 5000x5000 --scale 4"}) {
    const RunResult done = Call("render land.mdf -o page.png --quiet " + size);
    EXPECT_EQ(done.status, 2) << size;
    EXPECT_NE(done.err.find("--size "), std::string::npos) << done.err;
    EXPECT_NE(done.err.find("--scale "), std::string::npos) << done.err;
  }
  EXPECT_EQ(folder.Read("page.png"), "");
}

TEST_F(Print, FullDiskLeavesTheOldFile) {
  for (const std::string page : {"page.png", "page.pdf"}) {
    folder.Write(page, "old");
    RunOptions options;
    options.fileLimit = 1000;
    const RunResult done = Call("render land.mdf --quiet -o " + page, options);
    EXPECT_EQ(done.status, 1);
    EXPECT_NE(done.err.find(page + ": cannot be written"), std::string::npos) << done.err;
    EXPECT_EQ(folder.Read(page), "old");
  }
}

}  // namespace
}  // namespace vexel::test
