// A few lines about a page for the one who made it.

#ifndef VEXEL_APPS_VEXEL_SUMMARY_H_
#define VEXEL_APPS_VEXEL_SUMMARY_H_

#include <span>
#include <string>
#include <vector>

#include "host.h"
#include "view.h"

namespace vexel::cli {

// The title, every group with its range and number of areas, the areas without a value, and the
// rows of the data file that found no area.
std::string SummaryText(View& view, const CliHost& host);

// Lines of two or more columns, all but the first aligned to the right.
using Lines = std::vector<std::vector<std::string>>;
std::string Aligned(const Lines& lines, std::string_view indent);

// The number of rows without an area, with the first few.
std::string LostRowsText(std::span<const LostRow> rows);

}  // namespace vexel::cli

#endif  // VEXEL_APPS_VEXEL_SUMMARY_H_
