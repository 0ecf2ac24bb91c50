#include "legend/palettes.h"

#include <algorithm>
#include <array>

#include "platform/exceptions.h"

namespace vexel {

namespace {

constexpr std::size_t kMostColors = CLegend::kMostGroups;

// A colour written as hexadecimal RGB, red first, in the order of memory: red in the low byte.
constexpr std::uint32_t FromRgb(std::uint32_t rgb) {
  return ((rgb & 0xFFU) << 16U) | (rgb & 0xFF00U) | (rgb >> 16U);
}

using Row = std::array<std::uint32_t, kMostColors>;

template <typename... Colors>
constexpr Row RowOf(Colors... rgb) {
  return {FromRgb(static_cast<std::uint32_t>(rgb))...};
}

// For each scheme, by its number, a row for 2 to 7 groups.
constexpr std::array<std::array<Row, kMostColors - 1>, kNumFixedPalettes> kSchemes{{
    // spectrum
    {RowOf(0x0000FF, 0xFF0000), RowOf(0x0000FF, 0x00FF00, 0xFF0000),
     RowOf(0x0000FF, 0x00FF00, 0xFFFF00, 0xFF0000),
     RowOf(0x0000FF, 0x00FF00, 0xFFFF00, 0xFF8000, 0xFF0000),
     RowOf(0x800080, 0x0000FF, 0x00FF00, 0xFFFF00, 0xFF8000, 0xFF0000),
     RowOf(0x800080, 0x0000FF, 0x00FF00, 0xFFFF00, 0xFF8000, 0xFF0000, 0x800000)},
    // blue
    {RowOf(0xC0C0FF, 0x0000FF), RowOf(0xC0C0FF, 0x8080FF, 0x0000FF),
     RowOf(0xC0C0FF, 0x8080FF, 0x0000FF, 0x0000C0),
     RowOf(0xC0C0FF, 0x8080FF, 0x4040FF, 0x0000FF, 0x0000C0),
     RowOf(0xC0C0FF, 0x8080FF, 0x4040FF, 0x0000FF, 0x0000C0, 0x000080),
     RowOf(0xC0C0FF, 0x8080FF, 0x4040FF, 0x0000FF, 0x0000C0, 0x000080, 0x000040)},
    // green; the first of six groups is a yellowish green, unlike its neighbours.
    {RowOf(0xC0FFC0, 0x00FF00), RowOf(0xC0FFC0, 0x00FF00, 0x00C000),
     RowOf(0xC0FFC0, 0xA0FFA0, 0x00FF00, 0x00C000),
     RowOf(0xC0FFC0, 0xA0FFA0, 0x00FF00, 0x00C000, 0x008000),
     RowOf(0xC0FF80, 0x80FF80, 0x40FF40, 0x00FF00, 0x00C000, 0x008000),
     RowOf(0xC0FFC0, 0x80FF80, 0x40FF40, 0x00FF00, 0x00C000, 0x008000, 0x004000)},
    // red
    {RowOf(0xFFC0C0, 0xFF0000), RowOf(0xFFC0C0, 0xFF8080, 0xFF0000),
     RowOf(0xFFC0C0, 0xFF8080, 0xFF0000, 0xC00000),
     RowOf(0xFFC0C0, 0xFF8080, 0xFF4040, 0xFF0000, 0xC00000),
     RowOf(0xFFC0C0, 0xFF8080, 0xFF4040, 0xFF0000, 0xC00000, 0x800000),
     RowOf(0xFFC0C0, 0xFF8080, 0xFF4040, 0xFF0000, 0xC00000, 0x800000, 0x400000)},
    // yellow
    {RowOf(0xFFFFC0, 0xFFFF00), RowOf(0xFFFFC0, 0xFFFF80, 0xFFFF00),
     RowOf(0xFFFFC0, 0xFFFF80, 0xFFFF00, 0xC0C000),
     RowOf(0xFFFFC0, 0xFFFF80, 0xFFFF40, 0xFFFF00, 0xC0C000),
     RowOf(0xFFFFC0, 0xFFFF80, 0xFFFF40, 0xFFFF00, 0xC0C000, 0x808000),
     RowOf(0xFFFFC0, 0xFFFF80, 0xFFFF40, 0xFFFF00, 0xC0C000, 0x808000, 0x404000)},
    // grey
    {RowOf(0xC0C0C0, 0x404040), RowOf(0xC0C0C0, 0x808080, 0x404040),
     RowOf(0xC0C0C0, 0x808080, 0x404040, 0x000000),
     RowOf(0xE0E0E0, 0xC0C0C0, 0x808080, 0x404040, 0x000000),
     RowOf(0xE0E0E0, 0xC0C0C0, 0xA0A0A0, 0x808080, 0x404040, 0x000000),
     RowOf(0xE0E0E0, 0xC0C0C0, 0xA0A0A0, 0x808080, 0x606060, 0x404040, 0x000000)},
}};

}  // namespace

std::span<const std::uint32_t> PaletteColors(int palette, int numGroups) {
  if (palette < CLegend::Palette::spectrum || palette >= kNumFixedPalettes)
    AfxThrowInvalidArgException();
  if (numGroups < 1 || numGroups > CLegend::kMostGroups) AfxThrowInvalidArgException();
  const auto scheme = static_cast<std::size_t>(palette);
  const auto row = static_cast<std::size_t>(std::max(numGroups, 2) - 2);
  return std::span(kSchemes[scheme][row]).first(static_cast<std::size_t>(numGroups));
}

}  // namespace vexel
