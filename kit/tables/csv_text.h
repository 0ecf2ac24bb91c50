// Tables as text for other programs.

#ifndef VEXEL_KIT_TABLES_CSV_TEXT_H_
#define VEXEL_KIT_TABLES_CSV_TEXT_H_

#include <vexel/platform/export.h>

#include <string>
#include <string_view>

namespace vexel {

// Appends a cell of a table with commas, in quotes only where it would not be read back as it is:
// what separates cells or rows, quotes, blanks around it, and what means more at the beginning of a
// file. Commas and line ends come from the caller.
VEXEL_API void AppendCsv(std::string& to, std::string_view cell);

}  // namespace vexel

#endif  // VEXEL_KIT_TABLES_CSV_TEXT_H_
