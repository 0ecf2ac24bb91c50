// The fixed colour schemes.

#ifndef VEXEL_LEGEND_PALETTES_H_
#define VEXEL_LEGEND_PALETTES_H_

#include <cstdint>
#include <span>

#include "legend/legend.h"
#include "platform/export.h"

namespace vexel {

inline constexpr int kNumFixedPalettes = CLegend::Palette::custom;

// The colours, 0x00BBGGRR, of a fixed CLegend::Palette for 1 to 7 groups, the first group's first.
// One group takes the first colour of two. Throws CInvalidArgException outside those ranges.
VEXEL_API std::span<const std::uint32_t> PaletteColors(int palette, int numGroups);

}  // namespace vexel

#endif  // VEXEL_LEGEND_PALETTES_H_
