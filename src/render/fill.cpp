#include "render/fill.h"

#include <gd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <numeric>

#include "platform/number.h"
#include "render/edge_cache.h"

namespace vexel {

namespace {

// Crossings held at a time, unless a single row has more, and columns whose crossings are counted
// at a time: an outline that runs up and down the page a million times takes no memory for it.
constexpr std::size_t kMostCrossings = std::size_t{1} << 18;
constexpr std::size_t kMostColumns = std::size_t{1} << 22;

// From one crossing for so many columns on, to count those of each column beats sorting them.
constexpr std::size_t kColumnsPerCrossing = 8;

// Columns beside the image that take part.
constexpr std::size_t kSides = 2;

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

// The crossings of an edge whose products fit an int, in gd's own mix of int, float and double: a
// page must not change by a pixel with the way it is filled.
template <typename Add>
void AddCrossings(const Edge& edge, int from, int to, const Add add) {
  const auto [upper, lower] = edge;
  const std::int64_t dx = lower.x - upper.x;
  const auto dy = static_cast<float>(lower.y - upper.y);
  std::int64_t product = (from - upper.y) * dx;
  for (int row = from; row < to; ++row, product += dx) {
    add(row, static_cast<int>(double{static_cast<float>(product) / dy} + 0.5 + upper.x));
  }
}

// The rows to be crossed. `lastOfAll` is that of the polygon on the image, `bottom` its own.
struct Rows {
  int first;
  int last;
  int lastOfAll;
  int bottom;
};

// Calls `add` with row and column of each crossing of an edge.
template <typename Add>
void ForEachCrossing(const Edge& edge, const Rows& rows, const Add& add) {
  if (edge.upper.y > rows.last || edge.lower.y < rows.first) return;
  const int from = std::max(edge.upper.y, rows.first);
  const int to = std::min(edge.lower.y, rows.last + 1);
  if (FitsInt(edge, std::int64_t{rows.lastOfAll} + 1)) {
    AddCrossings(edge, from, to, add);
  } else {
    for (int row = from; row < to; ++row) {
      add(row, ExactCrossing(edge, std::int64_t{row} - edge.upper.y));
    }
  }
  if (edge.lower.y == rows.bottom && rows.bottom <= rows.last) add(rows.bottom, edge.lower.x);
}

// What most polygons of a large map are: a few rows and edges somewhere on the image.
constexpr int kFewRows = 16;
constexpr std::size_t kFewVertices = 48;

bool IsSmall(const Ring& ring, const gdImageStruct& image) {
  // What lies inside comes first: elsewhere rows may be too far apart to be counted.
  return ring.vertices.size() <= kFewVertices && ring.IsInside(image.sx, image.sy) &&
         ring.bounds.bottom - ring.bounds.top < kFewRows;
}

// The crossings of a small polygon, each row's in ascending order.
class SmallRows {
 public:
  void Add(int row, int column) {
    Row& crossings = rows_[static_cast<std::size_t>(row)];
    std::size_t& count = counts_[static_cast<std::size_t>(row)];
    std::size_t at = count++;
    for (; at > 0 && crossings[at - 1] > column; --at) crossings[at] = crossings[at - 1];
    crossings[at] = column;
  }

  std::span<const int> At(int row) const {
    const auto index = static_cast<std::size_t>(row);
    return {rows_[index].data(), counts_[index]};
  }

 private:
  using Row = std::array<int, kFewVertices>;  // no edge crosses a row twice

  std::array<Row, kFewRows> rows_;  // filled as far as the counts go
  std::array<std::size_t, kFewRows> counts_{};
};

// One crossing more. Beyond three only their being odd or even tells: of two at one column the
// first ends or begins a span there and the second undoes it, with the column painted.
constexpr std::uint8_t OneMore(std::uint8_t count) {
  constexpr std::uint32_t kNext = 0x02030201;
  return static_cast<std::uint8_t>(kNext >> (8U * count));
}

// As ForEachEdge, with less to do for edges that are the same: what makes no difference to the
// counts of their crossings is left out.
template <typename Use>
void ForEachDifferentEdge(std::span<const CPoint> ring, Use use) {
  EdgeCache cache;
  const auto useUp = [&](const EdgeCache::Entry& entry) {
    for (int i = 0; i < entry.times; ++i) use(Edge{entry.from, entry.to});
  };
  ForEachEdge(ring, [&](const Edge& edge) {
    EdgeCache::Entry& entry = cache.PlaceOf(edge.upper, edge.lower);
    if (!entry.Is(edge.upper, edge.lower)) {
      useUp(entry);
      entry = {edge.upper, edge.lower};
    }
    entry.times = OneMore(entry.times);
  });
  for (const EdgeCache::Entry& entry : cache.Entries()) useUp(entry);
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

// Paints between the first and second crossing, the third and fourth and so on.
void PaintBetween(gdImageStruct& image, int row, std::span<const int> ascending,
                  unsigned char color) {
  for (std::size_t i = 1; i < ascending.size(); i += 2) {
    PaintSpan(image, row, ascending[i - 1], ascending[i], color);
  }
}

// Fills without counting first, sorting later or looking for what lies beside the image: three
// times as fast as the general way for a polygon of five rows.
void FillSmall(gdImageStruct& image, const Ring& ring, unsigned char color) {
  const int top = ring.bounds.top;
  const int bottom = ring.bounds.bottom;
  SmallRows rows;
  const auto add = [&](int row, int column) { rows.Add(row - top, column); };
  ForEachEdge(ring.vertices, [&](const Edge& edge) {
    add(edge.upper.y, edge.upper.x);  // most edges have no other row
    AddCrossings(edge, edge.upper.y + 1, edge.lower.y, add);
    if (edge.lower.y == bottom) add(bottom, edge.lower.x);
  });
  for (int row = top; row <= bottom; ++row) PaintBetween(image, row, rows.At(row - top), color);
}

// Paints the spans of a row from the counts of the crossings in the columns from -1 on.
void PaintCounted(gdImageStruct& image, int row, std::span<const std::uint8_t> counts,
                  unsigned char color) {
  constexpr int kOutside = -2;
  int left = kOutside;
  int column = -1;
  for (const std::uint8_t count : counts) {
    if (count > 1) PaintSpan(image, row, column, column, color);
    if (count % 2 != 0 && left != kOutside) {
      PaintSpan(image, row, left, column, color);
      left = kOutside;
    } else if (count % 2 != 0) {
      left = column;
    }
    ++column;
  }
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
  if (IsSmall(ring, image)) {
    FillSmall(image, ring, color);
    return;
  }
  const int last = std::min(bounds.bottom, image.sy - 1);
  origin_ = std::max(bounds.top, 0);
  CountCrossings(ring, origin_, last);
  const std::size_t columns = static_cast<std::size_t>(image.sx) + kSides;
  const std::size_t crossings = std::accumulate(counts_.begin(), counts_.end(), std::size_t{0});
  if (crossings > std::max(kMostCrossings, counts_.size() * columns / kColumnsPerCrossing)) {
    FillByColumns(image, ring, last, color);
  } else {
    FillBySorting(image, ring, last, color);
  }
}

void PolygonFiller::FillBySorting(gdImageStruct& image, const Ring& ring, int last,
                                  unsigned char color) {
  for (int first = origin_; first <= last;) {
    const int end = EndOfBand(first, last);
    MakeRoom(first, end);
    const Rows rows{first, end, last, ring.bounds.bottom};
    const auto add = [this](int row, int column) { crossings_[ends_[IndexOf(row)]++] = column; };
    ForEachEdge(ring.vertices, [&](const Edge& edge) { ForEachCrossing(edge, rows, add); });
    Paint(image, first, end, color);
    first = end + 1;
  }
}

// A column on either side of the image stands for all beyond it.
void PolygonFiller::FillByColumns(gdImageStruct& image, const Ring& ring, int last,
                                  unsigned char color) {
  const std::size_t columns = static_cast<std::size_t>(image.sx) + kSides;
  const int room = static_cast<int>(std::max<std::size_t>(kMostColumns / columns, 1));
  for (int first = origin_; first <= last; first += room) {
    const int end = std::min(last - first, room - 1) + first;
    columnCounts_.assign(columns * static_cast<std::size_t>(end - first + 1), 0);
    // Bytes may alias anything: what the loop needs is its own.
    const auto add = [=, counts = columnCounts_.data(), width = image.sx](int row, int column) {
      const auto at = static_cast<std::size_t>(std::clamp(column, -1, width) + 1);
      std::uint8_t& count = counts[static_cast<std::size_t>(row - first) * columns + at];
      count = OneMore(count);
    };
    const Rows rows{first, end, last, ring.bounds.bottom};
    ForEachDifferentEdge(ring.vertices,
                         [&](const Edge& edge) { ForEachCrossing(edge, rows, add); });
    for (int row = first; row <= end; ++row) {
      const std::size_t begin = static_cast<std::size_t>(row - first) * columns;
      PaintCounted(image, row, std::span(columnCounts_).subspan(begin, columns), color);
    }
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

void PolygonFiller::Paint(gdImageStruct& image, int first, int last, unsigned char color) {
  for (int row = first; row <= last; ++row) {
    const std::size_t count = counts_[IndexOf(row)];
    const std::span<int> columns(crossings_.data() + (ends_[IndexOf(row)] - count), count);
    Sort(columns);
    PaintBetween(image, row, columns, color);
  }
}

}  // namespace vexel
