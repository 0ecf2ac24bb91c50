// The areas of a page as a table for other programs.

#ifndef VEXEL_KIT_REPORT_CSV_H_
#define VEXEL_KIT_REPORT_CSV_H_

#include <string>

#include "kit/view/view.h"

namespace vexel {

// One row for each area on show, in the map's order: its codes, its name, the names of what it lies
// in, its value, and the text of its group. UTF-8; values have all their digits and a decimal dot,
// missing ones are empty.
VEXEL_API std::string CsvText(View& view);

}  // namespace vexel

#endif  // VEXEL_KIT_REPORT_CSV_H_
