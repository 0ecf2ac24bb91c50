// Numbers in the cells of tables, however they are written.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "kit/tables/numbers.h"
#include "support/refusal.h"

namespace vexel::test {
namespace {

using namespace std::string_literals;

// A column of cells, each in quotes as they may hold anything.
Table ColumnOf(const std::vector<std::string>& cells, char separator = ',') {
  std::string text = "k"s + separator + "Rate\n";
  for (const std::string& cell : cells) text += "k"s + separator + "\"" + cell + "\"\n";
  return ParseTable(text, "t.csv", {Encoding::utf8, separator});
}

Variable ReadColumn(const Table& table, const NumberOptions& options = {}) {
  const int column = 1;
  return ReadVariable(table, column, FindNumberFormat(table, {&column, 1}, options));
}

std::string ValueOf(const std::string& cell, DecimalMark mark) {
  const Table table = ColumnOf({cell});
  return Refusal([&] {
           ReadColumn(table, {mark, {}});
         }).empty()
             ? ReadColumn(table, {mark, {}}).values.front()
             : "refused";
}

TEST(TableNumbers, ComeInOneForm) {
  constexpr struct {
    const char* cell;
    const char* point;
    const char* comma;
  } kCases[] = {
      {"2.50", "2.50", "refused"},
      {"2,50", "refused", "2.50"},
      {"1.234", "1.234", "1234"},
      {"1,234,567.80", "1234567.80", "refused"},
      {"1.234.567,8", "refused", "1234567.8"},
      {"0,123", "refused", "0.123"},
      {"1234,567", "refused", "1234.567"},
      {"12,34,567", "refused", "refused"},
      {"1,234 567", "refused", "refused"},
      {"1 234 567", "1234567", "1234567"},
      {"1\u00A0234", "1234", "1234"},
      {"1\u202F234\u202F567,5", "refused", "1234567.5"},
      {"1\u2009234", "1234", "1234"},
      {"1'234.5", "1234.5", "refused"},
      {"1\u2019"
       "234",
       "1234", "1234"},
      {"1 23", "refused", "refused"},
      {"1234 567", "refused", "refused"},
      {"-5", "-5", "-5"},
      {"\u2212 5", "-5", "-5"},
      {"+5", "5", "5"},
      {"-0.0", "0.0", "refused"},
      {"5-", "refused", "refused"},
      {"--5", "refused", "refused"},
      {"(5)", "-5", "-5"},
      {"-(5)", "refused", "refused"},
      {"(5", "refused", "refused"},
      {"($1,200)", "-1200", "-1.200"},
      {"-$5", "-5", "-5"},
      {"5 \u20AC", "5", "5"},
      {"eur 5", "5", "5"},
      {"5 z\u0142", "5", "5"},
      {"5 kr.", "5", "5"},
      {"$5$", "refused", "refused"},
      {"5 %", "5", "5"},
      {"(5)%", "-5", "-5"},
      {"%", "refused", "refused"},
      {"007", "7", "7"},
      {".5", "0.5", "refused"},
      {"5.", "refused", "refused"},
      {"1.5e3", "1500", "refused"},
      {"1.2345E+2", "123.45", "refused"},
      {"12e-4", "0.0012", "0.0012"},
      {"1,000e3", "refused", "1000"},
      {"1e401", "refused", "refused"},
      {"1e", "refused", "refused"},
      {"1e+-5", "refused", "refused"},
      {"12.3*", "refused", "refused"},
      {"0x10", "refused", "refused"},
      {"\u0661", "refused", "refused"},
  };
  for (const auto& [cell, point, comma] : kCases) {
    EXPECT_EQ(ValueOf(cell, DecimalMark::point), point) << cell;
    EXPECT_EQ(ValueOf(cell, DecimalMark::comma), comma) << cell;
  }
}

TEST(TableNumbers, KnowTheWordsForMissingValues) {
  for (const char* word : {"", " ", "NA", "n/A", "NaN", "NULL", "None", "-", "\u2013", "\u2014",
                           ".", "..", "...", ":", "#N/A", "#DIV/0!", "X", "\u2212"}) {
    const Variable variable = ReadColumn(ColumnOf({word, "2.5"}));
    EXPECT_EQ(variable.missing, 1) << word;
    EXPECT_EQ(variable.values, (std::vector{""s, "2.5"s})) << word;
    EXPECT_EQ(variable.decimals, 1) << word;
  }
  const Table table = ColumnOf({"secret", "-999", "5"});
  EXPECT_EQ(ReadColumn(table, {{}, {"Secret", "-999"}}).values, (std::vector{""s, ""s, "5"s}));
}

TEST(TableNumbers, FindTheDecimalMark) {
  const struct {
    std::vector<std::string> cells;
    char separator;
    std::vector<std::string> values;
    const char* note;
  } kCases[] = {
      {{"1.234", "0.5"}, ';', {"1.234", "0.5"}, ""},
      {{"1.234", "1,5"}, ',', {"1234", "1.5"}, ""},
      {{"1,234", "1,234,567"}, ';', {"1234", "1234567"}, ""},
      {{"7", "1.234"},
       ',',
       {"7", "1.234"},
       "row 3, column \"Rate\": \"1.234\" is read as 1.234, "
       "with a decimal point, a guess; --decimal decides"},
      {{"1.234"},
       ';',
       {"1234"},
       "row 2, column \"Rate\": \"1.234\" is read as 1234, with a decimal "
       "comma, a guess; --decimal decides"},
      {{"7", "1 000", "NA"}, ',', {"7", "1000", ""}, ""},
  };
  for (const auto& [cells, separator, values, note] : kCases) {
    const Table table = ColumnOf(cells, separator);
    const int column = 1;
    const NumberFormat format = FindNumberFormat(table, {&column, 1});
    EXPECT_EQ(ReadVariable(table, column, format).values, values) << cells.front();
    EXPECT_EQ(format.notes,
              *note == '\0' ? std::vector<std::string>{} : std::vector{std::string(note)});
  }
  EXPECT_EQ(Refusal([] {
              ReadColumn(ColumnOf({"1,5", "x", "2.5"}));
            }),
            "t.csv: row 2, column \"Rate\": \"1,5\" has a decimal comma, but row 4, column "
            "\"Rate\": \"2.5\" a decimal point; write all numbers alike, or give --decimal");
}

TEST(TableNumbers, AreRefusedWithTheFix) {
  const struct {
    std::vector<std::string> cells;
    const char* end;
  } kCases[] = {
      {{"1", "12.3*", "x", "2 r", "3(a)"},
       "row 3, column \"Rate\": \"12.3*\" is no number (and 2 more in the column); remove the mark "
       "beside the number"},
      {{"1.5\u00B9"}, "\"1.5\u00B9\" is no number; remove the mark beside the number"},
      {{"5 (p) *"}, "remove the mark beside the number"},
      {{"5-"}, "put the minus in front"},
      {{"many"}, "add it with --missing, or leave the column out"},
      {{"2010-11"}, "add it with --missing, or leave the column out"},
      {{"a\nb\x1B[1m"}, "\"a?b?[1m\" is no number; add it with --missing, or leave the column out"},
      {{std::string(39, 'a') + "\u00E9" + std::string(60, 'a')},
       "aaa\u2026\" is no number; add it with --missing, or leave the column out"},
  };
  for (const auto& [cells, end] : kCases) {
    const std::string refusal = Refusal([&c = cells] { ReadColumn(ColumnOf(c)); });
    EXPECT_TRUE(refusal.starts_with("t.csv: row ") && refusal.ends_with(end)) << refusal;
  }
  const Table table = ColumnOf({"1,5"});
  EXPECT_NE(Refusal([&] {
              ReadColumn(table, {DecimalMark::point, {}});
            }).find("it is one with a decimal comma"),
            std::string::npos);
}

TEST(TableNumbers, TellOfPercentAndCurrenciesInSomeCells) {
  EXPECT_EQ(ReadColumn(ColumnOf({"5%", "6 %", "x"})).notes, std::vector<std::string>{});
  const Variable mixed = ReadColumn(ColumnOf({"5%", "6", "\u20AC 7", "$8"}));
  EXPECT_EQ(mixed.percents, 1);
  EXPECT_EQ(mixed.notes,
            (std::vector{"column \"Rate\": 1 of 4 values have a %, which changes none of them"s,
                         "row 5, column \"Rate\": \"$8\" has another currency than the cells above "
                         "it, in \u20AC"s}));
}

TEST(TableNumbers, AreToldFromNames) {
  EXPECT_TRUE(LooksLikeNumbers(ColumnOf({"1,5", "2.5*", "x", "3"}), 1));
  EXPECT_FALSE(LooksLikeNumbers(ColumnOf({"Ain", "2", "Var"}), 1));
  EXPECT_FALSE(LooksLikeNumbers(ColumnOf({"x", "-"}), 1));
  EXPECT_FALSE(LooksLikeNumbers(ColumnOf({"x", "-9"}), 1, {{}, {"-9"}}));
}

}  // namespace
}  // namespace vexel::test
