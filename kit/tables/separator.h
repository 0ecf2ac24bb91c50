// What stands between the cells of a table.

#ifndef VEXEL_KIT_TABLES_SEPARATOR_H_
#define VEXEL_KIT_TABLES_SEPARATOR_H_

#include <optional>
#include <string_view>

namespace vexel {

// Whether it can part cells: an ASCII character that is no letter, digit, quote or line end.
bool CanSeparate(char c) noexcept;

// Begins a line above the heading in which a spreadsheet says its separator: "sep=;".
inline constexpr std::string_view kSeparatorLine = "sep=";

// Takes such a line off the text, with its end.
std::optional<char> TakeSeparatorLine(std::string_view& text) noexcept;

// The semicolon, comma, tab or bar that cuts the first rows into most equally many cells; nothing
// when the heading has none of them.
std::optional<char> LikelySeparator(std::string_view text);

}  // namespace vexel

#endif  // VEXEL_KIT_TABLES_SEPARATOR_H_
