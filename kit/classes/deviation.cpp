#include <algorithm>
#include <cmath>

#include "kit/classes/common.h"
#include "kit/classes/twofold.h"

namespace vexel {
namespace {

double DeviationOf(std::span<const double> values, double mean) {
  const int exponent = ExponentOf(values);
  const double scaledMean = std::ldexp(mean, -exponent);
  Twofold squares;
  for (const double value : values) {
    const double difference = std::ldexp(value, -exponent) - scaledMean;
    squares = squares + Twofold{difference * difference};
  }
  const Twofold variance = squares / static_cast<double>(values.size());
  return std::ldexp(std::sqrt(variance.high), exponent);
}

std::size_t CountWithoutValue(std::span<const double> values, std::span<const double> lower) {
  std::size_t empty = 0;
  for (std::size_t i = 0; i < lower.size(); ++i) {
    const auto first = std::lower_bound(values.begin(), values.end(), lower[i]);
    const bool none = first == values.end() || (i + 1 < lower.size() && *first >= lower[i + 1]);
    empty += none ? 1 : 0;
  }
  return empty;
}

}  // namespace

ClassBounds DeviationClasses(std::span<const double> values, int count) {
  if (auto answer = WithoutChoice(values, count)) return *std::move(answer);
  const double mean = MeanOf(values);
  const double deviation = DeviationOf(values, mean);
  std::vector<double> lower;
  for (int i = 0; i < count; ++i) lower.push_back(mean + (i - count / 2.0) * deviation);
  // Beyond the range of a double there is nothing to be kept free.
  lower.front() =
      std::isfinite(lower.front()) ? std::min(lower.front(), values.front()) : values.front();
  ClassBounds bounds = InOrder(values, std::move(lower), count,
                               "further bounds cannot be told from these or are out of range");
  if (const std::size_t empty = CountWithoutValue(values, bounds.lower); empty > 0) {
    if (!bounds.note.empty()) bounds.note += "; ";
    bounds.note += std::to_string(empty) + " of the " + std::to_string(bounds.lower.size()) +
                   " classes without a value";
  }
  return bounds;
}

}  // namespace vexel
