#include "topology/segments.h"

#include <algorithm>
#include <cmath>

namespace vexel::import {
namespace {

double Dot(Vertex from, Vertex a, Vertex b) {
  return (double{a.x} - from.x) * (double{b.x} - from.x) +
         (double{a.y} - from.y) * (double{b.y} - from.y);
}

bool BoxesApart(const Segment& a, const Segment& b) {
  return std::max(a.from.x, a.to.x) < std::min(b.from.x, b.to.x) ||
         std::max(b.from.x, b.to.x) < std::min(a.from.x, a.to.x) ||
         std::max(a.from.y, a.to.y) < std::min(b.from.y, b.to.y) ||
         std::max(b.from.y, b.to.y) < std::min(a.from.y, a.to.y);
}

bool Folded(Vertex shared, Vertex a, Vertex b) {
  return Turn(shared, a, b) == 0 && Dot(shared, a, b) > 0;
}

bool OnOneSide(const Segment& line, const Segment& other) {
  const double from = Turn(line.from, line.to, other.from);
  const double to = Turn(line.from, line.to, other.to);
  return (from > 0 && to > 0) || (from < 0 && to < 0);
}

}  // namespace

double Turn(Vertex a, Vertex b, Vertex c) {
  return (double{b.x} - a.x) * (double{c.y} - a.y) - (double{b.y} - a.y) * (double{c.x} - a.x);
}

double TwiceArea(std::span<const Vertex> ring) {
  double area = 0;
  for (std::size_t i = 2; i < ring.size(); ++i) area += Turn(ring[0], ring[i - 1], ring[i]);
  return area;
}

bool Collide(const Segment& a, const Segment& b) {
  if (BoxesApart(a, b)) return false;
  if (a.from == b.from) return Folded(a.from, a.to, b.to);
  if (a.from == b.to) return Folded(a.from, a.to, b.from);
  if (a.to == b.from) return Folded(a.to, a.from, b.to);
  if (a.to == b.to) return Folded(a.to, a.from, b.from);
  return !OnOneSide(a, b) && !OnOneSide(b, a);
}

int PassedGoingWest(const Segment& segment, double x, double y) {
  const bool startsBelow = segment.from.y <= y;
  if (startsBelow == (segment.to.y <= y)) return 0;
  const double along = (y - segment.from.y) / (double{segment.to.y} - segment.from.y);
  const double passedAt = segment.from.x + along * (double{segment.to.x} - segment.from.x);
  if (passedAt >= x) return 0;
  return startsBelow ? 1 : -1;
}

SegmentGrid::SegmentGrid(std::span<const Segment> segments) : segments_(segments) {
  Measure();
  starts_.assign(columns_ * rows_ + 1, 0);
  for (const Segment& segment : segments_) {
    EachCellOf(segment, [&](std::size_t cell) { ++starts_[cell]; });
  }
  std::size_t end = 0;
  for (std::size_t& start : starts_) start = end += start;
  entries_.resize(end);
  // Filled from the last to the first, so that each cell lists its segments in their order.
  for (std::size_t i = segments_.size(); i-- > 0;) {
    EachCellOf(segments_[i], [&](std::size_t cell) {
      entries_[--starts_[cell]] = static_cast<std::uint32_t>(i);
    });
  }
}

// About a cell for each segment, none much smaller than a usual segment is long.
void SegmentGrid::Measure() {
  if (segments_.empty()) return;
  west_ = segments_[0].from.x;
  south_ = segments_[0].from.y;
  double east = west_;
  double north = south_;
  double length = 0;
  for (const auto& [from, to] : segments_) {
    west_ = std::min({west_, double{from.x}, double{to.x}});
    east = std::max({east, double{from.x}, double{to.x}});
    south_ = std::min({south_, double{from.y}, double{to.y}});
    north = std::max({north, double{from.y}, double{to.y}});
    length += std::abs(double{to.x} - from.x) + std::abs(double{to.y} - from.y);
  }
  const auto count = static_cast<double>(segments_.size());
  const double width = east - west_;
  const double height = north - south_;
  cellSize_ = std::max({std::sqrt(width * height / count), length / count / 2,
                        std::max(width, height) / count, 1e-30});
  columns_ = static_cast<std::size_t>(width / cellSize_) + 1;
  rows_ = static_cast<std::size_t>(height / cellSize_) + 1;
}

std::size_t SegmentGrid::ColumnOf(double x) const {
  const auto last = static_cast<double>(columns_ - 1);
  return static_cast<std::size_t>(std::clamp((x - west_) / cellSize_, 0.0, last));
}

std::size_t SegmentGrid::RowOf(double y) const {
  const auto last = static_cast<double>(rows_ - 1);
  return static_cast<std::size_t>(std::clamp((y - south_) / cellSize_, 0.0, last));
}

SegmentGrid::Columns SegmentGrid::ColumnsIn(const Segment& segment, std::size_t row) const {
  const double left = std::min(segment.from.x, segment.to.x);
  const double right = std::max(segment.from.x, segment.to.x);
  const double rise = double{segment.to.y} - segment.from.y;
  if (std::abs(rise) < cellSize_ * 1e-6) return {ColumnOf(left), ColumnOf(right)};
  const auto xAt = [&](double y) {
    const double along = (y - segment.from.y) / rise;
    return segment.from.x + along * (double{segment.to.x} - segment.from.x);
  };
  const double bottom = south_ + static_cast<double>(row) * cellSize_;
  const double a = xAt(bottom);
  const double b = xAt(bottom + cellSize_);
  // Wider by a trifle, for what rounding takes.
  const double slack = cellSize_ * 1e-3;
  return {ColumnOf(std::max(left, std::min(a, b) - slack)),
          ColumnOf(std::min(right, std::max(a, b) + slack))};
}

template <typename Visit>
void SegmentGrid::EachCellOf(const Segment& segment, Visit visit) const {
  const std::size_t top = RowOf(std::max(segment.from.y, segment.to.y));
  for (std::size_t row = RowOf(std::min(segment.from.y, segment.to.y)); row <= top; ++row) {
    const auto [first, last] = ColumnsIn(segment, row);
    for (std::size_t column = first; column <= last; ++column) visit(row * columns_ + column);
  }
}

}  // namespace vexel::import
