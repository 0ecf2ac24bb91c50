#include "kit/palettes/palettes.h"

#include <vexel/legend/palettes.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace vexel {

namespace {

constexpr char LowerCase(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool IsSameName(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return LowerCase(x) == LowerCase(y); });
}

// Colour i of a row of `length`, stretched over the given row.
std::uint32_t Interpolated(std::span<const std::uint32_t> row, int i, int length) {
  const int last = static_cast<int>(row.size()) - 1;
  const int whole = i * last / (length - 1);
  const int rest = i * last % (length - 1);
  const auto from = static_cast<std::size_t>(whole);
  if (rest == 0) return row[from];
  return Mixed(row[from], row[from + 1], static_cast<double>(rest) / (length - 1));
}

// A row of any length from 1 on.
std::vector<std::uint32_t> RowOf(const Palette& palette, int length) {
  const auto row = ColorsOf(palette, std::min(length, kMostPaletteClasses));
  std::vector<std::uint32_t> colors(row.begin(), row.end());
  if (length <= kMostPaletteClasses) return colors;
  colors.clear();
  for (int i = 0; i < length; ++i) colors.push_back(Interpolated(row, i, length));
  return colors;
}

bool IsNumClasses(int number) { return number >= 1 && number <= kMostPaletteClasses; }

}  // namespace

const Palette* FindPalette(std::string_view name) {
  const auto palettes = Palettes();
  const auto found = std::find_if(palettes.begin(), palettes.end(),
                                  [&](const Palette& p) { return IsSameName(p.name, name); });
  return found == palettes.end() ? nullptr : &*found;
}

std::span<const std::uint32_t> ColorsOf(const Palette& palette, int numClasses) {
  if (!IsNumClasses(numClasses)) {
    throw std::invalid_argument("a palette has colours for 1 to 7 classes, not for " +
                                std::to_string(numClasses));
  }
  if (palette.engineNumber) return PaletteColors(*palette.engineNumber, numClasses);
  const auto count = static_cast<std::size_t>(numClasses);
  return palette.rows.subspan(count * (count - 1) / 2, count);
}

std::vector<std::uint32_t> Reversed(std::span<const std::uint32_t> colors) {
  return {colors.rbegin(), colors.rend()};
}

std::vector<std::uint32_t> CenteredColors(const Palette& palette, int below, int above,
                                          bool middleClass) {
  const int middle = middleClass ? 1 : 0;
  if (palette.kind != PaletteKind::kDiverging) {
    throw std::invalid_argument("palette " + std::string(palette.name) + " has no neutral centre");
  }
  if (std::clamp(below, 0, kMostPaletteClasses) != below ||
      std::clamp(above, 0, kMostPaletteClasses) != above || !IsNumClasses(below + above + middle)) {
    throw std::invalid_argument("a midpoint parts 1 to 7 classes");
  }
  const int longer = std::max(below, above);
  const auto row = RowOf(palette, 2 * longer + middle);
  return {row.begin() + (longer - below), row.end() - (longer - above)};
}

}  // namespace vexel
