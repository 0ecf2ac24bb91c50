// Words that were meant to be known ones.

#ifndef VEXEL_BRINDLE_MEANT_WORD_H_
#define VEXEL_BRINDLE_MEANT_WORD_H_

#include <algorithm>
#include <span>
#include <string_view>

#include "brindle/text.h"

namespace vexel {

// Of the known headings and keywords the one from which that of the line differs by nothing but
// blanks; empty when there is none, and when the line has a known one.
inline std::string_view MeantWord(std::string_view line,
                                  std::span<const std::string_view> known) noexcept {
  const std::string_view word =
      TrimBlanks(line).starts_with('[') ? line : line.substr(0, line.find('='));
  const auto meant = std::find_if(known.begin(), known.end(), [=](std::string_view one) {
    return EqualButForBlanks(word, one);
  });
  return meant == known.end() || EqualNoCase(word, *meant) ? std::string_view() : *meant;
}

}  // namespace vexel

#endif  // VEXEL_BRINDLE_MEANT_WORD_H_
