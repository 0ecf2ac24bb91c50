// The palettes by name: the engine's fixed ones, and published ones made for maps.

#ifndef VEXEL_KIT_PALETTES_PALETTES_H_
#define VEXEL_KIT_PALETTES_PALETTES_H_

#include <vexel/platform/export.h>

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "kit/palettes/color.h"

namespace vexel {

enum class PaletteKind {
  kRainbow,     // from hue to hue, in no order of lightness
  kSequential,  // from light to dark or from dark to light
  kDiverging    // from one dark end over a light, neutral centre to another
};

inline constexpr int kMostPaletteClasses = 7;

// A palette has a row of colours of its own for each number of classes from 1 to 7; a row is not a
// part of a longer one. Everything in it lives as long as the program.
struct Palette {
  std::string_view name;
  PaletteKind kind = PaletteKind::kSequential;

  // In every row of 2 to 7 classes, any two colours are at least 5 apart by CIEDE2000, in normal
  // sight and in each of three simulated deficiencies: protanopia, deuteranopia, tritanopia.
  bool colorBlindSafe = false;

  // The number by which CLegend::palette knows it; none for what the engine gets as colours.
  std::optional<int> engineNumber;

  // The rows for 1, 2, ... 7 classes, one behind the other; empty where the engine has them. Use
  // ColorsOf.
  std::span<const std::uint32_t> rows;
};

// All palettes: the engine's in the order of their numbers, then sequential, then diverging ones.
VEXEL_API std::span<const Palette> Palettes();

// The palette of a name, in whatever case its letters are; null if there is none.
VEXEL_API const Palette* FindPalette(std::string_view name);

// The colours, 0x00BBGGRR, for a number of classes, the lowest class's first. Throws
// std::invalid_argument unless there are 1 to 7.
VEXEL_API std::span<const std::uint32_t> ColorsOf(const Palette& palette, int numClasses);

VEXEL_API std::vector<std::uint32_t> Reversed(std::span<const std::uint32_t> colors);

// Colours of a diverging palette for classes that lie unevenly about a midpoint, so that the
// neutral centre stays at the midpoint, and equal distances from it look equally strong: `below`
// classes under it, `above` over it, and with `middleClass` one more between them, which holds the
// midpoint and gets the neutral colour itself. They come from the row that has room for the longer
// side on both sides, 2 * max(below, above) colours or one more, of which the shorter side leaves
// out the outermost. Rows of more than 7 are interpolated in CIELAB, evenly between the ends of the
// row of 7; their neighbours differ by less than the palettes promise.
//
// For a reversed palette call Reversed(CenteredColors(palette, above, below, ...)). Throws
// std::invalid_argument for a palette that is not diverging, a negative number, or unless there are
// 1 to 7 classes in all.
VEXEL_API std::vector<std::uint32_t> CenteredColors(const Palette& palette, int below, int above,
                                                    bool middleClass = false);

// A list to read, a palette on each line: name, kind, and "colour-blind safe" where it is. With
// color each line begins with a bar of the colours for 7 classes, for terminals with 24-bit ANSI
// colours.
VEXEL_API std::string PalettesText(bool color);

// The same as JSON, in lines: {"palettes": [{"name", "kind", "colorBlindSafe", "colors"}]}, where
// "colors" has for each number of classes, "1" to "7", the list of its colours as "#RRGGBB".
VEXEL_API std::string PalettesJson();

}  // namespace vexel

#endif  // VEXEL_KIT_PALETTES_PALETTES_H_
