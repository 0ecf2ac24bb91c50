// Pages for publication, as the command line makes them.

#include "cli_fixture.h"

namespace vexel::test {
namespace {

class CliPublication : public Cli {};

TEST_F(CliPublication, TheNameOrTheFormatDecides) {
  ASSERT_EQ(Call("render land.mdf --level 2 -o page.svg --report page.json --quiet").status, 0);
  const std::string svg = folder.Read("page.svg");
  EXPECT_TRUE(svg.starts_with("<svg ")) << svg.substr(0, 100);
  EXPECT_EQ(CountOf(svg, "data-key="), 3U);
  const Json report = Json::parse(folder.Read("page.json"));
  EXPECT_EQ(report["areas"].size(), 3U);
  EXPECT_GT(report["page"]["map"][2], report["page"]["map"][0]);
  EXPECT_EQ(Call("render land.mdf --level 2 --quiet --format SVG -o -").out, svg);
  EXPECT_EQ(Call("render land.mdf --level 2 --quiet -o PAGE.SVG").status, 0);
  EXPECT_EQ(folder.Read("PAGE.SVG"), svg);
  EXPECT_EQ(Call("render land.mdf --level 2 --quiet --format svg").status, 0);
  EXPECT_EQ(folder.Read("land.svg"), svg);
}

TEST_F(CliPublication, RefusesWhatWouldNotBeTrue) {
  const std::pair<const char*, const char*> kCases[] = {
      {"-o page.jpg", "gif, svg, pdf, png"},
      {"-o page.svg --format gif", "--format svg"},
      {"--format sgv", "did you mean svg?"},
      {"-o page.pdf --html page.html", "--html"},
      {"-o page.svg --label Distrikt", "\"Distrikt\" is neither a key nor a level"},
      {"-o page.svg --line-width -1", "--line-width: \"-1\""},
      {"-o page.svg --background #fff,#000", "more than one colour"},
  };
  for (const auto& [options, told] : kCases) {
    const RunResult result = Call("render land.mdf --level 2 " + std::string(options));
    EXPECT_EQ(result.status, 2) << options;
    EXPECT_NE(result.err.find(told), std::string::npos) << result.err;
  }
}

TEST_F(CliPublication, SavesAndTellsWhatAGifCannotShow) {
  const std::string wishes =
      "--label District --label 2 --label-text both --title Births --note one&two "
      "--background none --line-color #123 --scale 1.5";
  ASSERT_EQ(Call("render land.mdf --level 2 -o a.svg --save-view a.json " + wishes).status, 0);
  EXPECT_EQ(Json::parse(folder.Read("a.json"))["label"], Json({"District", "2"}));
  ASSERT_EQ(Call("render --view a.json -o b.svg").status, 0);
  EXPECT_EQ(folder.Read("a.svg"), folder.Read("b.svg"));
  const RunResult gif = Call("render --view a.json -o b.gif");
  EXPECT_EQ(gif.status, 0);
  EXPECT_NE(gif.err.find("no place for --title, --note, --label,"), std::string::npos) << gif.err;
}

}  // namespace
}  // namespace vexel::test
