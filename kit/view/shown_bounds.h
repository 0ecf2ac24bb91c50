// Bounds as a legend shows them.

#ifndef VEXEL_KIT_VIEW_SHOWN_BOUNDS_H_
#define VEXEL_KIT_VIEW_SHOWN_BOUNDS_H_

#include <span>
#include <vector>

namespace vexel {

struct ShownBounds {
  std::vector<double> lower;
  int decimals = 0;  // with which the legend shows them
};

// Rounds numbers to so many decimals.
class Rounding {
 public:
  explicit Rounding(int decimals);
  double operator()(double number) const;

 private:
  double scale_;
};

// The same bounds with the decimals it takes to tell them apart and, where few more are enough for
// that, to show them whole. The engine moves bounds that are closer together than one unit of the
// last decimal; if no few decimals keep them apart, `decimals` are those given.
ShownBounds WithDecimals(std::span<const double> lower, int decimals);

// Bounds for values that have no more decimals than those given. A bound between two such values
// moves up to the next number with the decimals shown, which changes no value's group, so that the
// legend's ranges say of each value what its colour says. One equal to `fixed` stays.
ShownBounds MovedToDecimals(std::span<const double> lower, int decimals, double fixed);

}  // namespace vexel

#endif  // VEXEL_KIT_VIEW_SHOWN_BOUNDS_H_
