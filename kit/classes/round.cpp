#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

#include "kit/classes/common.h"

namespace vexel {
namespace {

// digits * 10^exponent
struct Step {
  int digits;
  int exponent;
};

// The double next to the multiple in decimal, so that 3 * 0.1 is 0.3.
double Multiple(std::int64_t factor, Step step) {
  const std::string text =
      std::to_string(factor * step.digits) + "e" + std::to_string(step.exponent);
  double value = 0.0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
  if (read.ec != std::errc::result_out_of_range) return value;
  // The exponent is never so small that a multiple vanishes.
  return std::copysign(std::numeric_limits<double>::infinity(), static_cast<double>(factor));
}

// Beyond this, multiples are closer to each other than doubles.
constexpr double kMostFactor = 1e16;

// The factor of the greatest multiple not above the value. The quotient may be rounded to a factor
// that is not.
std::optional<std::int64_t> FactorBelow(double value, Step step) {
  const double quotient = std::floor(value / Multiple(1, step));
  if (!(std::abs(quotient) <= kMostFactor)) return std::nullopt;
  auto factor = static_cast<std::int64_t>(quotient);
  while (Multiple(factor, step) > value) --factor;
  while (Multiple(factor + 1, step) <= value) ++factor;
  return factor;
}

// Empty when there are too many multiples.
std::vector<double> BoundsAt(std::span<const double> values, Step step) {
  const auto first = FactorBelow(values.front(), step);
  const auto last = FactorBelow(values.back(), step);
  if (!first || !last || *last - *first >= kMostClasses) return {};
  std::vector<double> lower;
  for (std::int64_t factor = *first; factor <= *last; ++factor) {
    lower.push_back(Multiple(factor, step));
  }
  if (!std::isfinite(lower.front())) lower.front() = values.front();
  return lower;
}

// How far from what was asked; one too many is worse than one too few.
int Distance(std::size_t made, int asked) {
  const int difference = static_cast<int>(made) - asked;
  return 2 * std::abs(difference) + (difference > 0 ? 1 : 0);
}

struct RoundBounds {
  std::vector<double> lower;
  Step step{1, 0};
};

// From steps that are above all values down to such as make too many classes. Of steps that make
// the same number the longest wins, 2.5 only where no other does.
RoundBounds Choose(std::span<const double> values, int count) {
  const double size = std::max(std::abs(values.front()), std::abs(values.back()));
  const double range = values.back() / kMostClasses - values.front() / kMostClasses;
  const auto powerOf = [](double number) {
    const double normal = std::max(number, std::numeric_limits<double>::min());
    return static_cast<int>(std::floor(std::log10(normal)));
  };
  constexpr int kLeastPower = -300;
  const int least = std::max(powerOf(range) - 1, kLeastPower);
  RoundBounds best;
  for (int power = std::max(powerOf(size) + 1, least); power >= least; --power) {
    for (const Step step : {Step{5, power}, {2, power}, {1, power}, {25, power - 1}}) {
      std::vector<double> lower = BoundsAt(values, step);
      if (lower.empty()) continue;
      if (!best.lower.empty() &&
          Distance(lower.size(), count) >= Distance(best.lower.size(), count)) {
        continue;
      }
      best = {std::move(lower), step};
    }
  }
  return best;
}

}  // namespace

ClassBounds RoundClasses(std::span<const double> values, int count) {
  if (auto answer = WithoutChoice(values, count)) return *std::move(answer);
  RoundBounds found = Choose(values, count);
  return InOrder(values, std::move(found.lower), count,
                 "the bounds are " + NoteText(Multiple(1, found.step)) + " apart");
}

}  // namespace vexel
