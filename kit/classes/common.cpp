#include "kit/classes/common.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "kit/classes/twofold.h"
#include "kit/request/hints.h"

namespace vexel {
namespace {

void CheckRequest(std::span<const double> values, int count) {
  if (count < 1 || count > kMostClasses) {
    throw ClassError("the number of groups must be between 1 and " + std::to_string(kMostClasses) +
                     ", not " + std::to_string(count));
  }
  const bool finite =
      std::all_of(values.begin(), values.end(), [](double value) { return std::isfinite(value); });
  if (!finite || !std::is_sorted(values.begin(), values.end())) {
    throw std::invalid_argument("values to classify must be finite and in ascending order");
  }
}

std::string WhyFew(std::span<const double> values) {
  if (values.empty()) return "there are no values";
  const auto different = CountDifferent(values);
  if (different == 1) return "all values are equal";
  return "there are only " + Counted(different, "different value");
}

}  // namespace

std::optional<ClassBounds> WithoutChoice(std::span<const double> values, int count) {
  CheckRequest(values, count);
  if (values.empty()) return InOrder(values, {}, count, "");
  if (values.front() == values.back()) return InOrder(values, {values.front()}, count, "");
  return std::nullopt;
}

ClassBounds InOrder(std::span<const double> values, std::vector<double> lower, int asked,
                    std::string_view why) {
  ClassBounds bounds;
  for (const double bound : lower) {
    if (!std::isfinite(bound)) continue;
    // The sum takes the sign from a negative zero, which no legend should show.
    if (bounds.lower.empty() || bound > bounds.lower.back()) bounds.lower.push_back(bound + 0.0);
  }
  const std::size_t made = bounds.lower.size();
  if (made == static_cast<std::size_t>(asked)) return bounds;
  const int different = CountDifferent(values);
  const bool few = different < asked && made <= static_cast<std::size_t>(different);
  bounds.note = NumberNote(made, asked, few ? WhyFew(values) : why);
  return bounds;
}

std::string NumberNote(std::size_t made, int asked, std::string_view why) {
  std::string note = Counted(made, "group") + " instead of " + std::to_string(asked);
  if (!why.empty()) note.append(": ").append(why);
  return note;
}

int CountDifferent(std::span<const double> values) {
  int count = 0;
  auto at = values.begin();
  while (at != values.end() && count < kMostClasses) {
    at = std::upper_bound(at, values.end(), *at);
    ++count;
  }
  return count;
}

double MeanOf(std::span<const double> values) {
  const int exponent = ExponentOf(values);
  Twofold sum;
  for (const double value : values) sum = sum + Twofold{std::ldexp(value, -exponent)};
  const Twofold mean = sum / static_cast<double>(values.size());
  return std::clamp(std::ldexp(mean.high, exponent), values.front(), values.back());
}

std::string NoteText(double number) {
  std::array<char, 32> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
  return {text.data(), end};
}

int ExponentOf(std::span<const double> values) {
  int exponent = 0;
  std::frexp(std::max(std::abs(values.front()), std::abs(values.back())), &exponent);
  return exponent;
}

}  // namespace vexel
