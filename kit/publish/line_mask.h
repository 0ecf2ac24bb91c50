// Lines of one width and colour, as what they cover of each pixel.

#ifndef VEXEL_KIT_PUBLISH_LINE_MASK_H_
#define VEXEL_KIT_PUBLISH_LINE_MASK_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "kit/publish/coverage.h"

namespace vexel {

// Lines with round joins and ends. How much of a pixel a line covers goes by the distance of its
// middle, as if the line were straight there; of several lines the nearest counts. A border that is
// drawn twice, once for each of its sides, is thereby as strong as one that is drawn once.
class LineMask {
 public:
  LineMask(int width, int height);

  void SetLineWidth(float pixels);
  void AddLine(PixelPoint from, PixelPoint to);

  // Calls visit(y, first, parts) with rows of parts in 255, `count` of each, for all of the pixels
  // that were drawn to, and clears them.
  template <typename Visit>
  void Take(const Visit& visit) {
    const auto count = static_cast<std::size_t>(drawn_.right - drawn_.left);
    for (int y = drawn_.top; y < drawn_.bottom; ++y) {
      std::uint8_t* const row = parts_.data() + Place(drawn_.left, y);
      visit(y, drawn_.left, row, count);
      std::fill_n(row, count, std::uint8_t{0});
    }
    drawn_ = kNothing;
  }

 private:
  static constexpr PixelRect kNothing{1 << 30, 1 << 30, 0, 0};

  std::size_t Place(int x, int y) const {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
           static_cast<std::size_t>(x);
  }
  void DrawRow(int y, int first, int end, PixelPoint from, PixelPoint way, float perLength);

  int width_;
  int height_;
  float half_ = 0.0F;   // of the width
  float reach_ = 0.0F;  // of what a line covers something of
  float most_ = 1.0F;   // that it can cover
  std::vector<std::uint8_t> parts_;
  PixelRect drawn_ = kNothing;
};

}  // namespace vexel

#endif  // VEXEL_KIT_PUBLISH_LINE_MASK_H_
