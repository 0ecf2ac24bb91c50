// A table of statistics. What its cells write is read again as the same cells, and numbers come in
// the normal form.

#include "kit/tables/table.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <vector>

#include "kit/files/looks.h"
#include "kit/request/error.h"
#include "kit/tables/csv_text.h"
#include "kit/tables/numbers.h"
#include "scratch.h"

namespace {

using namespace vexel;
using fuzz::Require;

// Large enough for every way to go wrong.
constexpr std::size_t kMostCells = 20000;

std::size_t CellCount(const Table& table) {
  return static_cast<std::size_t>(table.ColumnCount()) * static_cast<std::size_t>(table.RowCount());
}

std::string QuotedCell(std::string_view cell) {
  std::string text = "\"";
  for (const char c : cell) text.append(c == '"' ? 2 : 1, c);
  return text + '"';
}

std::string PlainCell(std::string_view cell) {
  std::string text;
  AppendCsv(text, cell);
  return text;
}

template <typename Write>
std::string Written(const Table& table, char separator, Write write) {
  std::string text;
  for (int column = 0; column < table.ColumnCount(); ++column) {
    if (column > 0) text += separator;
    text += write(table.Heading(column));
  }
  text += '\n';
  for (int row = 0; row < table.RowCount(); ++row) {
    for (int column = 0; column < table.ColumnCount(); ++column) {
      if (column > 0) text += separator;
      text += write(table.Cell(row, column));
    }
    text += '\n';
  }
  return text;
}

void RequireSame(const Table& table, const Table& again) {
  Require(again.RowCount() == table.RowCount(), "a written table has as many rows");
  Require(again.ColumnCount() == table.ColumnCount(), "and columns");
  for (int column = 0; column < table.ColumnCount(); ++column) {
    Require(again.Heading(column) == table.Heading(column), "with the same headings");
    for (int row = 0; row < table.RowCount(); ++row) {
      Require(again.Cell(row, column) == table.Cell(row, column), "and the same cells");
    }
  }
}

void CheckWritten(const Table& table) {
  const char separator = table.Separator();
  const TableOptions asIs{Encoding::utf8, separator};
  RequireSame(table, ParseTable(Written(table, separator, QuotedCell), "again", asIs));
  const std::string plain = Written(table, ',', PlainCell);
  const FileKind kind = LooksOf(plain.substr(0, 4096)).kind;
  if (kind != FileKind::unknown && kind != FileKind::table)
    return;  // without quotes it is no table
  RequireSame(table, ParseTable(plain, "again", {Encoding::utf8, ','}));
}

// "-1234.50"
bool IsNormal(std::string_view text, int mostDecimals) {
  if (text.starts_with('-')) text.remove_prefix(1);
  const std::size_t point = std::min(text.find('.'), text.size());
  const std::string_view whole = text.substr(0, point);
  const std::string_view decimals = text.substr(std::min(point + 1, text.size()));
  const auto areDigits = [](std::string_view digits) {
    return digits.find_first_not_of("0123456789") == std::string_view::npos;
  };
  return areDigits(whole) && areDigits(decimals) && !whole.empty() &&
         (whole == "0" || whole.front() != '0') && (point == text.size()) == decimals.empty() &&
         decimals.size() <= static_cast<std::size_t>(mostDecimals);
}

void CheckVariable(const Table& table, int column, const NumberFormat& format) {
  const Variable variable = ReadVariable(table, column, format);
  const auto missing = std::count(variable.values.begin(), variable.values.end(), "");
  Require(missing == variable.missing, "what is missing is counted");
  for (const std::string& value : variable.values) {
    Require(value.empty() || IsNormal(value, variable.decimals), "a value has the normal form");
  }
}

void CheckNumbers(const Table& table) {
  std::vector<int> columns(static_cast<std::size_t>(table.ColumnCount()));
  std::iota(columns.begin(), columns.end(), 0);
  for (const int column : columns) {
    LooksLikeNumbers(table, column);
    try {
      CheckVariable(table, column, FindNumberFormat(table, {&column, 1}));
    } catch (const Error&) {
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  try {
    const Table table = ParseTable(std::string(fuzz::AsText(bytes, size)), "in");
    if (CellCount(table) > kMostCells) return 0;
    CheckWritten(table);
    CheckNumbers(table);
  } catch (const Error&) {
  }
  return 0;
}
