// A polygon in pixels.

#ifndef VEXEL_RENDER_RING_H_
#define VEXEL_RENDER_RING_H_

#include <algorithm>
#include <span>

#include "platform/geometry.h"

namespace vexel {

// Vertices of a closed polygon and their bounds, both ends included. The vertices stay the
// caller's.
struct Ring {
  explicit Ring(std::span<const CPoint> ring) noexcept : vertices(ring) {
    if (ring.empty()) return;
    int left = ring.front().x;
    int right = left;
    int top = ring.front().y;
    int bottom = top;
    for (const CPoint& vertex : ring) {
      left = std::min(left, vertex.x);
      right = std::max(right, vertex.x);
      top = std::min(top, vertex.y);
      bottom = std::max(bottom, vertex.y);
    }
    bounds = {left, top, right, bottom};
  }

  // True when neither fill nor outline can reach an image of that size. Crossings are truncated
  // toward zero, so the column left of the image still counts: what lies there fills column 0.
  bool IsOff(int width, int height) const noexcept {
    return bounds.right < -1 || bounds.left >= width || bounds.bottom < 0 || bounds.top >= height;
  }

  // True when all vertices lie on an image of that size.
  bool IsInside(int width, int height) const noexcept {
    return bounds.left >= 0 && bounds.right < width && bounds.top >= 0 && bounds.bottom < height;
  }

  std::span<const CPoint> vertices;
  CRect bounds;
};

// Copies vertices to `to` without those that repeat the one before, and returns the end of what it
// has written; of two or more it leaves two. No pixel of fill or outline changes by that. On a page
// of a hundred thousand areas two vertices of three go.
inline CPoint* CopyDistinct(std::span<const CPoint> vertices, CPoint* to) noexcept {
  if (vertices.empty()) return to;
  const CPoint* const begin = to;
  CPoint before = vertices.front();
  *to++ = before;
  for (const CPoint vertex : vertices.subspan(1)) {
    *to = vertex;
    to += (vertex.x ^ before.x) | (vertex.y ^ before.y) ? 1 : 0;
    before = vertex;
  }
  if (to - begin == 1 && vertices.size() > 1) *to++ = before;
  return to;
}

}  // namespace vexel

#endif  // VEXEL_RENDER_RING_H_
