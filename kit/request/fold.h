// Names as they are looked for and sorted.

#ifndef VEXEL_KIT_REQUEST_FOLD_H_
#define VEXEL_KIT_REQUEST_FOLD_H_

#include <vexel/platform/export.h>

#include <string>
#include <string_view>

namespace vexel {

// In lower case and, for Latin letters, without accents: "Cañon" and "CANON" become the same. Other
// scripts keep their letters; bytes that are no UTF-8 become U+FFFD.
VEXEL_API std::string Folded(std::string_view text);

// The same in a form whose bytes sort as a reader expects: whole numbers by what they amount to.
VEXEL_API std::string SortKey(std::string_view text);

}  // namespace vexel

#endif  // VEXEL_KIT_REQUEST_FOLD_H_
