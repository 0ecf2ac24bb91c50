#include "data/calculation.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "data/areadata.h"
#include "platform/number.h"

namespace vexel {

namespace {

double Formula(int calculation, double x, double y) {
  switch (calculation) {
    case percentChange:
      return ((x - y) * 100.0) / y;
    case percent:
      return (x * 100.0) / y;
    case ratio:
      return x / y;
    case difference:
      return x - y;
    default:
      return NO_DATA_VALUE;
  }
}

// The middle one of the real values by its size. `first` is the position of the first real value.
double TypicalSize(std::span<const double> sorted, std::size_t first) {
  const std::size_t count = sorted.size();
  if (sorted[first] >= 0.0) return sorted[(first + count) / 2];
  if (sorted.back() <= 0.0) return -sorted[(first + count) / 2];
  const auto split = std::find_if(sorted.begin() + static_cast<std::ptrdiff_t>(first), sorted.end(),
                                  [](double value) { return value >= 0.0; });
  const auto zero = static_cast<std::size_t>(split - sorted.begin());
  return (sorted[(zero + count) / 2] - sorted[(zero + first) / 2]) * 0.5;
}

}  // namespace

double Indicator(int calculation, double x, double y) {
  if (calculation != difference && y == 0.0) return NO_DATA_VALUE;
  if (x == NO_DATA_VALUE || y == NO_DATA_VALUE) return NO_DATA_VALUE;
  const double result = Formula(calculation, x, y);
  // The largest double closes the last group, so what reaches it would fall into none.
  return std::abs(result) < std::numeric_limits<double>::max() ? result : NO_DATA_VALUE;
}

int TypicalDecimals(std::span<const double> sorted) {
  const auto real = std::find_if(sorted.begin(), sorted.end(),
                                 [](double value) { return value != NO_DATA_VALUE; });
  if (real == sorted.end()) return 0;
  const double size = TypicalSize(sorted, static_cast<std::size_t>(real - sorted.begin()));
  if (size == 0.0) return 0;
  return std::max(TruncateToInt(3.0 - std::log10(size)), 0);
}

}  // namespace vexel
