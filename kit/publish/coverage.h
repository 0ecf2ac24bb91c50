// How much of each pixel a shape covers.

#ifndef VEXEL_KIT_PUBLISH_COVERAGE_H_
#define VEXEL_KIT_PUBLISH_COVERAGE_H_

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace vexel {

struct PixelPoint {
  float x = 0.0F;
  float y = 0.0F;
};

// A rectangle of whole pixels.
struct PixelRect {
  int left = 0;
  int top = 0;
  int right = 0;  // behind the last
  int bottom = 0;

  bool IsEmpty() const { return left >= right || top >= bottom; }
};

// The exact area of each pixel that lies within some rings, by the method of accumulated areas: an
// edge says for each row how much of a pixel, and of all pixels to the right of it, lies beyond it,
// and the sum of all edges is the winding number times the area. An edge that comes twice, once in
// each direction, adds up to nothing, so that what neighbours cover adds up to all of a pixel.
//
// Cells that no edge has touched cost next to nothing.
class Coverage {
 public:
  // Begins a shape within so many pixels. What lies outside counts as far as it must.
  void Begin(int width, int height);

  // An edge, in pixels from the left upper corner.
  void AddEdge(PixelPoint from, PixelPoint to);

  // Ends the shape. Calls visit(y, first, end, part) for all runs of pixels that are covered alike,
  // by part / 255, from above; of each row from the left. Negative windings count as positive ones,
  // and those of more than one as one.
  template <typename Visit>
  void End(const Visit& visit);

 private:
  void AddInside(PixelPoint from, PixelPoint to, float sign);
  void AddInRow(std::size_t row, float x, float xNext, float cover);
  void AddToCell(std::size_t row, int column, float meanX, float cover);

  static std::uint32_t PartOfSum(float sum) {
    constexpr float kAll = 255.0F;
    constexpr float kToNearest = 0.5F;
    return static_cast<std::uint32_t>(std::min(std::fabs(sum), 1.0F) * kAll + kToNearest);
  }

  static constexpr unsigned kWordBits = 64;

  int width_ = 0;
  int height_ = 0;
  std::size_t stride_ = 0;              // cells of a row, a whole number of words
  std::vector<float> cells_;            // all 0 between shapes
  std::vector<std::uint64_t> touched_;  // a bit for each cell
};

// -------------------------------------------------------------------------------------------------
// Implementation details.

template <typename Visit>
void Coverage::End(const Visit& visit) {
  const std::size_t words = stride_ / kWordBits;
  for (int y = 0; y < height_; ++y) {
    float* const row = cells_.data() + static_cast<std::size_t>(y) * stride_;
    std::uint64_t* const marks = touched_.data() + static_cast<std::size_t>(y) * words;
    float sum = 0.0F;
    std::uint32_t part = 0;
    int begin = 0;
    for (std::size_t word = 0; word < words; ++word) {
      for (std::uint64_t bits = marks[word]; bits != 0; bits &= bits - 1) {
        const int x = static_cast<int>(word * kWordBits) + std::countr_zero(bits);
        float& cell = row[x];
        sum += cell;
        cell = 0.0F;
        const std::uint32_t next = PartOfSum(sum);
        if (next == part) continue;
        if (part != 0) visit(y, begin, std::min(x, width_), part);
        part = next;
        begin = x;
      }
      marks[word] = 0;
    }
    if (part != 0 && begin < width_) visit(y, begin, width_, part);
  }
}

}  // namespace vexel

#endif  // VEXEL_KIT_PUBLISH_COVERAGE_H_
