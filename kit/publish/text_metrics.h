// How much room a text takes before a medium has drawn it.
//
// The widths are those of DejaVu Sans, which is wider than most faces without serifs: what fits by
// them fits in the others as well, and a page has one layout whatever fonts a machine has.

#ifndef VEXEL_KIT_PUBLISH_TEXT_METRICS_H_
#define VEXEL_KIT_PUBLISH_TEXT_METRICS_H_

#include <string>
#include <string_view>
#include <vector>

namespace vexel {

struct Typeface {
  double size = 0.0;  // of an em, in page pixels
  bool isBold = false;
};

// Of the letters that reach furthest, in parts of the size.
inline constexpr double kAscent = 0.76;
inline constexpr double kDescent = 0.24;

inline constexpr std::string_view kEllipsis = "\u2026";

// The width in page pixels. A byte that is no UTF-8 counts as a letter.
double TextWidth(std::string_view text, const Typeface& face);

// The text, or as much of its beginning as fits with an ellipsis; empty where not even that does.
std::string Shortened(std::string_view text, const Typeface& face, double room);

// The text in lines, broken at blanks, and within a word that is longer than a line. What is beyond
// the last line ends in an ellipsis.
std::vector<std::string> Wrapped(std::string_view text, const Typeface& face, double room,
                                 std::size_t mostLines);

}  // namespace vexel

#endif  // VEXEL_KIT_PUBLISH_TEXT_METRICS_H_
