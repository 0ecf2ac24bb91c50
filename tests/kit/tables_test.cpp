// Tables of statistics: what is read from the bytes of a file, and what is said of it.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "kit/request/error.h"
#include "kit/tables/csv_text.h"
#include "kit/tables/table.h"
#include "support/files.h"
#include "support/refusal.h"

namespace vexel::test {
namespace {

using namespace std::string_literals;

// Everything in one text, with "|" between cells and "/" between rows.
std::string Shown(const Table& table) {
  std::string shown;
  for (int column = 0; column < table.ColumnCount(); ++column) {
    shown += (column == 0 ? "" : "|") + table.Heading(column);
  }
  for (int row = 0; row < table.RowCount(); ++row) {
    for (int column = 0; column < table.ColumnCount(); ++column) {
      shown += (column == 0 ? "/" : "|") + std::string(table.Cell(row, column));
    }
  }
  return shown;
}

std::string RefusalOf(const std::string& bytes, const TableOptions& options = {}) {
  return Refusal([&] { ParseTable(bytes, "t.csv", options); });
}

TEST(Tables, TakeWhatOccurs) {
  const struct {
    std::string bytes;
    std::string shown;
  } kCases[] = {
      {"a,b\n1,2\n3,4", "a|b/1|2/3|4"},
      {"a;b\r\n1;2\r\n", "a|b/1|2"},
      {"a\tb\r1\t2\r", "a|b/1|2"},
      {"a|b\n1|2\n", "a|b/1|2"},
      {"\xEF\xBB\xBF\"a\",b\n1,2\n", "a|b/1|2"},
      {"sep=;\r\na,b;c\r\n1;2\r\n", "a,b|c/1|2"},
      {"SEP=|\na,b|c\n1|2\n", "a,b|c/1|2"},
      {"sep=,x\n1,2\n", "sep=|x/1|2"},
      {"Name;2009, pct\nA;1,5\nB;2,5\n", "Name|2009, pct/A|1,5/B|2,5"},
      {"id,name,a;b\n1,x,p;q\n", "id|name|a;b/1|x|p;q"},
      {"a,b\n\"x;y;z\",1\n\"u;v\",2\n", "a|b/x;y;z|1/u;v|2"},
      {"a,b\n\"1\"\"2\",\"x\r\ny\"\n", "a|b/1\"2|x\r\ny"},
      {"a,b\n5\" pipe,\"x\"y \n", "a|b/5\" pipe|xy"},
      {"a,b\n  1 ,\" 2 \" \n\xC2\xA0"
       "3\xE2\x80\xAF,4\n",
       "a|b/1| 2 /3|4"},
      {"a\tb\tc\n\t\t1\n \t2\t\n", "a|b|c/||1/|2|"},
      {"\n,,\na,b\n\n , \n1,2\n", "a|b/1|2"},
      {"a,b,c\n1\n1,2,3,,\n", "a|b|c/1||/1|2|3"},
      {"a,,b,\n1,,2,\n,,3,4\n", "a|b|column 4/1|2|/|3|4"},
      {"\"a\r\nb\n\",c\n1,2\n", "a b|c/1|2"},
      {"a\n1\n", "a/1"},
      {"a,b\n\"\",x\n\"\",\"\"\n", "a|b/|x"},
  };
  for (const auto& [bytes, shown] : kCases) {
    const auto read = [&, bytes = bytes, shown = shown] {
      EXPECT_EQ(Shown(ParseTable(bytes, "t.csv")), shown);
    };
    EXPECT_EQ(Refusal(read), "") << bytes;
  }
}

TEST(Tables, AreReadAsTheUserDecides) {
  EXPECT_EQ(Shown(ParseTable("sep=;\na;b,c\n1;2,3\n", "t", {{}, ','})), "a;b|c/1;2|3");
  EXPECT_EQ(Shown(ParseTable("a b\n1 2\n", "t", {{}, ' '})), "a|b/1|2");
  EXPECT_EQ(Shown(ParseTable("\xC3\xA9\n1\n", "t", {Encoding::latin1, {}})), "\u00C3\u00A9/1");
}

TEST(Tables, AreRefusedWithTheRowAndTheFix) {
  const struct {
    std::string bytes;
    std::string refusal;
  } kCases[] = {
      {"", "t.csv: the file is empty"},
      {" \n,\n", "t.csv: nothing but blanks stands in it"},
      {"a,b\n\n,\n", "t.csv: has a heading, but no rows under it"},
      {"a,b\n\"x\ny\",2\n\n1,2,,3\n",
       "t.csv: row 4 has 4 cells, the heading 2; put a cell that holds a \",\" in quotes, and "
       "remove what stands above the heading"},
      {"a,b\n1,2\n3,\"4\n5,6\n",
       "t.csv: row 3 begins a cell with a quote that nothing closes; close or remove it"},
      {"a,b\n1,2\0\n"s,
       "t.csv: line 2 holds a zero byte, which no text has; save the table as CSV in UTF-8"},
      {"\xFF\xFE"
       "a",
       "t.csv: is no utf-16le"},
      {"\xFF\xFE\x00\xD8"
       "a\0"s,
       "t.csv: is no utf-16le"},
      {"PK\x03\x04",
       "t.csv: is a spreadsheet or another zip file, no table; save the sheet as "
       "CSV in UTF-8"},
  };
  for (const auto& [bytes, refusal] : kCases) EXPECT_EQ(RefusalOf(bytes), refusal);
  for (const char* looks : {"{\"type\": 1}", "<html>,", "\x1F\x8B", "[MapDataFile]\n"}) {
    EXPECT_NE(RefusalOf(looks).find("t.csv: is "), std::string::npos) << looks;
  }
  EXPECT_NE(RefusalOf(std::string(16384, ',') + "a\n1\n").find("row 1 has 16385 cells"),
            std::string::npos);
  EXPECT_NE(RefusalOf("a,b\n1,\xFC\n", {Encoding::utf8, {}}).find("t.csv: line 2 is no utf-8"),
            std::string::npos);
  EXPECT_NE(RefusalOf("\xEF\xBB\xBF"
                      "a\n1\n",
                      {Encoding::latin1, {}})
                .find("byte order mark of utf-8"),
            std::string::npos);
  EXPECT_NE(RefusalOf("a\n1\n", {{}, '"'}), "");
}

TEST(Tables, NumberRowsAsASpreadsheetDoes) {
  const Table table = ParseTable("\"a\n\n\",b\n1,\"x\r\ny\"\r\n2,\n\n,\n3,\n4,\n\n5,", "t.csv");
  std::vector<int> numbers;
  for (int row = 0; row < table.RowCount(); ++row) numbers.push_back(table.RowNumber(row));
  EXPECT_EQ(numbers, (std::vector{2, 3, 6, 7, 9}));
}

TEST(Tables, FindColumnsByHeading) {
  const Table table = ParseTable("Rate,rate,Jobs,Jobs,jobs,A#2\n1,2,3,4,5,6\n", "t.csv");
  const auto found = [&](const char* name) { return table.FindColumn(name); };
  EXPECT_EQ(found("rate"), 1);
  EXPECT_EQ(found("Jobs#2"), 3);
  EXPECT_EQ(found("jobs"), 4);
  EXPECT_EQ(found("a#2"), 5);
  const struct {
    const char* name;
    const char* refusal;
  } kCases[] = {
      {"Jobs", "t.csv: 2 columns are called \"Jobs\"; take \"Jobs#1\" or another number"},
      {"RATE", "t.csv: 2 columns are called \"RATE\"; take \"RATE#1\" or another number"},
      {"Job", "t.csv: no column \"Job\"; did you mean Jobs?"},
      {"Jobs#3", "t.csv: no column \"Jobs#3\"; did you mean Jobs?"},
      {"Households",
       "t.csv: no column \"Households\"; there are Rate, rate, Jobs, Jobs, jobs, A#2"},
  };
  for (const auto& [name, refusal] : kCases) {
    EXPECT_EQ(Refusal([&, name = name] { found(name); }), refusal);
  }
}

TEST(Tables, TellTheEncodingThatWasFound) {
  const auto inLatin2 = [](std::string text) { return "a,b\n" + text + ",1\n"; };
  const struct {
    std::string bytes;
    std::string_view encoding;
    std::string cell;
  } kCases[] = {
      {"a,b\nZ\u00FCrich,1\n", "utf-8", "Z\u00FCrich"},
      {"a,b\nZ\xFCrich,1\n", "windows-1252", "Z\u00FCrich"},
      {"a,b\n\x80 5,1\n", "windows-1252", "\u20AC 5"},
      {"a,b\nFinist\xE8re,1\nDeux-S\xE8vres,1\n", "windows-1252", "Finist\u00E8re"},
      {"a,b\nTr\xF8ndelag,1\nM\xF8re,1\n\xC5lesund,1", "windows-1252", "Tr\u00F8ndelag"},
      {"a,b\nA Coru\xF1"
       "a,1\n",
       "windows-1252", "A Coru\u00F1a"},
      {"a,b\nS\xE3o Paulo,1\nCam\xF5"
       "es,1\n",
       "windows-1252", "S\u00E3o Paulo"},
      {"a,b\nRevenue \xA3m,10\xB3\n5m\xB3,\xA9\x45urostat\n", "windows-1252", "Revenue \u00A3m"},
      {inLatin2("Gda\xF1sk"), "iso-8859-2", "Gda\u0144sk"},
      {inLatin2("\xA3\xF3\x64\xBC"), "iso-8859-2", "\u0141\u00F3d\u017A"},
      {inLatin2("\xC8"
                "esk\xE9 Bud\xECjovice"),
       "iso-8859-2", "\u010Cesk\u00E9 Bud\u011Bjovice"},
      {inLatin2("P\xF8"
                "erov"),
       "iso-8859-2", "P\u0159erov"},
      {inLatin2("Gy\xF5r \xE1rak"), "iso-8859-2", "Gy\u0151r \u00E1rak"},
      {"\xFF\xFE"
       "a\0,\0b\0\r\0\n\0\xFC\0,\0"
       "1\0\n\0"s,
       "utf-16le", "\u00FC"},
      {"\xFE\xFF\0a\0,\0b\0\n\xD8\x3D\xDE\0\0,\0"
       "1\0\n"s,
       "utf-16be", "\U0001F600"},
      {"a\0,\0b\0\n\0x\0,\0"
       "1\0\n\0"s,
       "utf-16le", "x"},
  };
  for (const auto& [bytes, encoding, cell] : kCases) {
    const Table table = ParseTable(bytes, "t.csv", {{}, ','});
    EXPECT_EQ(NameOf(table.TextEncoding()), encoding) << bytes;
    EXPECT_EQ(table.Cell(0, 0), cell) << bytes;
    const bool isMarked = bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
    EXPECT_EQ(table.Notes().empty(), encoding == "utf-8" || isMarked) << bytes;
  }
  EXPECT_EQ(ParseTable("a;b\nZ\xFCrich;1\n", "t").Notes(),
            (std::vector{"read as windows-1252, a guess, with words like \"Z\u00FCrich\"; "
                         "--encoding decides"s,
                         "cells end at \";\", a guess; --separator decides"s}));
  EXPECT_EQ(EncodingOf("ISO-8859-2"), Encoding::latin2);
  EXPECT_EQ(Refusal([] { EncodingOf("utf8"); }), "no encoding \"utf8\"; did you mean utf-8?");
}

TEST(Tables, AreReadFromRegularFiles) {
  const TempDir folder;
  folder.Write("t.csv", "a,b\n1,2\n");
  EXPECT_EQ(Shown(ReadTable(folder.Path("t.csv"))), "a|b/1|2");
  EXPECT_THROW(ReadTable(folder.Path("none.csv")), Error);
  EXPECT_THROW(ReadTable("/dev/null"), Error);
}

TEST(CsvText, HasQuotesOnlyWhereNeeded) {
  constexpr struct {
    const char* cell;
    const char* text;
  } kCases[] = {
      {"", ""},
      {"plain text", "plain text"},
      {"a,b", "\"a,b\""},
      {"5\" pipe", "\"5\"\" pipe\""},
      {" a", "\" a\""},
      {"a\u00A0", "\"a\u00A0\""},
      {"a\nb", "\"a\nb\""},
      {"Sep=;", "\"Sep=;\""},
      {"sep", "sep"},
  };
  for (const auto& [cell, text] : kCases) {
    std::string csv = "1,";
    AppendCsv(csv, cell);
    EXPECT_EQ(csv, "1,"s + text);
  }
}

}  // namespace
}  // namespace vexel::test
