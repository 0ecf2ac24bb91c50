// One cell with a number.

#ifndef VEXEL_KIT_TABLES_NUMBER_CELL_H_
#define VEXEL_KIT_TABLES_NUMBER_CELL_H_

#include <vexel/platform/export.h>

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "kit/tables/numbers.h"

namespace vexel {

// A number without what stands around its digits.
struct BareNumber {
  std::string_view digits;  // with marks between and an exponent behind
  bool isNegative = false;
  bool isPercent = false;
  std::string_view currency;
};

// Takes the sign, parentheses, currency and "%" off; each occurs once at most.
VEXEL_API BareNumber BareNumberOf(std::string_view cell);

// A number in the normal form, "-1234.50".
struct NormalNumber {
  std::string text;
  int decimals = 0;
};

// Nothing when it is no number with that decimal mark.
VEXEL_API std::optional<NormalNumber> NormalNumberOf(const BareNumber& bare, DecimalMark decimal);

VEXEL_API bool IsMissing(std::string_view cell, std::span<const std::string> added);

}  // namespace vexel

#endif  // VEXEL_KIT_TABLES_NUMBER_CELL_H_
