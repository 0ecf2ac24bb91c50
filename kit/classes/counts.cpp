#include "kit/classes/common.h"

namespace vexel {

ClassBounds EqualCountClasses(std::span<const double> values, int count) {
  if (auto answer = WithoutChoice(values, count)) return *std::move(answer);
  std::vector<double> lower;
  const auto classes = static_cast<std::size_t>(count);
  for (std::size_t i = 0; i < classes; ++i) lower.push_back(values[i * values.size() / classes]);
  return InOrder(values, std::move(lower), count, "some values are too frequent to be divided");
}

}  // namespace vexel
