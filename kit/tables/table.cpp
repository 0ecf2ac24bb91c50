#include "kit/tables/table.h"

#include <vexel/platform/string.h>

#include <algorithm>
#include <charconv>
#include <functional>
#include <iterator>
#include <limits>
#include <utility>

#include "kit/files/files.h"
#include "kit/files/looks.h"
#include "kit/files/printable.h"
#include "kit/request/error.h"
#include "kit/request/hints.h"
#include "kit/tables/cell_reader.h"
#include "kit/tables/clipped.h"
#include "kit/tables/separator.h"

namespace vexel {

namespace {

constexpr std::size_t kMostBytes = 1'000'000'000;
constexpr std::size_t kLooksAt = 4096;

std::string_view AdviceFor(FileKind kind) {
  switch (kind) {
    case FileKind::spreadsheet:
      return "save the sheet as CSV in UTF-8";
    case FileKind::archive:
      return "unpack it";
    case FileKind::geodata:
    case FileKind::json:
      return "outlines go without --table; save a table as CSV in UTF-8";
    case FileKind::dataFile:
    case FileKind::textMap:
    case FileKind::compiledMap:
      return "it needs no import";
    default:
      return "a table is a text with cells between commas, semicolons or tabs; save it as CSV in "
             "UTF-8";
  }
}

void CheckLooks(std::string_view bytes, const std::string& name) {
  const FileLooks looks = LooksOf(bytes.substr(0, kLooksAt));
  switch (looks.kind) {
    case FileKind::unknown:
    case FileKind::table:
    case FileKind::utf16:
      return;
    default:
      throw Failed(name, "is " + std::string(looks.name) + ", no table; " +
                             std::string(AdviceFor(looks.kind)));
  }
}

// No text has a zero byte; UTF-16 has lost its own by now.
void CheckText(std::string_view text, const std::string& name) {
  // Cells are counted and placed with 32 bits.
  if (text.size() >= std::numeric_limits<std::uint32_t>::max()) {
    throw Failed(name, "has more than 4 GB in UTF-8; cut it into several files");
  }
  const std::size_t nul = text.find('\0');
  if (nul == std::string_view::npos) return;
  const auto before = text.substr(0, nul);
  const auto line = 1 + std::count(before.begin(), before.end(), '\n');
  throw Failed(name, "line " + std::to_string(line) +
                         " holds a zero byte, which no text has; save the table as CSV in UTF-8");
}

constexpr bool IsAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }

// The first word with a letter beyond ASCII, by which a reader sees whether the guess is right.
std::string_view TellingWord(std::string_view text) {
  const auto first = std::find_if_not(text.begin(), text.end(), IsAscii);
  const auto at = static_cast<std::size_t>(first - text.begin());
  constexpr std::string_view kEnds = " \t\r\n,;|\"";
  const std::size_t before = text.substr(0, at).find_last_of(kEnds);
  const std::size_t start = before == std::string_view::npos ? 0 : before + 1;
  return text.substr(start, text.find_first_of(kEnds, at) - start);
}

// Nothing to tell of UTF-8 and of marked files: they are what they seem.
std::string EncodingNote(std::string_view text, Encoding encoding) {
  const bool hasLetters = std::find_if_not(text.begin(), text.end(), IsAscii) != text.end();
  std::string note = "read as " + std::string(NameOf(encoding)) + ", a guess";
  if (hasLetters) note += ", with words like " + Quoted(Clipped(TellingWord(text)));
  return note + "; --encoding decides";
}

std::string SeparatorNote(std::optional<char> separator) {
  if (!separator) return "read as a table of one column, a guess; --separator decides";
  const std::string mark = *separator == '\t' ? "a tab" : Quoted({&*separator, 1});
  return "cells end at " + mark + ", a guess; --separator decides";
}

// The heading of several of which one is asked for, "name#2".
struct NumberedName {
  std::string_view name;
  std::size_t number = 0;
};

std::optional<NumberedName> AsNumbered(std::string_view heading) {
  const std::size_t mark = heading.rfind('#');
  if (mark == std::string_view::npos) return {};
  NumberedName numbered{heading.substr(0, mark)};
  const char* const end = heading.data() + heading.size();
  const auto [stop, error] = std::from_chars(heading.data() + mark + 1, end, numbered.number);
  if (error != std::errc() || stop != end || numbered.number == 0) return {};
  return numbered;
}

template <typename Equal>
std::vector<int> ColumnsOf(const Table& table, std::string_view heading, Equal equal) {
  std::vector<int> columns;
  for (int column = 0; column < table.ColumnCount(); ++column) {
    if (equal(std::string_view(table.Heading(column)), heading)) columns.push_back(column);
  }
  return columns;
}

std::vector<int> ColumnsNamed(const Table& table, std::string_view heading) {
  auto columns = ColumnsOf(table, heading, std::equal_to<>());
  return columns.empty() ? ColumnsOf(table, heading, &EqualNoCase) : columns;
}

Error NoColumn(const Table& table, std::string_view heading) {
  constexpr std::size_t kMostListed = 12;
  std::vector<std::string_view> names;
  names.reserve(static_cast<std::size_t>(table.ColumnCount()));
  for (int column = 0; column < table.ColumnCount(); ++column) {
    names.push_back(table.Heading(column));
  }
  std::string hint = Hint(heading, names);
  if (hint.empty()) {
    const bool isLong = names.size() > kMostListed;
    if (isLong) names.resize(kMostListed);
    hint = "; there are " + Joined(names) + (isLong ? " and more" : "");
  }
  return WrongRequest(Printable(table.Name() + ": no column " + Quoted(heading) + hint));
}

}  // namespace

int Table::RowNumber(int row) const {
  const auto behind =
      std::upper_bound(shifts_.begin(), shifts_.end(), row,
                       [](int wanted, const Shift& shift) { return wanted < shift.row; });
  return row + std::prev(behind)->ahead;
}

std::string_view Table::Cell(int row, int column) const {
  const std::size_t cell = std::size_t{rows_[ToSize(row)]} + columns_[ToSize(column)].cell;
  if (cell >= rows_[ToSize(row) + 1]) return {};
  const std::size_t start = cell == 0 ? 0 : ends_[cell - 1];
  return std::string_view(text_).substr(start, ends_[cell] - start);
}

int Table::FindColumn(std::string_view heading) const {
  const std::vector<int> columns = ColumnsNamed(*this, heading);
  if (columns.size() == 1) return columns.front();
  if (columns.size() > 1) {
    throw WrongRequest(Printable(name_ + ": " + std::to_string(columns.size()) +
                                 " columns are called " + Quoted(heading) + "; take " +
                                 Quoted(std::string(heading) + "#1") + " or another number"));
  }
  if (const auto numbered = AsNumbered(heading)) {
    const std::vector<int> alike = ColumnsNamed(*this, numbered->name);
    if (numbered->number <= alike.size()) return alike[numbered->number - 1];
  }
  throw NoColumn(*this, heading);
}

Table ReadTable(const std::string& path, const TableOptions& options) {
  CheckReadable(path);
  return ParseTable(ReadFile(path, kMostBytes), path, options);
}

Table ParseTable(std::string bytes, const std::string& name, const TableOptions& options) {
  if (options.separator && !CanSeparate(*options.separator)) {
    throw WrongRequest("cells cannot end at " + Quoted({&*options.separator, 1}) +
                       "; take one of ; , | or a tab");
  }
  if (bytes.empty()) throw Failed(name, "the file is empty");
  CheckLooks(bytes, name);
  std::vector<std::string> notes;
  const Encoding encoding = options.encoding ? *options.encoding : LikelyEncoding(bytes);
  const bool isCertain = options.encoding || MarkedEncoding(bytes) || encoding == Encoding::utf8;
  std::string text = ToUtf8(std::move(bytes), encoding, name);
  CheckText(text, name);
  if (!isCertain) notes.push_back(EncodingNote(text, encoding));
  std::string_view rest = text;
  const std::optional<char> stated = TakeSeparatorLine(rest);
  std::optional<char> separator = options.separator ? options.separator : stated;
  if (!separator) {
    separator = LikelySeparator(rest);
    if (separator != ',') notes.push_back(SeparatorNote(separator));  // commas are what one expects
  }
  const std::size_t start = text.size() - rest.size();
  return CellReader(name, encoding, separator.value_or(','), std::move(text), start)
      .Read(std::move(notes));
}

}  // namespace vexel
