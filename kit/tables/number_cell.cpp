#include "kit/tables/number_cell.h"

#include <vexel/platform/string.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdlib>
#include <system_error>
#include <utility>

#include "kit/tables/blanks.h"

namespace vexel {

namespace {

// Longer numbers are beyond what a double holds, and so are greater exponents.
constexpr std::size_t kMostDigits = 400;
constexpr int kMostExponent = 400;

constexpr std::array<std::string_view, 5> kSigns{"-", "+", "\u2212", "\u2013", "\uFE63"};

constexpr std::array<std::string_view, 59> kCurrencies{
    "US$",    "AU$",    "CA$",    "NZ$",    "HK$",    "A$",     "C$",      "R$",      "EUR",
    "USD",    "CHF",    "GBP",    "JPY",    "CAD",    "AUD",    "NZD",     "SEK",     "NOK",
    "DKK",    "ISK",    "PLN",    "CZK",    "HUF",    "RON",    "BGN",     "TRY",     "RUB",
    "UAH",    "CNY",    "INR",    "BRL",    "MXN",    "ZAR",    "KRW",     "ILS",     "SGD",
    "HKD",    "SFr.",   "Fr.",    "kr.",    "kr",     "Ft",     "z\u0142", "K\u010D", "lei",
    "Rs.",    "Rs",     "TL",     "$",      "\u00A2", "\u00A3", "\u00A4",  "\u00A5",  "\u058F",
    "\u060B", "\u0E3F", "\uFF04", "\uFFE1", "\uFFE5"};

constexpr std::array<std::string_view, 25> kMissing{
    "",       "-",       "--",    "\u2013", "\u2014", "\u2212", ".",      "..",   "...",
    "\u2026", ":",       "x",     "na",     "n/a",    "n.a.",   "nan",    "null", "none",
    "#n/a",   "#div/0!", "#ref!", "#name?", "#num!",  "#null!", "#value!"};

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Unicode's block of currency signs, U+20A0 to U+20CF, has three bytes.
std::size_t SignOfBlock(std::string_view sign) {
  const bool isFull = sign.size() == 3 && sign.front() == '\xE2';
  if (!isFull) return 0;
  const auto second = static_cast<unsigned char>(sign[1]);
  const auto third = static_cast<unsigned char>(sign[2]);
  const bool isIn = (second == 0x82 && third >= 0xA0) || (second == 0x83 && third <= 0x8F);
  return isIn ? 3 : 0;
}

std::size_t CurrencyAtStart(std::string_view text) {
  for (const std::string_view each : kCurrencies) {
    if (EqualNoCase(text.substr(0, each.size()), each)) return each.size();
  }
  return SignOfBlock(text.substr(0, 3));
}

std::size_t CurrencyAtEnd(std::string_view text) {
  for (const std::string_view each : kCurrencies) {
    if (text.size() >= each.size() && EqualNoCase(text.substr(text.size() - each.size()), each)) {
      return each.size();
    }
  }
  return text.size() >= 3 ? SignOfBlock(text.substr(text.size() - 3)) : 0;
}

// Takes one piece after the other off a cell.
class Peeler {
 public:
  explicit Peeler(std::string_view cell) { bare_.digits = TrimAllBlanks(cell); }

  BareNumber Peel() {
    while (!IsBare() && (TakePercent() || TakeCurrency() || TakeSign() || TakeParentheses())) {
      bare_.digits = TrimAllBlanks(bare_.digits);
    }
    return bare_;
  }

 private:
  bool IsBare() const {
    return bare_.digits.empty() || (IsDigit(bare_.digits.front()) && IsDigit(bare_.digits.back()));
  }

  bool TakePercent() {
    if (bare_.isPercent || !bare_.digits.ends_with('%')) return false;
    bare_.digits.remove_suffix(1);
    return bare_.isPercent = true;
  }

  bool TakeCurrency() {
    if (!bare_.currency.empty()) return false;
    std::string_view& digits = bare_.digits;
    if (const std::size_t front = CurrencyAtStart(digits)) {
      bare_.currency = digits.substr(0, front);
      digits.remove_prefix(front);
    } else if (const std::size_t back = CurrencyAtEnd(digits)) {
      bare_.currency = digits.substr(digits.size() - back);
      digits.remove_suffix(back);
    }
    return !bare_.currency.empty();
  }

  bool TakeSign() {
    if (isSigned_) return false;
    const auto* sign = std::find_if(kSigns.begin(), kSigns.end(), [this](std::string_view each) {
      return bare_.digits.starts_with(each);
    });
    if (sign == kSigns.end()) return false;
    bare_.isNegative = *sign != "+";
    bare_.digits.remove_prefix(sign->size());
    return isSigned_ = true;
  }

  bool TakeParentheses() {
    std::string_view& digits = bare_.digits;
    if (isSigned_ || !digits.starts_with('(') || !digits.ends_with(')')) return false;
    digits = digits.substr(1, digits.size() - 2);
    return isSigned_ = bare_.isNegative = true;
  }

  BareNumber bare_;
  bool isSigned_ = false;
};

// What can stand between thousands, besides the mark that is not the decimal one.
std::size_t GroupMarkAt(std::string_view text, char other) {
  constexpr std::string_view kApostrophe = "\u2019";
  if (text.empty()) return 0;
  if (text.front() == other || text.front() == '\'') return 1;
  return text.starts_with(kApostrophe) ? kApostrophe.size() : BlankAtStart(text);
}

// Takes the parts of a number off its text, each of which is there or not.
class DigitReader {
 public:
  DigitReader(std::string_view text, DecimalMark decimal)
      : text_(text),
        mark_(decimal == DecimalMark::point ? '.' : ','),
        other_(decimal == DecimalMark::point ? ',' : '.') {}

  bool Read() {
    return text_.size() <= kMostDigits && TakeWhole() && TakeFraction() && TakeExponent() &&
           text_.empty() && !(whole_.empty() && fraction_.empty());
  }

  NormalNumber Normal(bool isNegative) && {
    Shift();
    const std::size_t zeros = whole_.find_first_not_of('0');
    whole_.erase(0, std::min(zeros, whole_.size()));
    const bool isZero = whole_.empty() && fraction_.find_first_not_of('0') == std::string::npos;
    NormalNumber number{isNegative && !isZero ? "-" : "", static_cast<int>(fraction_.size())};
    number.text += whole_.empty() ? "0" : whole_;
    if (!fraction_.empty()) number.text.append(".").append(fraction_);
    return number;
  }

 private:
  bool TakeWhole() {
    std::size_t inGroup = TakeDigits(whole_);
    while (const std::size_t length = GroupMarkAt(text_, other_)) {
      const std::string_view mark = text_.substr(0, length);
      const bool isFirst = group_.empty();
      const bool isRegular = isFirst ? inGroup >= 1 && inGroup <= 3 && whole_.front() != '0'
                                     : inGroup == 3 && mark == group_;
      if (!isRegular) return false;
      group_ = mark;
      text_.remove_prefix(length);
      inGroup = TakeDigits(whole_);
    }
    return group_.empty() || inGroup == 3;
  }

  bool TakeFraction() {
    if (!text_.starts_with(mark_)) return true;
    text_.remove_prefix(1);
    return TakeDigits(fraction_) > 0;
  }

  bool TakeExponent() {
    if (text_.empty() || (text_.front() != 'e' && text_.front() != 'E')) return true;
    if (!group_.empty()) return false;
    text_.remove_prefix(1);
    if (text_.starts_with('+')) {
      text_.remove_prefix(1);
      if (text_.starts_with('-')) return false;
    }
    const auto [end, error] = std::from_chars(text_.data(), text_.data() + text_.size(), exponent_);
    if (error != std::errc()) return false;
    text_.remove_prefix(static_cast<std::size_t>(end - text_.data()));
    return exponent_ >= -kMostExponent && exponent_ <= kMostExponent;
  }

  std::size_t TakeDigits(std::string& to) {
    const auto length = static_cast<std::size_t>(
        std::find_if_not(text_.begin(), text_.end(), IsDigit) - text_.begin());
    to += text_.substr(0, length);
    text_.remove_prefix(length);
    return length;
  }

  // Moves the decimal mark as the exponent says.
  void Shift() {
    const auto count = static_cast<std::size_t>(std::abs(exponent_));
    if (exponent_ > 0) {
      if (fraction_.size() < count) fraction_.resize(count, '0');
      whole_ += fraction_.substr(0, count);
      fraction_.erase(0, count);
    } else if (exponent_ < 0) {
      if (whole_.size() < count) whole_.insert(0, count - whole_.size(), '0');
      fraction_.insert(0, whole_.substr(whole_.size() - count));
      whole_.resize(whole_.size() - count);
    }
  }

  std::string_view text_;
  char mark_;
  char other_;
  std::string whole_;
  std::string fraction_;
  std::string_view group_;
  int exponent_ = 0;
};

}  // namespace

BareNumber BareNumberOf(std::string_view cell) { return Peeler(cell).Peel(); }

std::optional<NormalNumber> NormalNumberOf(const BareNumber& bare, DecimalMark decimal) {
  DigitReader reader(bare.digits, decimal);
  if (!reader.Read()) return {};
  return std::move(reader).Normal(bare.isNegative);
}

bool IsMissing(std::string_view cell, std::span<const std::string> added) {
  const std::string_view word = TrimAllBlanks(cell);
  const auto isWord = [=](std::string_view each) { return EqualNoCase(each, word); };
  if (std::any_of(added.begin(), added.end(), isWord)) return true;
  const bool isNumber = !word.empty() && IsDigit(word.front());
  return !isNumber && std::any_of(kMissing.begin(), kMissing.end(), isWord);
}

}  // namespace vexel
