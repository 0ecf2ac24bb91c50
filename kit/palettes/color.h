// Colours: their text, their lightness, and the space in which equal steps look equal.
//
// A colour is sRGB, 0x00BBGGRR: red in the low byte. Functions look at these three bytes only.

#ifndef VEXEL_KIT_PALETTES_COLOR_H_
#define VEXEL_KIT_PALETTES_COLOR_H_

#include <vexel/platform/export.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vexel {

// A colour from the usual notation with red first, 0xRRGGBB.
constexpr std::uint32_t ColorFromRgb(std::uint32_t rgb) {
  return ((rgb & 0xFFU) << 16U) | (rgb & 0xFF00U) | ((rgb >> 16U) & 0xFFU);
}

// "#RRGGBB".
VEXEL_API std::string ColorText(std::uint32_t color);

// The colours of a list such as "#fee, #c00, #3182bd": one to seven, in CSS's forms #rgb and
// #rrggbb, letters in either case, separated by commas; spaces around each are skipped. Throws
// std::invalid_argument with a sentence for the user, which quotes the part that is no colour.
VEXEL_API std::vector<std::uint32_t> ParseColors(std::string_view text);

// Red, green and blue in proportion to light, each 0 to 1 for what a screen can show.
using LinearRgb = std::array<double, 3>;

// Undoes the transfer curve of sRGB (IEC 61966-2-1).
VEXEL_API LinearRgb LinearRgbOf(std::uint32_t color);

// CIELAB (CIE 15) under the white of sRGB, D65: lightness 0 to 100, and two axes of hue.
struct Lab {
  double lightness = 0.0;
  double a = 0.0;
  double b = 0.0;
};

VEXEL_API Lab LabOf(const LinearRgb& rgb);

// The nearest colour, channel by channel, to a place in CIELAB, which may lie outside what a screen
// can show. ColorOf(LabOf(LinearRgbOf(color))) is the colour again.
VEXEL_API std::uint32_t ColorOf(const Lab& lab);

// A colour between two, with so much of the second: a straight way in CIELAB.
VEXEL_API std::uint32_t Mixed(std::uint32_t from, std::uint32_t to, double part);

// Relative luminance, 0 for black to 1 for white, as WCAG 2 defines it.
VEXEL_API double Luminance(std::uint32_t color);

// The contrast of two colours, 1 to 21, as WCAG 2 defines it.
VEXEL_API double Contrast(std::uint32_t a, std::uint32_t b);

// Whether white text on the colour has more contrast, by WCAG 2, than black text.
VEXEL_API bool IsDark(std::uint32_t color);

}  // namespace vexel

#endif  // VEXEL_KIT_PALETTES_COLOR_H_
