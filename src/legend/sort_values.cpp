#include "legend/sort_values.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace vexel {

namespace {

constexpr std::size_t kFew = 2048;  // values that comparisons sort as fast

constexpr unsigned kDigitBits = 11;
constexpr std::size_t kNumDigits = 6;  // of 64 bits
constexpr std::size_t kBase = std::size_t{1} << kDigitBits;

using Counts = std::array<std::array<std::uint32_t, kBase>, kNumDigits>;

// Bits that ascend with the values: those below 0 count backwards.
std::uint64_t Ascending(double value) {
  const auto bits = std::bit_cast<std::uint64_t>(value);
  const bool isNegative = bits >> 63U != 0;
  return isNegative ? ~bits : bits | std::uint64_t{1} << 63U;
}

std::size_t DigitOf(double value, std::size_t digit) {
  return Ascending(value) >> (digit * kDigitBits) & (kBase - 1);
}

// The two zeros are equal, and which comes first is the comparing sort's to say.
bool IsNegativeZero(double value) { return value == 0.0 && std::signbit(value); }

// Moves each value to where the values of lower digits end, and is stable in that.
void Distribute(std::span<const double> from, std::span<double> to, std::size_t digit,
                std::span<std::uint32_t> counts) {
  std::uint32_t next = 0;
  for (std::uint32_t& count : counts) next += std::exchange(count, next);
  for (const double value : from) to[counts[DigitOf(value, digit)]++] = value;
}

}  // namespace

void SortValues(std::span<double> values) {
  if (values.size() < kFew || std::any_of(values.begin(), values.end(), IsNegativeZero)) {
    std::sort(values.begin(), values.end());
    return;
  }
  std::vector<double> room(values.size());
  std::vector<Counts> counts(1);  // much for the stack of a thread
  for (const double value : values) {
    for (std::size_t digit = 0; digit < kNumDigits; ++digit) {
      ++counts.front()[digit][DigitOf(value, digit)];
    }
  }
  std::span<double> from = values;
  std::span<double> to = room;
  for (std::size_t digit = 0; digit < kNumDigits; ++digit) {
    auto& ofDigit = counts.front()[digit];
    if (ofDigit[DigitOf(from.front(), digit)] == from.size()) continue;  // all have the same
    Distribute(from, to, digit, ofDigit);
    std::swap(from, to);
  }
  if (from.data() != values.data()) std::copy(from.begin(), from.end(), values.begin());
}

}  // namespace vexel
