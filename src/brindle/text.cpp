#include "brindle/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <span>

#include "platform/host.h"

namespace {

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// A plus sign says nothing; before another sign it makes the text no number.
constexpr std::string_view WithoutPlus(std::string_view text) {
  return text.starts_with('+') && !text.starts_with("+-") ? text.substr(1) : text;
}

// No double shows a digit other than 0 behind this many decimals.
constexpr unsigned kMostDecimals = 1074;

// The power of ten of the first digit that counts, of a decimal number without a sign: 0 for "1.5",
// -2 for "0.015". Tells the two sides of a double's range apart.
long long DecimalMagnitude(std::string_view text) {
  const std::size_t exponentAt = text.find_first_of("eE");
  const std::string_view digits = text.substr(0, exponentAt);
  const auto point = static_cast<long long>(std::min(digits.find('.'), digits.size()));
  const auto first =
      static_cast<long long>(std::min(digits.find_first_of("123456789"), digits.size()));
  long long exponent = 0;
  if (exponentAt != std::string_view::npos) {
    const std::string_view power = text.substr(exponentAt + 1);
    exponent = vexel::ToWholeNumber(power);
    constexpr long long kFar = std::numeric_limits<int>::max();
    exponent = std::clamp(exponent, -kFar, kFar);
  }
  return exponent + (first < point ? point - first - 1 : point - first);
}

// What stands for a number beyond a double's range.
double OutOfRange(std::string_view text) {
  const bool negative = text.front() == '-';
  if (DecimalMagnitude(text.substr(negative ? 1 : 0)) < 0) return 0.0;
  return negative ? std::numeric_limits<double>::lowest() : std::numeric_limits<double>::max();
}

// Tokens are short, so that looking at one character after the other beats a search for each.
template <typename IsDelimiter>
std::string_view CutToken(std::string_view& text, IsDelimiter isDelimiter) noexcept {
  const char* const end = text.data() + text.size();
  const char* const first = std::find_if_not(text.data(), end, isDelimiter);
  const char* const last = std::find_if(first, end, isDelimiter);
  const char* const rest = last == end ? end : last + 1;
  text = {rest, static_cast<std::size_t>(end - rest)};
  return {first, static_cast<std::size_t>(last - first)};
}

// The longest double has 309 digits before the point.
constexpr std::size_t kMostWholeDigits = 309;

// Writes the digits with a separator between groups of three, counted from the right, and gives the
// place behind them.
char* WriteGrouped(char* to, std::string_view digits, char separator) {
  for (std::size_t i = 0; i < digits.size(); ++i) {
    if (i > 0 && separator != 0 && (digits.size() - i) % 3 == 0) *to++ = separator;
    *to++ = digits[i];
  }
  return to;
}

// The plain decimal of a value, without a sign where every digit is 0. The text is the buffer's.
std::string_view FixedDecimal(double value, unsigned decimals, std::span<char> buffer) {
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                    std::chars_format::fixed, static_cast<int>(decimals));
  const std::string_view text(buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data()));
  const bool isZero = text.find_first_of("123456789") == std::string_view::npos;
  return isZero && text.starts_with('-') ? text.substr(1) : text;
}

// Whether thousands separators stand where they belong, if there are any.
bool IsGroupedByThree(std::string_view text, char thousand, char decimal) {
  text = vexel::TrimBlanks(text);
  if (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
  const auto* const end = std::find_if(
      text.begin(), text.end(), [=](char c) { return c == decimal || c == 'e' || c == 'E'; });
  if (std::find(end, text.end(), thousand) != text.end()) return false;
  const std::string_view whole(text.begin(), end);
  const std::size_t first = whole.find(thousand);
  if (first == std::string_view::npos) return true;
  if (first == 0 || first > 3 || (whole.size() - first) % 4 != 0) return false;
  for (std::size_t i = first; i < whole.size(); ++i) {
    if ((whole[i] == thousand) != ((i - first) % 4 == 0)) return false;
  }
  return true;
}

}  // namespace

CVELAString CVELAString::GetToken(const char* delimiters, char* /*unused*/, int /*unusedToo*/) {
  std::string_view rest = text_;
  CVELAString token(vexel::TakeToken(rest, delimiters));
  text_.erase(0, text_.size() - rest.size());
  return token;
}

int CVELAString::IsNumeric() const noexcept { return vexel::IsWholeNumber(text_) ? 1 : 0; }

std::int64_t CVELAString::Val() const noexcept { return vexel::ToWholeNumber(text_); }

void CVELAString::Str(std::int64_t value, int /*width*/, char /*pad*/) {
  text_ = std::to_string(value);
}

int CVELAString::MessageBoxA(int flags) const {
  return AfxMessageBox(*this, static_cast<unsigned>(flags), 0);
}

char* d2txt(double value, unsigned decimals, char thousand, char decimal, int /*unused*/) {
  // A text with a destructor would be allocated for at its first use in a thread, and the process
  // ended where that fails. Sign, point and the zero behind take three characters.
  thread_local std::array<char, kMostWholeDigits + kMostWholeDigits / 3 + kMostDecimals + 3> text;
  char* to = text.data();
  if (!std::isfinite(value)) {
    return std::strcpy(to, std::isnan(value) ? "nan" : (value < 0 ? "-inf" : "inf"));
  }
  std::array<char, kMostWholeDigits + kMostDecimals + 2> buffer;
  std::string_view digits = FixedDecimal(value, std::min(decimals, kMostDecimals), buffer);
  if (digits.starts_with('-')) {
    *to++ = '-';
    digits.remove_prefix(1);
  }
  const std::size_t point = std::min(digits.find('.'), digits.size());
  to = WriteGrouped(to, digits.substr(0, point), thousand);
  if (point < digits.size()) {
    if (decimal != 0) *to++ = decimal;
    to = std::copy(digits.begin() + point + 1, digits.end(), to);
  }
  *to = 0;
  return text.data();
}

double txt2d(const char* text, char thousand, char decimal) {
  return vexel::ToNumber(std::string_view(text), thousand, decimal);
}

double atod(const char* text, unsigned /*unused*/) {
  return vexel::ToNumber(std::string_view(text));
}

char* strtoken(char* text, const char* delimiters, char* /*unused*/) {
  thread_local char empty[1] = {0};
  thread_local char* next = empty;
  if (text != nullptr) next = text;
  char* token = next + std::strspn(next, delimiters);
  char* end = token + std::strcspn(token, delimiters);
  next = *end == 0 ? end : end + 1;
  *end = 0;
  return token;
}

namespace vexel {

std::string_view TakeToken(std::string_view& text, std::string_view delimiters) noexcept {
  if (delimiters.size() != 1) {
    return CutToken(text, [=](char c) { return delimiters.find(c) != std::string_view::npos; });
  }
  return CutToken(text, [only = delimiters.front()](char c) { return c == only; });
}

bool TakePlainDecimal(std::string_view& text, double& value) noexcept {
  // The digits as one whole number and the power of ten are doubles without rounding here, so that
  // their quotient is rounded once, and correctly.
  static constexpr std::array kPowersOfTen{1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                           1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
  constexpr std::ptrdiff_t kMostDigits = kPowersOfTen.size() - 1;
  const char* at = text.data();
  const char* const end = at + text.size();
  std::uint64_t digits = 0;
  const auto takeDigits = [&] {
    const char* const first = at;
    for (; at != end && IsDigit(*at); ++at) {
      digits = 10 * digits + static_cast<std::uint64_t>(*at - '0');
    }
    return at - first;
  };
  const bool negative = text.starts_with('-');
  if (negative) ++at;
  std::ptrdiff_t count = takeDigits();
  std::ptrdiff_t decimals = 0;
  if (at != end && *at == '.') {
    ++at;
    decimals = takeDigits();
    count += decimals;
  }
  if (count == 0 || count > kMostDigits) return false;
  value = static_cast<double>(digits) / kPowersOfTen[static_cast<std::size_t>(decimals)];
  if (negative) value = -value;
  text = {at, static_cast<std::size_t>(end - at)};
  return true;
}

bool IsWholeNumber(std::string_view text) noexcept {
  if (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
  return !text.empty() && std::all_of(text.begin(), text.end(), IsDigit);
}

std::int64_t ToWholeNumber(std::string_view text) noexcept {
  text = TrimBlanks(text);
  text = WithoutPlus(text);
  std::int64_t value = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  if (result.ec != std::errc::result_out_of_range) return value;
  return text.starts_with('-') ? std::numeric_limits<std::int64_t>::min()
                               : std::numeric_limits<std::int64_t>::max();
}

NumberReading ReadNumber(std::string_view text) noexcept {
  NumberReading reading;
  std::string_view rest = text;
  if (TakePlainDecimal(rest, reading.value) && rest.empty()) return reading;
  text = WithoutPlus(TrimBlanks(text));
  // Words such as "inf" and "nan" are no numbers here.
  const std::size_t first = text.starts_with('-') ? 1 : 0;
  reading = {0.0, NumberFit::none};
  if (first >= text.size() || !(IsDigit(text[first]) || text[first] == '.')) return reading;
  const char* const end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, reading.value);
  if (result.ec == std::errc::invalid_argument) return reading;
  if (result.ec == std::errc::result_out_of_range) {
    const auto length = static_cast<std::size_t>(result.ptr - text.data());
    return {OutOfRange(text.substr(0, length)), NumberFit::beyondRange};
  }
  reading.fit = result.ptr == end ? NumberFit::whole : NumberFit::inPart;
  return reading;
}

NumberReading ReadNumber(std::string_view text, char thousand, char decimal) {
  NumberReading reading;
  if (decimal == '.' && text.find(thousand) == std::string_view::npos) {
    reading = ReadNumber(text);
  } else {
    // Hardly a cell is longer than this, and only a longer one takes memory.
    std::array<char, 256> usual;
    std::string longer;
    if (text.size() > usual.size()) longer.resize(text.size());
    char* const plain = longer.empty() ? usual.data() : longer.data();
    char* to = plain;
    bool isCut = false;
    for (const char c : text) {
      if (c == thousand) continue;
      isCut = c == '.' && decimal != '.';
      if (isCut) break;
      *to++ = c == decimal ? '.' : c;
    }
    reading = ReadNumber(std::string_view(plain, static_cast<std::size_t>(to - plain)));
    if (reading.fit == NumberFit::whole && isCut) reading.fit = NumberFit::inPart;
    if (reading.fit == NumberFit::whole && !IsGroupedByThree(text, thousand, decimal))
      reading.fit = NumberFit::oddGrouping;
  }
  constexpr double kBeyond = std::numeric_limits<double>::max();
  static const double kMost = std::nextafter(kBeyond, 0.0);
  if (reading.value > kMost || reading.value < -kMost) [[unlikely]] {
    return {std::clamp(reading.value, -kMost, kMost), NumberFit::beyondRange};
  }
  return reading;
}

double ToNumber(std::string_view text) noexcept { return ReadNumber(text).value; }

double ToNumber(std::string_view text, char thousand, char decimal) {
  return ReadNumber(text, thousand, decimal).value;
}

NumberFit FitOfInt32(std::string_view text) noexcept {
  text = TrimBlanks(text);
  const std::int64_t value = ToWholeNumber(text);
  if (value < std::numeric_limits<std::int32_t>::min() ||
      value > std::numeric_limits<std::int32_t>::max()) {
    return NumberFit::beyondRange;
  }
  if (IsWholeNumber(text)) return NumberFit::whole;
  text = WithoutPlus(text);
  if (text.starts_with('-')) text.remove_prefix(1);
  return !text.empty() && IsDigit(text.front()) ? NumberFit::inPart : NumberFit::none;
}

bool IsUtf8(std::string_view text) noexcept {
  constexpr std::array<std::uint32_t, 5> kLeast{0, 0, 0x80, 0x800, 0x10000};
  const auto* at = reinterpret_cast<const unsigned char*>(text.data());
  const auto* const end = at + text.size();
  while (at != end) {
    const unsigned lead = *at++;
    if (lead < 0x80U) continue;
    const std::size_t length = lead >= 0xF0U ? 4 : lead >= 0xE0U ? 3 : 2;
    if (lead < 0xC2U || lead > 0xF4U || static_cast<std::size_t>(end - at) < length - 1)
      return false;
    std::uint32_t code = lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i, ++at) {
      if ((*at & 0xC0U) != 0x80U) return false;
      code = (code << 6U) | (*at & 0x3FU);
    }
    if (code < kLeast[length] || code > 0x10FFFFU || (code >= 0xD800U && code <= 0xDFFFU))
      return false;
  }
  return true;
}

bool EqualButForBlanks(std::string_view a, std::string_view b) noexcept {
  const auto isBlank = [](char c) { return c == ' ' || c == '\t'; };
  const auto* other = b.begin();
  for (const char c : a) {
    if (isBlank(c)) continue;
    other = std::find_if_not(other, b.end(), isBlank);
    if (other == b.end() || ToLowerAscii(*other) != ToLowerAscii(c)) return false;
    ++other;
  }
  return std::all_of(other, b.end(), isBlank);
}

}  // namespace vexel
