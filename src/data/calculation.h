// An indicator derived from two variables.

#ifndef VEXEL_DATA_CALCULATION_H_
#define VEXEL_DATA_CALCULATION_H_

#include <span>

#include "platform/export.h"

namespace vexel {

// The calculations, by the numbers that CVELAData::SetCalcSelected takes.
enum Calculation : int { percentChange = 0, percent = 1, ratio = 2, difference = 3 };

// The indicator of one area from its values x and y: ((x - y) * 100) / y, (x * 100) / y, x / y or
// x - y. NO_DATA_VALUE where x or y is missing, where y is 0 for all but the difference, where the
// result is beyond what a group can hold, and for a calculation that there is not.
VEXEL_API double Indicator(int calculation, double x, double y);

// Decimals that show a typical one of the values with about three digits that count: 3 less the
// power of ten of a middle value. The values are ascending, the missing ones first.
VEXEL_API int TypicalDecimals(std::span<const double> sorted);

}  // namespace vexel

#endif  // VEXEL_DATA_CALCULATION_H_
