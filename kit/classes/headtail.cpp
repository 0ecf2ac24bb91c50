#include <algorithm>
#include <cmath>
#include <limits>

#include "kit/classes/common.h"

namespace vexel {
namespace {

// The values above the mean. When these are next to each other the mean may round to the greatest,
// which is above it all the same.
std::span<const double> HeadOf(std::span<const double> values) {
  const double below = std::nextafter(values.back(), -std::numeric_limits<double>::infinity());
  const double mean = std::min(MeanOf(values), below);
  const auto first = std::upper_bound(values.begin(), values.end(), mean);
  return values.subspan(static_cast<std::size_t>(first - values.begin()));
}

}  // namespace

ClassBounds HeadTailClasses(std::span<const double> values, int count, double minority) {
  if (auto answer = WithoutChoice(values, count)) return *std::move(answer);
  std::vector<double> lower{values.front()};
  std::span<const double> cut = values;
  while (static_cast<int>(lower.size()) < count && cut.front() < cut.back()) {
    const std::span<const double> head = HeadOf(cut);
    lower.push_back(head.front());
    const double share = static_cast<double>(head.size()) / static_cast<double>(cut.size());
    if (share > minority) break;
    cut = head;
  }
  return InOrder(values, std::move(lower), count,
                 "above the last bound there are no longer many small and few large values");
}

}  // namespace vexel
