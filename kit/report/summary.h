// A few lines about a page for the one who made it.

#ifndef VEXEL_KIT_REPORT_SUMMARY_H_
#define VEXEL_KIT_REPORT_SUMMARY_H_

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "kit/view/view.h"

namespace vexel {

// The title, every group with its range and number of areas, the areas without a value, and the
// rows of the data file that found no area.
VEXEL_API std::string SummaryText(View& view);

// Lines of two or more columns, all but the first aligned to the right.
using Lines = std::vector<std::vector<std::string>>;
VEXEL_API std::string Aligned(const Lines& lines, std::string_view indent);

// The number of rows without an area, with the first few.
VEXEL_API std::string LostRowsText(std::span<const LostRow> rows);

}  // namespace vexel

#endif  // VEXEL_KIT_REPORT_SUMMARY_H_
