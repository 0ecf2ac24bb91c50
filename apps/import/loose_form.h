// Comparing names and numbers of areas as people write them.

#ifndef VEXEL_APPS_IMPORT_LOOSE_FORM_H_
#define VEXEL_APPS_IMPORT_LOOSE_FORM_H_

#include <string>
#include <string_view>

namespace vexel::import {

// A text without what differs between spellings of one thing: letter case, accents of Latin
// letters, blanks, punctuation, and zeros in front.
std::string LooseForm(std::string_view text);

// The text without zeros in front; "0" keeps one.
std::string_view WithoutZeros(std::string_view text);

}  // namespace vexel::import

#endif  // VEXEL_APPS_IMPORT_LOOSE_FORM_H_
