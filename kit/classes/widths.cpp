#include <cmath>

#include "kit/classes/common.h"

namespace vexel {

ClassBounds EqualWidthClasses(std::span<const double> values, int count) {
  if (auto answer = WithoutChoice(values, count)) return *std::move(answer);
  const double least = values.front();
  const double most = values.back();
  std::vector<double> lower{least};
  for (int i = 1; i < count; ++i) {
    const double bound = (most - least) * i / count + least;
    // The width of all classes together may be beyond a double; that of one is not.
    lower.push_back(std::isfinite(bound) ? bound : (most / count - least / count) * i + least);
  }
  return InOrder(values, std::move(lower), count, "the values are too close to each other");
}

}  // namespace vexel
