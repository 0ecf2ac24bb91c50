#include "kit/palettes/color.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace vexel::test {
namespace {

// The colours in one text, "#RRGGBB #RRGGBB".
std::string Text(const std::vector<std::uint32_t>& colors) {
  std::string text;
  for (const std::uint32_t color : colors) text += (text.empty() ? "" : " ") + ColorText(color);
  return text;
}

TEST(Colors, AreReadFromAList) {
  const std::vector<std::uint32_t> colors = ParseColors("#fa0,\t#31B2bd , #C00");
  EXPECT_EQ(colors, (std::vector<std::uint32_t>{0x00AAFF, 0xBDB231, 0x0000CC}));
  EXPECT_EQ(Text(colors), "#FFAA00 #31B2BD #CC0000");
}

TEST(Colors, ThatAreNoneAreNamed) {
  const auto message = [](std::string_view text) -> std::string {
    try {
      return "read as " + Text(ParseColors(text));
    } catch (const std::invalid_argument& error) {
      return error.what();
    }
  };
  for (const std::string bad :
       {"", "#", "#12", "#1234", "#12345", "#1234567", "#12345678", "123456", "red", "#ggg",
        "#12 456", "#-12", "#+12345", "#0x1", "##12"}) {
    const std::string refusal = '"' + bad + "\" is not a colour such as #c00 or #cc0000";
    EXPECT_EQ(message(bad), refusal);
    EXPECT_EQ(message("#fee, " + bad + " ,#c00"), refusal);
  }
  EXPECT_EQ(message("#fee,"), "\"\" is not a colour such as #c00 or #cc0000");
  EXPECT_EQ(message("#1,#2,#3,#4,#5,#6,#7,#8"), "8 colours are more than 7");
}

TEST(Colors, ComeBackFromLab) {
  for (std::uint32_t i = 0; i < 4096; ++i) {
    const std::uint32_t color = (i * 4099U) & 0xFFFFFFU;
    ASSERT_EQ(ColorOf(LabOf(LinearRgbOf(color))), color);
  }
  const Lab red = LabOf(LinearRgbOf(ColorFromRgb(0xFF0000)));
  EXPECT_NEAR(red.lightness, 53.24, 0.01);
  EXPECT_NEAR(red.a, 80.09, 0.01);
  EXPECT_NEAR(red.b, 67.20, 0.01);
  EXPECT_EQ(ColorOf({50.0, 500.0, 0.0}) & 0xFFFFU, 0x00FFU);
}

// White and black have contrasts of 4.61 and 4.56 on #757575, of 4.54 and 4.62 on #767676.
TEST(Colors, AreDarkWhereWhiteTextReadsBetter) {
  struct Case {
    std::uint32_t rgb;
    bool isDark;
  };
  for (const Case& c :
       {Case{0x000000, true}, Case{0xFFFFFF, false}, Case{0x757575, true}, Case{0x767676, false},
        Case{0x0000FF, true}, Case{0xFF0000, false}, Case{0x00FF00, false}, Case{0xCC0000, true}}) {
    EXPECT_EQ(IsDark(ColorFromRgb(c.rgb)), c.isDark) << std::hex << c.rgb;
  }
}

}  // namespace
}  // namespace vexel::test
