// The report, the web page and the located areas.

#include <gd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <map>
#include <regex>

#include "cli_fixture.h"

namespace vexel::test {
namespace {

TEST_F(Cli, TellsTheGroupsUnlessQuiet) {
  folder.Write("lost.mdf", DataFor("land", kLandRows + "8\t9\tAtlantis\t7\t7\n8\tX\t~\t1\t1\n"));
  const RunResult done = Call("render lost.mdf --level 2 --groups 2 -o page.gif");
  EXPECT_EQ(done.status, 0);
  EXPECT_EQ(done.out, "");
  for (const char* part : {"10", "50", "1 area", "8, 9 (Atlantis); 8\n"}) {
    EXPECT_NE(done.err.find(part), std::string::npos) << part << " in " << done.err;
  }
  EXPECT_EQ(Call("render lost.mdf --level 2 -o page.gif --quiet").err, "");
  const std::string named =
      Call("render land.mdf --level 2 -o page.gif --group-names \u00FC\u00FC\u00FC,bbb").err;
  const auto columnOfTo = [&](const std::string& name) {
    const std::size_t at = named.find("  " + name);
    return named.find(" to ", at) - at - name.size();
  };
  EXPECT_EQ(columnOfTo("\u00FC\u00FC\u00FC"), columnOfTo("bbb")) << named;
}

// How many area elements a page has for each key of two codes.
std::map<std::string, int> AreaLines(const std::string& html) {
  std::map<std::string, int> lines;
  const std::regex element(R"(<area [^>]*&A0=(\d+)&A1=(\d+)&)");
  for (std::sregex_iterator at(html.begin(), html.end(), element), end; at != end; ++at) {
    ++lines[(*at)[1].str() + ',' + (*at)[2].str()];
  }
  return lines;
}

TEST_F(Cli, WritesAPageWithEveryAreaAndPolygon) {
  for (const char* name : {"pictures", "pages"}) {
    std::filesystem::create_directory(folder.Path(name));
  }
  const RunResult done = RunProgram(VEXEL_CLI,
                                    {"render", "land.mdf", "--level", "2", "-o", "pictures/a b.gif",
                                     "--html", "pages/a.html", "--quiet"},
                                    {.folder = folder.Path("")});
  ASSERT_EQ(done.status, 0) << done.err;
  const std::string html = folder.Read("pages/a.html");
  EXPECT_EQ(AreaLines(html), (std::map<std::string, int>{{"1,1", 2}, {"1,2", 1}, {"2,1", 1}}));
  EXPECT_EQ(CountOf(html, "<area "), 4U);
  EXPECT_EQ(CountOf(html.substr(html.rfind("<tbody>")), "<tr"), 3U);
  EXPECT_NE(html.find("Tom &amp; &quot;Jerry&quot; &lt;b&gt;\u00FC"), std::string::npos);
  EXPECT_EQ(html.find("<b>\u00FC"), std::string::npos);
  EXPECT_NE(html.find("src=\"../pictures/a%20b.gif\""), std::string::npos);
  EXPECT_EQ(folder.List(), (std::vector<std::string>{"land.map", "land.mdf", "pages", "pictures"}));
}

// A page says that it is UTF-8, whatever the bytes of a name are.
TEST_F(Cli, WritesAPageOfCharactersOnly) {
  std::string map(kLandMap);
  map.replace(map.find("Bare"), 4, "Ca\xF1on \u5317");
  folder.Write("land.map", map);
  ASSERT_EQ(Call("render land.mdf --level 2 -o a.gif --html a.html --quiet").status, 0);
  const std::string html = folder.Read("a.html");
  EXPECT_EQ(html.find('\xF1'), std::string::npos);
  EXPECT_NE(html.find("<th scope=\"row\">Ca\uFFFDon \u5317</th>"), std::string::npos);
}

// Only the counties of the state on show are painted and have links.
TEST_F(Cli, ZoomedPageShowsTheAreaAlone) {
  const std::string sample = VEXEL_SAMPLES_DIR "/us-conus.mdf";
  ASSERT_EQ(Call("render " + sample + " --zoom 16 -o a.gif --html a.html").status, 0);
  EXPECT_EQ(CountOf(folder.Read("a.html"), "<area shape"), 44U);
}

TEST_F(Cli, ReportsNamesAsTheyAre) {
  const Json report = Report("land.mdf --level 2 --zoom 1");
  ASSERT_EQ(report["areas"].size(), 2U);
  EXPECT_EQ(report["areas"][0]["name"], "Tom & \"Jerry\" <b>\u00FC");
  EXPECT_EQ(
      report["areas"][1],
      Json::parse(
          R"({"key": [1, 2], "name": "Bare", "value": null, "text": "<no data>", "group": null,
          "color": "#FFFFFF"})"));
  const Json& group = report["legend"]["groups"][0];
  EXPECT_EQ(group["label"], "10 to 10");
  EXPECT_EQ(group["count"], 1);
  EXPECT_EQ(report["areas"][0]["color"], group["color"]);
  EXPECT_EQ(report["legend"]["missing"]["count"], 1);
  EXPECT_EQ(report["variable"]["name"], "Births");
  EXPECT_EQ(report["view"]["root"], Json::array({1}));
  EXPECT_EQ(report["map"]["levels"], (Json{"Region", "District"}));
  folder.Write("land.mdf", DataFor("land", "2\tX\t~\t12345\t1\n"));
  EXPECT_EQ(Report("land.mdf")["areas"][1]["text"], "12,345");
}

std::string ColorAt(gdImagePtr picture, int x, int y) {
  const int color = gdImageGetPixel(picture, x, y);
  std::array<char, 8> text{};
  std::snprintf(text.data(), text.size(), "#%02X%02X%02X",
                static_cast<unsigned>(gdImageRed(picture, color)) & 0xFFU,
                static_cast<unsigned>(gdImageGreen(picture, color)) & 0xFFU,
                static_cast<unsigned>(gdImageBlue(picture, color)) & 0xFFU);
  return text.data();
}

using Picture = std::unique_ptr<gdImage, void (*)(gdImagePtr)>;

Picture ReadPicture(std::string bytes) {
  return {gdImageCreateFromGifPtr(static_cast<int>(bytes.size()), bytes.data()), &gdImageDestroy};
}

// On a line the area that is painted last counts; a hole is no part of the area that fills it.
TEST_F(Cli, LocatesWhatLiesUppermost) {
  std::string map(kLandMap);
  map.insert(map.rfind("[EndGroup]"),
             "[Polygon]\nHole\n10 60\n30 60\n30 90\n10 90\n\n"
             "[Polygon]\nHole\n10 10\n30 10\n30 40\n10 40\n\n");
  folder.Write("land.map", map);
  const std::vector<int> box = Report("land.mdf --level 2")["page"]["map"];
  const Picture picture = ReadPicture(folder.Read("page.gif"));
  ASSERT_NE(picture, nullptr);
  const auto columnOf = [&](int x) { return box[0] + x * (box[2] - box[0]) / 100; };
  const auto rowOf = [&](int y) { return box[3] - y * (box[3] - box[1]) / 100; };
  const auto keyAt = [&](int column, int row, const std::string& options) {
    const RunResult done = Call("locate land.mdf --level 2 " + options + std::to_string(column) +
                                ',' + std::to_string(row));
    return done.out.substr(0, done.out.find('\t'));
  };
  int line = columnOf(37);
  while (line < columnOf(43) && ColorAt(picture.get(), line, rowOf(75)) != "#000000") ++line;
  EXPECT_EQ(keyAt(line - 1, rowOf(75), ""), "1,1");
  EXPECT_EQ(keyAt(line, rowOf(75), ""), "1,2");
  EXPECT_EQ(keyAt(line, rowOf(75), "--outline 1,1 "), "1,1");
  EXPECT_EQ(keyAt(line + 1, rowOf(75), "--outline 1,1 "), "1,2");
  EXPECT_EQ(keyAt(columnOf(20), rowOf(75), ""), "1,1");
  EXPECT_EQ(keyAt(columnOf(20), rowOf(25), ""), "");
  EXPECT_EQ(keyAt(columnOf(60), rowOf(25), ""), "2,1");
}

}  // namespace
}  // namespace vexel::test
