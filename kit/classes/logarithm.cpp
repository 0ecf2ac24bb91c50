#include <algorithm>
#include <cmath>

#include "kit/classes/common.h"

namespace vexel {

ClassBounds LogarithmClasses(std::span<const double> values, int count) {
  auto answer = WithoutChoice(values, count);
  if (!values.empty() && values.front() <= 0.0) {
    throw ClassError("equal steps of the logarithm need values above 0; the least value is " +
                     NoteText(values.front()));
  }
  if (answer) return *std::move(answer);
  // Logarithms to the base of ten: bounds at powers of ten come out exact.
  const double least = std::log10(values.front());
  const double range = std::log10(values.back()) - least;
  std::vector<double> lower{values.front()};
  for (int i = 1; i < count; ++i) {
    lower.push_back(std::min(std::pow(10.0, least + range * i / count), values.back()));
  }
  return InOrder(values, std::move(lower), count, "the values are too close to each other");
}

}  // namespace vexel
