// Integer point and rectangle: plain records. Which way y grows is the user's business: map
// coordinates keep the larger y in `top`, page pixels the smaller.

#ifndef VEXEL_PLATFORM_GEOMETRY_H_
#define VEXEL_PLATFORM_GEOMETRY_H_

#include "platform/export.h"

struct CPoint {
  constexpr CPoint() noexcept = default;
  constexpr CPoint(int column, int row) noexcept : x(column), y(row) {}

  int x = 0;
  int y = 0;

  friend constexpr bool operator==(const CPoint&, const CPoint&) = default;
};

struct CRect {
  constexpr CRect() noexcept = default;
  constexpr CRect(int l, int t, int r, int b) noexcept : left(l), top(t), right(r), bottom(b) {}

  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;

  friend constexpr bool operator==(const CRect&, const CRect&) = default;
};

#endif  // VEXEL_PLATFORM_GEOMETRY_H_
