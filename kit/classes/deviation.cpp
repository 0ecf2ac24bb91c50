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
  return InOrder(values, std::move(lower), count,
                 "further bounds cannot be told from these or are out of range");
}

}  // namespace vexel
