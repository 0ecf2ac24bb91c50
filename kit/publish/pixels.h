// A picture in memory.

#ifndef VEXEL_KIT_PUBLISH_PIXELS_H_
#define VEXEL_KIT_PUBLISH_PIXELS_H_

#include <vexel/platform/export.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vexel {

inline constexpr std::uint32_t kOpaque = 255;

// Row by row without gaps, each pixel 0xAARRGGBB with its colours multiplied by its opacity.
struct Pixels {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> data;

  std::uint32_t* Row(int y) {
    return data.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
  }
  const std::uint32_t* Row(int y) const {
    return data.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
  }
};

inline constexpr std::uint32_t AlphaOf(std::uint32_t pixel) { return pixel >> 24; }

// All four parts of a pixel by part / 255, each rounded, two of them at a time. A pixel's parts by
// p and by 255 - p add up to the pixel.
inline constexpr std::uint32_t PartOf(std::uint32_t pixel, std::uint32_t part) {
  constexpr std::uint32_t kTwo = 0x00FF00FF;
  constexpr std::uint32_t kHalves = 0x00800080;
  const auto divided = [=](std::uint32_t product) {
    product += kHalves;
    return ((product + ((product >> 8) & kTwo)) >> 8) & kTwo;
  };
  return divided((pixel & kTwo) * part) | divided(((pixel >> 8) & kTwo) * part) << 8;
}

// Draws over it a pixel of which `part` / 255 is covered.
inline constexpr std::uint32_t Over(std::uint32_t below, std::uint32_t pixel, std::uint32_t part) {
  const std::uint32_t covering = PartOf(pixel, part);
  return covering + PartOf(below, kOpaque - AlphaOf(covering));
}

// 0x00BBGGRR as an opaque pixel.
inline constexpr std::uint32_t PixelOf(std::uint32_t color) {
  return 0xFF000000U | (color & 0xFFU) << 16 | (color & 0xFF00U) | (color >> 16 & 0xFFU);
}

}  // namespace vexel

#endif  // VEXEL_KIT_PUBLISH_PIXELS_H_
