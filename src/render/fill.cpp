#include "render/fill.h"

#include <gd.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "platform/number.h"

namespace vexel {

namespace {

// Crossings held at a time, unless a single row has more: an outline that runs up and down the page
// a million times costs time but no memory.
constexpr std::size_t kMostCrossings = std::size_t{1} << 18;

// Beyond that many on a row, which no ordinary outline has, a sort that stays fast pays.
constexpr std::size_t kFewCrossings = 24;

struct Edge {
  CPoint upper;
  CPoint lower;
};

// Calls `use` for every edge that is not level.
template <typename Use>
void ForEachEdge(std::span<const CPoint> ring, Use use) {
  CPoint from = ring.back();
  for (const CPoint& to : ring) {
    if (from.y < to.y) {
      use(Edge{from, to});
    } else if (from.y > to.y) {
      use(Edge{to, from});
    }
    from = to;
  }
}

// The column where an edge crosses a row `rows` below its upper end, rounded, half a pixel toward
// the right, and then truncated toward zero: the exact value of what AddCrossings works out in
// floats. Both differences may take 33 bits.
int ExactCrossing(const Edge& edge, std::int64_t rows) {
  const std::int64_t dx = std::int64_t{edge.lower.x} - edge.upper.x;
  const auto dy = static_cast<std::uint64_t>(std::int64_t{edge.lower.y} - edge.upper.y);
  const auto product =
      static_cast<std::uint64_t>(rows) * static_cast<std::uint64_t>(dx < 0 ? -dx : dx);
  const auto whole = static_cast<std::int64_t>(product / dy);
  const std::uint64_t rest = product % dy;
  const bool halfway = rest == dy - rest;
  std::int64_t column = edge.upper.x;
  if (dx >= 0) {
    column += whole + (rest >= dy - rest ? 1 : 0);
  } else {
    column -= whole + (rest > dy - rest ? 1 : 0);
  }
  return SaturateToInt(column < 0 && !halfway ? column + 1 : column);
}

// True when the product of the crossing stays an int on all rows of the edge that are above `end`.
bool FitsInt(const Edge& edge, std::int64_t end) {
  const std::int64_t dx = std::int64_t{edge.lower.x} - edge.upper.x;
  const std::int64_t dy = std::int64_t{edge.lower.y} - edge.upper.y;
  if (dx != LowInt32(dx) || dy != LowInt32(dy)) return false;
  const std::int64_t most = (std::min<std::int64_t>(edge.lower.y, end) - 1 - edge.upper.y) * dx;
  return most == LowInt32(most);
}

void Sort(std::span<int> values) {
  if (values.size() > kFewCrossings) {
    std::sort(values.begin(), values.end());
    return;
  }
  for (std::size_t i = 1; i < values.size(); ++i) {
    const int value = values[i];
    std::size_t at = i;
    for (; at > 0 && values[at - 1] > value; --at) values[at] = values[at - 1];
    values[at] = value;
  }
}

void PaintSpan(gdImageStruct& image, int row, int left, int right, unsigned char color) {
  left = std::max(left, 0);
  right = std::min(right, image.sx - 1);
  if (left > right) return;
  std::memset(image.pixels[row] + left, color, static_cast<std::size_t>(right - left) + 1);
}

}  // namespace

void PolygonFiller::Fill(gdImageStruct& image, const Ring& ring, int paletteIndex) {
  if (ring.vertices.size() < 2 || ring.IsOff(image.sx, image.sy)) return;
  const auto color = static_cast<unsigned char>(paletteIndex);
  const CRect& bounds = ring.bounds;
  if (bounds.top == bounds.bottom) {
    PaintSpan(image, bounds.top, bounds.left, bounds.right, color);
    return;
  }
  const int last = std::min(bounds.bottom, image.sy - 1);
  origin_ = std::max(bounds.top, 0);
  CountCrossings(ring, origin_, last);
  for (int first = origin_; first <= last;) {
    const int end = EndOfBand(first, last);
    FindCrossings(ring, first, end, last);
    Paint(image, first, end, color);
    first = end + 1;
  }
}

void PolygonFiller::CountCrossings(const Ring& ring, int first, int last) {
  // Beginnings and ends of edges first, which then add up to counts. They wrap below 0 in between.
  counts_.assign(IndexOf(last) + 2, 0);
  const int bottom = ring.bounds.bottom;
  ForEachEdge(ring.vertices, [&](const Edge& edge) {
    const int from = std::max(edge.upper.y, first);
    const int to = edge.lower.y == bottom ? last + 1 : std::min(edge.lower.y, last + 1);
    if (from >= to) return;
    ++counts_[IndexOf(from)];
    --counts_[IndexOf(to)];
  });
  for (std::size_t i = 1; i < counts_.size(); ++i) counts_[i] += counts_[i - 1];
}

// The last row of a band that begins with `first`.
int PolygonFiller::EndOfBand(int first, int last) const {
  std::size_t total = counts_[IndexOf(first)];
  int end = first;
  while (end < last && total + counts_[IndexOf(end + 1)] <= kMostCrossings) {
    total += counts_[IndexOf(++end)];
  }
  return end;
}

void PolygonFiller::FindCrossings(const Ring& ring, int first, int last, int lastOfAll) {
  MakeRoom(first, last);
  const int bottom = ring.bounds.bottom;
  ForEachEdge(ring.vertices, [&](const Edge& edge) {
    if (edge.upper.y > last || edge.lower.y < first) return;
    const int from = std::max(edge.upper.y, first);
    const int to = std::min(edge.lower.y, last + 1);
    if (FitsInt(edge, std::int64_t{lastOfAll} + 1)) {
      AddCrossings(edge.upper, edge.lower, from, to);
    } else {
      for (int row = from; row < to; ++row) {
        Add(row, ExactCrossing(edge, std::int64_t{row} - edge.upper.y));
      }
    }
    if (edge.lower.y == bottom && bottom <= last) Add(bottom, edge.lower.x);
  });
}

// Sets the ends to the beginnings: each row has room for its crossings, as they were counted.
void PolygonFiller::MakeRoom(int first, int last) {
  const std::size_t begin = IndexOf(first);
  const std::size_t end = IndexOf(last) + 1;
  std::size_t total = 0;
  ends_.resize(std::max(ends_.size(), end));
  for (std::size_t i = begin; i < end; ++i) {
    ends_[i] = total;
    total += counts_[i];
  }
  if (crossings_.size() < total) crossings_.resize(total);
}

// The crossings of an edge whose products fit an int, in gd's own mix of int, float and double: a
// page must not change by a pixel with the way it is filled.
void PolygonFiller::AddCrossings(const CPoint& upper, const CPoint& lower, int from, int to) {
  const std::int64_t dx = lower.x - upper.x;
  const auto dy = static_cast<float>(lower.y - upper.y);
  std::int64_t product = (from - upper.y) * dx;
  for (int row = from; row < to; ++row, product += dx) {
    Add(row, static_cast<int>(double{static_cast<float>(product) / dy} + 0.5 + upper.x));
  }
}

void PolygonFiller::Paint(gdImageStruct& image, int first, int last, unsigned char color) {
  for (int row = first; row <= last; ++row) {
    const std::size_t count = counts_[IndexOf(row)];
    const std::span<int> columns(crossings_.data() + (ends_[IndexOf(row)] - count), count);
    Sort(columns);
    for (std::size_t i = 1; i < count; i += 2) {
      PaintSpan(image, row, columns[i - 1], columns[i], color);
    }
  }
}

}  // namespace vexel
