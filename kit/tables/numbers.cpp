#include "kit/tables/numbers.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <utility>

#include "kit/files/printable.h"
#include "kit/request/error.h"
#include "kit/request/hints.h"
#include "kit/tables/blanks.h"
#include "kit/tables/clipped.h"
#include "kit/tables/number_cell.h"

namespace vexel {

namespace {

std::string_view NameOf(DecimalMark mark) { return mark == DecimalMark::point ? "point" : "comma"; }

DecimalMark Other(DecimalMark mark) {
  return mark == DecimalMark::point ? DecimalMark::comma : DecimalMark::point;
}

bool IsNumber(const BareNumber& bare, DecimalMark mark) {
  return NormalNumberOf(bare, mark).has_value();
}

bool IsNumber(std::string_view cell) {
  const BareNumber bare = BareNumberOf(cell);
  return IsNumber(bare, DecimalMark::point) || IsNumber(bare, DecimalMark::comma);
}

struct Place {
  int row = 0;
  int column = 0;
};

// `row 12, column "Rate": "12.3"`, with the numbers of a spreadsheet.
std::string PlaceText(const Table& table, Place at) {
  return "row " + std::to_string(table.RowNumber(at.row)) + ", column " +
         Quoted(Clipped(table.Heading(at.column))) + ": " +
         Quoted(Clipped(table.Cell(at.row, at.column)));
}

// The first cells that speak for a mark, and the first that can be read with either.
struct Evidence {
  std::optional<Place> point;
  std::optional<Place> comma;
  std::optional<Place> either;

  bool IsComplete() const { return point && comma; }
};

void Weigh(Evidence& evidence, std::string_view cell, Place at) {
  const BareNumber bare = BareNumberOf(cell);
  if (bare.digits.find_first_of(".,") == std::string_view::npos) return;
  const bool isPoint = IsNumber(bare, DecimalMark::point);
  const bool isComma = IsNumber(bare, DecimalMark::comma);
  if (!isPoint && !isComma) return;
  auto& place = isPoint && isComma ? evidence.either : isPoint ? evidence.point : evidence.comma;
  if (!place) place = at;
}

Evidence EvidenceOf(const Table& table, std::span<const int> columns,
                    std::span<const std::string> missing) {
  Evidence evidence;
  for (const int column : columns) {
    for (int row = 0; row < table.RowCount() && !evidence.IsComplete(); ++row) {
      const std::string_view cell = table.Cell(row, column);
      if (!IsMissing(cell, missing)) Weigh(evidence, cell, {row, column});
    }
  }
  return evidence;
}

std::string GuessNote(const Table& table, Place at, DecimalMark mark) {
  const auto number = NormalNumberOf(BareNumberOf(table.Cell(at.row, at.column)), mark);
  return PlaceText(table, at) + " is read as " + number->text + ", with a decimal " +
         std::string(NameOf(mark)) + ", a guess; --decimal decides";
}

// The cell without one mark of a footnote: a sign on either side, something in brackets behind, or
// a letter.
std::string_view WithoutMark(std::string_view cell) {
  constexpr std::array<std::string_view, 16> kMarks{
      "*",      "\u2020", "\u2021", "\u00A7", "\u00B6", "#",      "\u00B9", "\u00B2",
      "\u00B3", "\u2070", "\u2074", "\u2075", "\u2076", "\u2077", "\u2078", "\u2079"};
  for (const std::string_view mark : kMarks) {
    if (cell.ends_with(mark)) return cell.substr(0, cell.size() - mark.size());
    if (cell.starts_with(mark)) return cell.substr(mark.size());
  }
  if (cell.ends_with(')') || cell.ends_with(']')) {
    return cell.substr(0, std::min(cell.find_last_of("(["), cell.size()));
  }
  const bool isLetter = !cell.empty() && ((cell.back() >= 'a' && cell.back() <= 'z') ||
                                          (cell.back() >= 'A' && cell.back() <= 'Z'));
  return isLetter ? cell.substr(0, cell.size() - 1) : cell;
}

bool IsMarkedNumber(std::string_view cell) {
  for (int marks = 0; marks < 3; ++marks) {
    const std::string_view rest = WithoutMark(cell);
    if (rest.size() == cell.size()) return false;
    if (IsNumber(rest)) return true;
    cell = TrimAllBlanks(rest);
  }
  return false;
}

std::string FixFor(std::string_view cell, DecimalMark mark) {
  if (IsNumber(BareNumberOf(cell), Other(mark))) {
    return "it is one with a decimal " + std::string(NameOf(Other(mark))) +
           "; write all numbers alike, or give another --decimal";
  }
  if (cell.ends_with('-') && IsNumber(cell.substr(0, cell.size() - 1))) {
    return "put the minus in front";
  }
  if (IsMarkedNumber(cell)) return "remove the mark beside the number";
  return "add it with --missing, or leave the column out";
}

Error NoNumber(const Table& table, Place at, int more, DecimalMark mark) {
  std::string text = PlaceText(table, at) + " is no number";
  if (more > 0) text += " (and " + std::to_string(more) + " more in the column)";
  return Failed(Printable(table.Name()), text + "; " + FixFor(table.Cell(at.row, at.column), mark));
}

// Reads a column cell by cell, and remembers what is worth telling.
class VariableReader {
 public:
  VariableReader(const Table& table, int column, const NumberFormat& format)
      : table_(table), column_(column), format_(format) {
    variable_.name = table.Heading(column);
  }

  Variable Read() && {
    variable_.values.reserve(static_cast<std::size_t>(table_.RowCount()));
    for (int row = 0; row < table_.RowCount(); ++row) ReadCell(row);
    if (wrong_) throw NoNumber(table_, *wrong_, wrongCount_ - 1, format_.decimal);
    TellPercents();
    TellCurrencies();
    return std::move(variable_);
  }

 private:
  void ReadCell(int row) {
    const std::string_view cell = table_.Cell(row, column_);
    std::string& value = variable_.values.emplace_back();
    if (IsMissing(cell, format_.missing)) {
      ++variable_.missing;
      return;
    }
    const BareNumber bare = BareNumberOf(cell);
    auto number = NormalNumberOf(bare, format_.decimal);
    if (!number) {
      ++wrongCount_;
      if (!wrong_) wrong_ = Place{row, column_};
      return;
    }
    value = std::move(number->text);
    variable_.decimals = std::max(variable_.decimals, number->decimals);
    if (bare.isPercent) ++variable_.percents;
    if (!bare.currency.empty()) NoteCurrency(bare.currency, {row, column_});
  }

  void NoteCurrency(std::string_view currency, Place at) {
    if (currency_.empty()) currency_ = currency;
    if (currency != currency_ && !otherCurrency_) otherCurrency_ = at;
  }

  void TellPercents() {
    const int present = table_.RowCount() - variable_.missing;
    if (variable_.percents == 0 || variable_.percents == present) return;
    variable_.notes.push_back("column " + Quoted(Clipped(variable_.name)) + ": " +
                              std::to_string(variable_.percents) + " of " +
                              Counted(present, "value") + " have a %, which changes none of them");
  }

  void TellCurrencies() {
    if (!otherCurrency_) return;
    variable_.notes.push_back(PlaceText(table_, *otherCurrency_) +
                              " has another currency than the cells above it, in " +
                              std::string(currency_));
  }

  const Table& table_;
  int column_;
  const NumberFormat& format_;
  Variable variable_;
  std::optional<Place> wrong_;
  int wrongCount_ = 0;
  std::string_view currency_;
  std::optional<Place> otherCurrency_;
};

}  // namespace

DecimalMark DecimalMarkOf(std::string_view name) {
  if (name == "point" || name == ".") return DecimalMark::point;
  if (name == "comma" || name == ",") return DecimalMark::comma;
  throw WrongRequest("no decimal mark " + Quoted(name) + "; there are point and comma");
}

NumberFormat FindNumberFormat(const Table& table, std::span<const int> columns,
                              const NumberOptions& options) {
  NumberFormat format{options.decimal.value_or(DecimalMark::point), options.missing, {}};
  if (options.decimal) return format;
  const Evidence evidence = EvidenceOf(table, columns, options.missing);
  if (evidence.IsComplete()) {
    throw Failed(Printable(table.Name()),
                 PlaceText(table, *evidence.comma) + " has a decimal comma, but " +
                     PlaceText(table, *evidence.point) +
                     " a decimal point; write all numbers alike, or give --decimal");
  }
  if (evidence.comma || (!evidence.point && table.Separator() == ';')) {
    format.decimal = DecimalMark::comma;
  }
  if (evidence.either && !evidence.comma && !evidence.point) {
    format.notes.push_back(GuessNote(table, *evidence.either, format.decimal));
  }
  return format;
}

Variable ReadVariable(const Table& table, int column, const NumberFormat& format) {
  return VariableReader(table, column, format).Read();
}

bool LooksLikeNumbers(const Table& table, int column, const NumberOptions& options) {
  int numbers = 0;
  int others = 0;
  for (int row = 0; row < table.RowCount(); ++row) {
    const std::string_view cell = table.Cell(row, column);
    if (!IsMissing(cell, options.missing))
      ++(IsNumber(cell) || IsMarkedNumber(cell) ? numbers : others);
  }
  return numbers > 0 && numbers >= others;
}

}  // namespace vexel
