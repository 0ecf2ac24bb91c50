// Text for HTML and XML.

#ifndef VEXEL_KIT_REQUEST_MARKUP_H_
#define VEXEL_KIT_REQUEST_MARKUP_H_

#include <vexel/platform/export.h>

#include <string>
#include <string_view>

namespace vexel {

inline constexpr char32_t kReplacement = 0xFFFD;

// Takes the first character off a text that is not empty. A byte that is part of none, and a code
// point that is none, give kReplacement.
VEXEL_API char32_t NextCharacter(std::string_view& text);

// Appends a code point in UTF-8.
VEXEL_API void AppendUtf8(std::string& to, char32_t character);

// Appends a text as it stands in an element or in an attribute: UTF-8, with entities for what has a
// meaning there. A byte that is part of no character becomes U+FFFD.
VEXEL_API void AppendMarkup(std::string& to, std::string_view text);
VEXEL_API std::string MarkupText(std::string_view text);

// The text with U+FFFD for every byte that is part of no character, and a blank for tabs and the
// ends of lines; what is left of the characters below the blank, and other code points that XML
// does not have, become U+FFFD.
VEXEL_API std::string XmlText(std::string_view text);

}  // namespace vexel

#endif  // VEXEL_KIT_REQUEST_MARKUP_H_
