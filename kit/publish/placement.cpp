#include "kit/publish/placement.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace vexel {

namespace {

// The nearest whole number. Outlines may lie far off the page, but stay where products of their
// coordinates fit into 64 bits.
std::int32_t Nearest(double value) {
  constexpr double kFar = 1 << 29;
  const double near = std::clamp(value, -kFar, kFar) + kFar + 1.0 / 2.0;
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(near)) -
         static_cast<std::int32_t>(kFar);
}

// Twice the area, positive where the ring runs clockwise as a page shows it. Its sign is all that
// counts, and a double keeps that.
double TwiceArea(std::span<const GridPoint> ring) {
  double sum = 0.0;
  GridPoint before = ring.back();
  for (const GridPoint& point : ring) {
    sum += static_cast<double>(std::int64_t{before.x} * point.y - std::int64_t{point.x} * before.y);
    before = point;
  }
  return sum;
}

// Makes a rectangle of a ring that has no width or no height left.
void Widen(std::vector<GridPoint>& points, std::size_t begin) {
  const auto ring = std::span(points).subspan(begin);
  const auto [left, right] = std::minmax_element(
      ring.begin(), ring.end(), [](const GridPoint& a, const GridPoint& b) { return a.x < b.x; });
  const auto [top, bottom] = std::minmax_element(
      ring.begin(), ring.end(), [](const GridPoint& a, const GridPoint& b) { return a.y < b.y; });
  if (left->x != right->x && top->y != bottom->y) return;
  const GridPoint first{left->x, top->y};
  const GridPoint last{right->x + 1, bottom->y + 1};
  points.resize(begin);
  points.push_back(first);
  points.push_back({last.x, first.y});
  points.push_back(last);
  points.push_back({first.x, last.y});
}

}  // namespace

PlaneTurn::PlaneTurn(double radians) : sine_(std::sin(radians)), cosine_(std::cos(radians)) {}

void PlaneExtent::Include(const PlanePoint& point) {
  left = std::min(left, point.x);
  right = std::max(right, point.x);
  bottom = std::min(bottom, point.y);
  top = std::max(top, point.y);
}

Placement::Placement(const PlaneTurn& turn, const PlaneExtent& extent, const PageArea& map,
                     double scale, int grid)
    : turn_(turn),
      scale_(scale * grid),
      left_(map.left * grid - extent.left * scale_),
      top_(map.top * grid + extent.top * scale_) {}

GridPoint Placement::operator()(const CPoint& point) const {
  const PlanePoint turned = turn_(point);
  return {Nearest(turned.x * scale_ + left_), Nearest(top_ - turned.y * scale_)};
}

void AddRing(Rings& rings, std::span<const CPoint> vertices, bool isHole,
             const Placement& placement) {
  if (vertices.empty()) return;
  std::vector<GridPoint>& points = rings.Points();
  const std::size_t begin = rings.OpenBegin();
  for (const CPoint& vertex : vertices) {
    const GridPoint point = placement(vertex);
    if (points.size() == begin || point != points.back()) points.push_back(point);
  }
  while (points.size() > begin + 1 && points.back() == points[begin]) points.pop_back();
  double area = TwiceArea(std::span(points).subspan(begin));
  if (area == 0.0) {
    if (isHole) {
      points.resize(begin);
      return;
    }
    Widen(points, begin);
    area = 1.0;
  }
  if ((area < 0.0) != isHole) {
    std::reverse(points.begin() + static_cast<std::ptrdiff_t>(begin) + 1, points.end());
  }
  rings.End();
}

}  // namespace vexel
