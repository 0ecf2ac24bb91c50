// Cells as they are quoted in what is said about them.

#ifndef VEXEL_KIT_TABLES_CLIPPED_H_
#define VEXEL_KIT_TABLES_CLIPPED_H_

#include <string>
#include <string_view>

namespace vexel {

// The beginning of a text in UTF-8, with an ellipsis where it goes on, fit for one line of a
// terminal.
std::string Clipped(std::string_view text);

}  // namespace vexel

#endif  // VEXEL_KIT_TABLES_CLIPPED_H_
