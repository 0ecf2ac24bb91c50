// Text for the bitmap fonts.

#ifndef VEXEL_RENDER_LATIN2_H_
#define VEXEL_RENDER_LATIN2_H_

#include <string>
#include <string_view>

#include "platform/export.h"

namespace vexel {

// The characters that a page draws for a UTF-8 text, one byte each: the fonts hold ISO 8859-2.
//
// A character of that set is kept. Other Latin letters lose their marks or are spelled out ("ae"),
// punctuation gets simple, combining marks and other characters without a width vanish, and "?"
// stands for the rest. A byte that is not UTF-8 goes as it is. The result depends on nothing but
// the text, so that a page comes out the same on every machine.
VEXEL_API std::string DrawnText(std::string_view utf8);

}  // namespace vexel

#endif  // VEXEL_RENDER_LATIN2_H_
