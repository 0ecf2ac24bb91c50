// Blanks of all kinds around the text of a cell.

#ifndef VEXEL_KIT_TABLES_BLANKS_H_
#define VEXEL_KIT_TABLES_BLANKS_H_

#include <cstddef>
#include <string_view>

namespace vexel {

// How many bytes of a blank, a tab or one of Unicode's blanks, no-break ones among them, the text
// begins or ends with.
std::size_t BlankAtStart(std::string_view text) noexcept;
std::size_t BlankAtEnd(std::string_view text) noexcept;

// The text without blanks around it.
std::string_view TrimAllBlanks(std::string_view text) noexcept;

}  // namespace vexel

#endif  // VEXEL_KIT_TABLES_BLANKS_H_
