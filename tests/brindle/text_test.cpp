#include "brindle/text.h"

#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <limits>
#include <random>

namespace vexel::test {
namespace {

constexpr double kMax = std::numeric_limits<double>::max();

TEST(NumberText, IsTheRoundedDecimalInGroups) {
  struct Case {
    double value;
    unsigned decimals;
    char thousand, decimal;
    const char* text;
  };
  for (const Case& c :
       {Case{1234567.891, 2, ',', '.', "1,234,567.89"}, Case{999.5, 0, ',', '.', "1,000"},
        Case{-1234.5, 1, '.', ',', "-1.234,5"}, Case{-0.04, 1, ',', '.', "0.0"},
        Case{0.125, 2, ',', '.', "0.12"}, Case{2.675, 2, ',', '.', "2.67"},
        Case{100000, 0, 0, '.', "100000"}, Case{12, 3, ' ', 0, "12000"},
        Case{-999, 0, ',', '.', "-999"}, Case{std::nan(""), 2, ',', '.', "nan"},
        Case{-HUGE_VAL, 2, ',', '.', "-inf"}, Case{HUGE_VAL, 2, ',', '.', "inf"},
        Case{1e22, 0, ',', '.', "10,000,000,000,000,000,000,000"}}) {
    EXPECT_STREQ(d2txt(c.value, c.decimals, c.thousand, c.decimal, 1), c.text);
  }
  EXPECT_EQ(std::string(d2txt(kMax, 0, 0, '.', 1)).size(), 309U);
  EXPECT_EQ(std::string(d2txt(1, 1'000'000, 0, '.', 1)).size(), 1076U);
  EXPECT_EQ(std::string(d2txt(-kMax, 1'000'000, ',', '.', 1)).size(), 1 + 309 + 102 + 1 + 1074U);
}

TEST(NumberText, ReadsTheLongestNumberAndNothingElse) {
  struct Case {
    const char* text;
    double value;
  };
  for (const Case& c : {Case{" 12.5x", 12.5},
                        Case{"+3", 3},
                        Case{"-.5", -0.5},
                        Case{"5.", 5},
                        Case{"1e3", 1000},
                        Case{"inf", 0},
                        Case{"-nan", 0},
                        Case{"0x10", 0},
                        Case{"", 0},
                        Case{"-", 0},
                        Case{".", 0},
                        Case{"1e999", kMax},
                        Case{"-1e999", -kMax},
                        Case{"1e-999", 0},
                        Case{"4.9e-324", 4.9e-324},
                        Case{"123456789012345678", 123456789012345678.0},
                        Case{"1.2.3", 1.2},
                        Case{"+-3", 0},
                        Case{"12e99999999999999999999", kMax},
                        Case{"0.1e-99999999999999999999", 0},
                        Case{"0.00000000000000000001e400", kMax}}) {
    EXPECT_EQ(atod(c.text, 0), c.value) << c.text;
  }
  EXPECT_EQ(atod((std::string(400, '9') + "e-10").c_str(), 0), kMax);
  EXPECT_EQ(atod(("0." + std::string(400, '0') + "1").c_str(), 0), 0.0);
}

TEST(NumberText, HonoursTheSeparatorsOfAFile) {
  EXPECT_EQ(txt2d("1.234,5", '.', ','), 1234.5);
  EXPECT_EQ(txt2d("1 234.5", ' ', '.'), 1234.5);
  EXPECT_EQ(txt2d("12.5", ' ', ','), 12);
  EXPECT_EQ(txt2d("-1,000", ',', '.'), -1000);
  EXPECT_EQ(txt2d((std::string(400, '0') + "1.234,5").c_str(), '.', ','), 1234.5);
  EXPECT_LT(txt2d("1e999", ',', '.'), kMax);
  EXPECT_GT(txt2d("-1.7976931348623157e308", ',', '.'), std::numeric_limits<double>::lowest());
}

// What d2txt writes txt2d reads, and the short road gives what the general parser gives.
TEST(NumberText, SurvivesTheRoundAndEveryRoadAgrees) {
  std::mt19937_64 random(17);
  for (int i = 0; i < 20000; ++i) {
    const double value =
        static_cast<double>(static_cast<std::int64_t>(random() % 2000001) - 1000000) / 1000;
    EXPECT_EQ(txt2d(d2txt(value, 3, '.', ',', 1), '.', ','), value);
    std::string text = random() % 2 == 0 ? "-" : "";
    const std::size_t digits = 1 + random() % 18;
    const std::size_t point = random() % 20;
    for (std::size_t k = 0; k < digits; ++k) {
      if (k == point) text += '.';
      text += static_cast<char>('0' + random() % 10);
    }
    double expected = 0;
    std::from_chars(text.data(), text.data() + text.size(), expected);
    EXPECT_EQ(atod(text.c_str(), 0), expected) << text;
  }
}

TEST(Utf8, IsWhatHasNoHalfCharacters) {
  for (const char* text : {"", "Do\u00F1a \u5317 \U0001F600"}) EXPECT_TRUE(IsUtf8(text)) << text;
  for (const char* text : {"\xF1", "\xED\xA0\x80", "\xC0\xAF", "\xF4\x90\x80\x80", "\xE5\x8C"}) {
    EXPECT_FALSE(IsUtf8(text)) << text;
  }
}

TEST(Tokens, SkipRunsOfDelimiters) {
  CVELAString text = ", 1, 2 ,,3 ";
  for (const char* token : {"1", "2", "3", "", ""})
    EXPECT_EQ(text.GetToken(" ,", nullptr, 0), token);
  char buffer[] = "  12.5   7 x";
  EXPECT_STREQ(strtoken(buffer, " ", nullptr), "12.5");
  for (const char* token : {"7", "x", "", ""}) EXPECT_STREQ(strtoken(nullptr, " ", nullptr), token);
  char blank[] = " ";
  EXPECT_STREQ(strtoken(blank, " ", nullptr), "");
}

TEST(WholeNumbers, TakeASignAndDigits) {
  for (const char* text : {"0", "-12", "+7", "0099"}) EXPECT_NE(CVELAString(text).IsNumeric(), 0);
  for (const char* text : {"", "-", "1.5", "1 ", "x", "--1"}) {
    EXPECT_EQ(CVELAString(text).IsNumeric(), 0) << text;
  }
  EXPECT_EQ(CVELAString(" -12x").Val(), -12);
  EXPECT_EQ(CVELAString("none").Val(), 0);
  EXPECT_EQ(CVELAString("-99999999999999999999").Val(), std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(CVELAString("+99999999999999999999").Val(), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(CVELAString("+-1").Val(), 0);
  EXPECT_EQ(CVELAString("ABC").CompareNoCase("abc"), 0);
  EXPECT_LT(CVELAString("ab").CompareNoCase("B"), 0);
}

}  // namespace
}  // namespace vexel::test
