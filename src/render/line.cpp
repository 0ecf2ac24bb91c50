#include "render/line.h"

#include <gd.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "render/edge_cache.h"

namespace vexel {

namespace {

// From so many on it pays to look whether an edge has been drawn already.
constexpr std::size_t kManyVertices = 100'000;

// Wide enough for differences of any two ints.
struct WidePoint {
  std::int64_t x;
  std::int64_t y;
};

using Coordinate = std::int64_t WidePoint::*;

// Moves the ends of a line along it until the coordinate `along` of both lies within 0 to `most`.
// False when no part of the line does.
//
// Roundings are gd's, since they decide which pixels a clipped line takes: each end moves by a
// truncated step along the slope of the whole line, but the second end of a line that crosses the
// whole image upward is truncated after its step.
bool Clip(WidePoint& a, WidePoint& b, Coordinate along, Coordinate across, std::int64_t most) {
  const auto [low, high] = std::minmax(a.*along, b.*along);
  if (low >= 0 && high <= most) return true;
  if (high < 0 || low > most) return false;
  const double slope =
      static_cast<double>(b.*across - a.*across) / static_cast<double>(b.*along - a.*along);
  const bool crossesUpward = a.*along < 0 && b.*along > most;
  for (WidePoint* end : {&a, &b}) {
    const std::int64_t edge = std::clamp<std::int64_t>(end->*along, 0, most);
    const double step = slope * static_cast<double>(edge - end->*along);
    if (crossesUpward && end == &b) {
      end->*across = static_cast<std::int64_t>(static_cast<double>(end->*across) + step);
    } else {
      end->*across += static_cast<std::int64_t>(step);
    }
    end->*along = edge;
  }
  return true;
}

bool IsInside(const CPoint& point, const gdImageStruct& image) {
  return point.x >= 0 && point.x < image.sx && point.y >= 0 && point.y < image.sy;
}

CPoint ToInside(const WidePoint& point, const gdImageStruct& image) {
  return {static_cast<int>(std::clamp<std::int64_t>(point.x, 0, image.sx - 1)),
          static_cast<int>(std::clamp<std::int64_t>(point.y, 0, image.sy - 1))};
}

void DrawHorizontal(gdImageStruct& image, int y, int x1, int x2, unsigned char color) {
  const auto [left, right] = std::minmax(x1, x2);
  std::memset(image.pixels[y] + left, color, static_cast<std::size_t>(right - left) + 1);
}

void DrawVertical(gdImageStruct& image, int x, int y1, int y2, unsigned char color) {
  const auto [top, bottom] = std::minmax(y1, y2);
  for (int y = top; y <= bottom; ++y) image.pixels[y][x] = color;
}

// Bresenham's line from left to right, one pixel a column.
void DrawFlat(gdImageStruct& image, CPoint from, CPoint to, unsigned char color) {
  if (from.x > to.x) std::swap(from, to);
  const int dx = to.x - from.x;
  const int dy = std::abs(to.y - from.y);
  const int step = to.y > from.y ? 1 : -1;
  int error = 2 * dy - dx;
  int y = from.y;
  image.pixels[y][from.x] = color;
  for (int x = from.x + 1; x <= to.x; ++x) {
    const bool steps = error >= 0;
    y += steps ? step : 0;
    error += 2 * (steps ? dy - dx : dy);
    image.pixels[y][x] = color;
  }
}

// The same from top to bottom, one pixel a row.
void DrawSteep(gdImageStruct& image, CPoint from, CPoint to, unsigned char color) {
  if (from.y > to.y) std::swap(from, to);
  const int dx = std::abs(to.x - from.x);
  const int dy = to.y - from.y;
  const int step = to.x > from.x ? 1 : -1;
  int error = 2 * dx - dy;
  int x = from.x;
  image.pixels[from.y][x] = color;
  for (int y = from.y + 1; y <= to.y; ++y) {
    const bool steps = error >= 0;
    x += steps ? step : 0;
    error += 2 * (steps ? dx - dy : dx);
    image.pixels[y][x] = color;
  }
}

void DrawInside(gdImageStruct& image, CPoint from, CPoint to, unsigned char color) {
  if (from.x == to.x) {
    DrawVertical(image, from.x, from.y, to.y, color);
  } else if (from.y == to.y) {
    DrawHorizontal(image, from.y, from.x, to.x, color);
  } else if (std::abs(to.y - from.y) <= std::abs(to.x - from.x)) {
    DrawFlat(image, from, to, color);
  } else {
    DrawSteep(image, from, to, color);
  }
}

// Draws the edges of a closed outline but the last by `draw`; a vertex that repeats the one before
// makes none.
template <typename Draw>
void DrawEdges(std::span<const CPoint> vertices, Draw draw) {
  CPoint from = vertices.front();
  for (const CPoint& to : vertices) {
    if (to == from) continue;
    draw(from, to);
    from = to;
  }
}

bool AreNeighbours(const CPoint& a, const CPoint& b) {
  return std::abs(a.x - b.x) <= 1 && std::abs(a.y - b.y) <= 1;
}

// The same for vertices that all lie on the image and the first of which is painted. On a large map
// nearly all edges lead from one pixel to the next.
void DrawEdgesInside(gdImageStruct& image, std::span<const CPoint> vertices, unsigned char color) {
  DrawEdges(vertices, [&](const CPoint& from, const CPoint& to) {
    if (AreNeighbours(from, to)) {
      image.pixels[to.y][to.x] = color;
    } else {
      DrawInside(image, from, to, color);
    }
  });
}

}  // namespace

void DrawLine(gdImageStruct& image, CPoint from, CPoint to, int paletteIndex) {
  const auto color = static_cast<unsigned char>(paletteIndex);
  if (IsInside(from, image) && IsInside(to, image)) {
    DrawInside(image, from, to, color);
    return;
  }
  WidePoint a{from.x, from.y};
  WidePoint b{to.x, to.y};
  if (!Clip(a, b, &WidePoint::x, &WidePoint::y, image.sx - 1)) return;
  if (!Clip(a, b, &WidePoint::y, &WidePoint::x, image.sy - 1)) return;
  DrawInside(image, ToInside(a, image), ToInside(b, image), color);
}

void DrawRing(gdImageStruct& image, const Ring& ring, int paletteIndex) {
  if (ring.vertices.empty() || ring.IsOff(image.sx, image.sy)) return;
  DrawLine(image, ring.vertices.front(), ring.vertices.back(), paletteIndex);
  if (ring.vertices.size() < kManyVertices && ring.IsInside(image.sx, image.sy)) {
    DrawEdgesInside(image, ring.vertices, static_cast<unsigned char>(paletteIndex));
    return;
  }
  if (ring.vertices.size() < kManyVertices) {
    DrawEdges(ring.vertices, [&](const CPoint& from, const CPoint& to) {
      DrawLine(image, from, to, paletteIndex);
    });
    return;
  }
  EdgeCache cache;
  DrawEdges(ring.vertices, [&](const CPoint& from, const CPoint& to) {
    EdgeCache::Entry& entry = cache.PlaceOf(from, to);
    if (entry.Is(from, to)) return;
    entry = {from, to, 1};
    DrawLine(image, from, to, paletteIndex);
  });
}

}  // namespace vexel
