// Pages as PNG and PDF against what others make of the SVG and the PDF.

#include "print_fixture.h"

namespace vexel::test {
namespace {

struct Page {
  const char* name;
  std::string arguments;
};

const Page kPages[] = {
    {"Counties", kCountyPage},
    {"StatesWithLabels", kSample + ".mdf --level 1 --var 4 --label State --outline 6 --box 48"},
    {"Missing", "land.mdf --level 2 --size 300x260 --outline 1,2"},
    {"OnDark", kSample + ".mdf --level 1 --var 4 --size 320x240 --background #202020"},
    {"WideLines",
     kSample + ".mdf --level 1 --var 4 --size 400x300 --line-width 3 --line-color #fff"},
};

class Pictures : public Print, public testing::WithParamInterface<Page> {};

// Letters and hairlines come out a little different.
bool AreAlike(const Distance& distance) { return distance.mean < 2.0 && distance.farOff < 0.015; }

TEST_P(Pictures, PngIsThePageOfTheSvg) {
  const Picture png = ReadPng(Draw(GetParam().arguments, "page.png"));
  const Distance distance = DistanceOf(png, RasterizeSvg(Draw(GetParam().arguments, "page.svg")));
  EXPECT_TRUE(AreAlike(distance)) << distance.mean << ' ' << distance.farOff;
}

TEST_P(Pictures, PdfIsThePageOfThePng) {
  const Picture png = ReadPng(Draw(GetParam().arguments, "page.png"));
  const Distance distance = DistanceOf(png, RasterizePdf(Draw(GetParam().arguments, "page.pdf")));
  EXPECT_TRUE(AreAlike(distance)) << distance.mean << ' ' << distance.farOff;
}

TEST_P(Pictures, TwiceAsManyPixelsShowTheSame) {
  const Picture png = ReadPng(Draw(GetParam().arguments, "page.png"));
  const Picture large = ReadPng(Draw(GetParam().arguments + " --scale 2", "page2.png"));
  ASSERT_EQ(large.width, 2 * png.width);
  ASSERT_EQ(large.height, 2 * png.height);
  const Distance distance = DistanceOf(png, Shrunk(large, 2));
  EXPECT_TRUE(AreAlike(distance)) << distance.mean << ' ' << distance.farOff;
}

INSTANTIATE_TEST_SUITE_P(Pages, Pictures, testing::ValuesIn(kPages),
                         [](const auto& tested) { return tested.param.name; });

// The text with each part that begins so, up to the first `end` after it, replaced.
std::string Replaced(std::string text, const std::string& begin, const std::string& end,
                     const std::string& by) {
  std::size_t at = text.find(begin);
  EXPECT_NE(at, text.npos) << begin;
  for (; at != text.npos; at = text.find(begin, at + by.size())) {
    text.replace(at, text.find(end, at) + end.size() - at, by);
  }
  return text;
}

// What the comparison is there to notice.
TEST_F(Print, FaultsAreNotAlike) {
  const std::string svg = Draw(kCountyPage, "page.svg");
  const Picture png = ReadPng(Draw(kCountyPage, "page.png"));
  const auto distanceTo = [&](const std::string& begin, const std::string& end,
                              const std::string& by, int rows) {
    const auto lastRows = [=](Picture picture) {
      picture.bytes.erase(picture.bytes.begin(), picture.bytes.end() - 800 * rows * 4);
      picture.height = rows;
      return picture;
    };
    return DistanceOf(lastRows(png), lastRows(RasterizeSvg(Replaced(svg, begin, end, by))));
  };
  EXPECT_FALSE(AreAlike(distanceTo("scale(", ")", "translate(2 1) scale(.1)", 600)));
  EXPECT_FALSE(AreAlike(distanceTo("<path class=\"line-above\"", ">", "", 600)));
  EXPECT_FALSE(AreAlike(distanceTo(".c1{fill:", "}", ".c1{fill:#fff}", 600)));
  EXPECT_FALSE(AreAlike(distanceTo("class=\"areas\"", " ", "display=\"none\" ", 600)));
  // A legend is small: it is seen where it stands.
  constexpr int kLegendRows = 80;
  EXPECT_TRUE(AreAlike(distanceTo("<title", ">", "<title>", kLegendRows)));
  EXPECT_FALSE(AreAlike(distanceTo("<rect class=\"c", ">", "", kLegendRows)));
  EXPECT_FALSE(AreAlike(distanceTo("<text class=\"legend\"", "</text>", "", kLegendRows)));
}

TEST_F(Print, PagesWithoutBackgroundAreSeenThrough) {
  const Picture png =
      ReadPng(Draw("land.mdf --level 2 --size 300x260 --background none --no-title", "page.png"));
  const Picture white = ReadPng(Draw("land.mdf --level 2 --size 300x260 --no-title", "w.png"));
  ASSERT_EQ(png.bytes.size(), white.bytes.size());
  EXPECT_EQ(png.At(0, 0, 3), 0);
  std::size_t opaque = 0;
  for (std::size_t i = 0; i < png.bytes.size(); i += 4) {
    const int alpha = png.bytes[i + 3];
    opaque += alpha == 255 ? 1 : 0;
    for (std::size_t part = i; part < i + 3; ++part) {
      const double onWhite = 255.0 + (png.bytes[part] - 255.0) * alpha / 255.0;
      ASSERT_NEAR(onWhite, white.bytes[part], 2.0) << i / 4;
    }
  }
  EXPECT_GT(opaque, png.bytes.size() / 4 / 4);
}

}  // namespace
}  // namespace vexel::test
