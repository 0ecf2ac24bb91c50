// The numbers in a table's cells, which are written in many ways, in one normal form.
//
// Taken are: a decimal point or comma; blanks of all kinds, apostrophes, commas or dots between
// regular groups of three; a sign in front, also U+2212, or parentheses for negative numbers; a "%"
// behind; one currency sign or code in front or behind; exponents, which are written out. Words for
// missing values are "", NA, n/a, NaN, null, none, -, –, —, ., .., ..., :, x, the error values of
// spreadsheets (#N/A, #DIV/0! ...), in any letter case, and those that the user adds.

#ifndef VEXEL_KIT_TABLES_NUMBERS_H_
#define VEXEL_KIT_TABLES_NUMBERS_H_

#include <vexel/platform/export.h>

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "kit/tables/table.h"

namespace vexel {

enum class DecimalMark { point, comma };

// "point" or ".", "comma" or ","; anything else throws an Error of kind request.
VEXEL_API DecimalMark DecimalMarkOf(std::string_view name);

// What a user decides; the rest is found.
struct NumberOptions {
  std::optional<DecimalMark> decimal;
  std::vector<std::string> missing;  // words besides the usual ones; they may look like numbers
};

// How all numbers of a table are written.
struct NumberFormat {
  DecimalMark decimal = DecimalMark::point;
  std::vector<std::string> missing;
  std::vector<std::string> notes;  // what was guessed, in sentences
};

struct Variable {
  std::string name;                 // the column's heading
  std::vector<std::string> values;  // of each row: "-1234.50" with its own decimals; "" for missing
  int decimals = 0;                 // the most that a value has
  int missing = 0;
  int percents = 0;                // cells with "%"
  std::vector<std::string> notes;  // what a reader should know, such as "%" in some cells only
};

// Finds the decimal mark by all cells of the columns. Cells that leave no choice decide: "12,34"
// and "1.234,5", or "0.123" and "1,234,567". Where both kinds occur an Error of kind failure names
// one of each. Where none occurs "1.234" and "1,234" are read with a point, or with a comma where
// cells end at semicolons, and a note tells it. Cells that are no numbers say nothing.
VEXEL_API NumberFormat FindNumberFormat(const Table& table, std::span<const int> columns,
                                        const NumberOptions& options = {});

// Throws an Error of kind failure with the row and the text of the first cell that is no number.
VEXEL_API Variable ReadVariable(const Table& table, int column, const NumberFormat& format);

// True when at least half of the cells that are not missing are numbers, with either decimal mark:
// a column that holds some strange cells is worth a complaint, a column of names is not. False when
// all are missing.
VEXEL_API bool LooksLikeNumbers(const Table& table, int column, const NumberOptions& options = {});

}  // namespace vexel

#endif  // VEXEL_KIT_TABLES_NUMBERS_H_
