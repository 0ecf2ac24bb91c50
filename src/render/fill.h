// Filled polygons on a palette image.

#ifndef VEXEL_RENDER_FILL_H_
#define VEXEL_RENDER_FILL_H_

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/geometry.h"
#include "render/ring.h"

struct gdImageStruct;

namespace vexel {

// Fills polygons by the even-odd rule, pixel for pixel as gdImageFilledPolygon does wherever that
// one's int arithmetic holds, and exactly beyond: coordinates may be any ints.
//
// On each row of pixels the edges that reach it are crossed, an edge counting from its upper end to
// just above its lower one; on the last row of the polygon the lower ends count instead. Between
// the first and second crossing, the third and fourth and so on every pixel is painted, both ends
// included. A polygon that lies on one row is painted from its leftmost to its rightmost vertex.
//
// The cost goes by edges, rows, crossings and pixels. The object keeps its storage, so that filling
// one polygon after another does not allocate.
class PolygonFiller {
 public:
  void Fill(gdImageStruct& image, const Ring& ring, int paletteIndex);

 private:
  void CountCrossings(const Ring& ring, int first, int last);
  int EndOfBand(int first, int last) const;
  void FillBySorting(gdImageStruct& image, const Ring& ring, int last, unsigned char color);
  void FillByColumns(gdImageStruct& image, const Ring& ring, int last, unsigned char color);
  void MakeRoom(int first, int last);
  void Paint(gdImageStruct& image, int first, int last, unsigned char color);

  // The rows at work have indexes from `origin_` on.
  std::size_t IndexOf(int row) const { return static_cast<std::size_t>(row - origin_); }

  int origin_ = 0;
  std::vector<std::size_t> counts_;         // of the crossings of each row, and one more
  std::vector<std::size_t> ends_;           // where the next crossing of each row goes
  std::vector<int> crossings_;              // of the rows at work, row after row
  std::vector<std::uint8_t> columnCounts_;  // how often each column of the rows is crossed
};

}  // namespace vexel

#endif  // VEXEL_RENDER_FILL_H_
