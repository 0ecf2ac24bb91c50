// Texts of files and users on their way to a terminal.

#ifndef VEXEL_KIT_FILES_PRINTABLE_H_
#define VEXEL_KIT_FILES_PRINTABLE_H_

#include <vexel/platform/export.h>

#include <string>
#include <string_view>

namespace vexel {

// Copies a text with "?" for each character that would steer a terminal, or change the order or the
// lines of what it shows: control characters, those of the upper half too, marks and overrides of
// the direction of writing, separators of lines and paragraphs. Gives the end of the copy, which is
// never longer than the text and may be made in its place. Takes no memory.
VEXEL_API char* CopyPrintable(std::string_view text, char* to) noexcept;

// The same as a string.
VEXEL_API std::string Printable(std::string_view text);

// The same for a text of many lines, which keeps its line ends and tabs.
VEXEL_API std::string PrintableLines(std::string text);

}  // namespace vexel

#endif  // VEXEL_KIT_FILES_PRINTABLE_H_
