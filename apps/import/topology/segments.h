// Straight pieces of borders, and where they meet.

#ifndef VEXEL_APPS_IMPORT_TOPOLOGY_SEGMENTS_H_
#define VEXEL_APPS_IMPORT_TOPOLOGY_SEGMENTS_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "shape.h"

namespace vexel::import {

struct Segment {
  Vertex from;
  Vertex to;
};

// Twice the area of the triangle a, b, c: above 0 where it turns to the left.
double Turn(Vertex a, Vertex b, Vertex c);

// Twice the area within a ring, above 0 where it runs against the clock.
double TwiceArea(std::span<const Vertex> ring);

// Whether two segments have more in common than an end of both: they cross, one ends upon the
// other, or they run along each other.
bool Collide(const Segment& a, const Segment& b);

// How a ray from (x, y) to the west passes a segment: 1 where that runs up, -1 where it runs down,
// 0 where the ray misses it.
int PassedGoingWest(const Segment& segment, double x, double y);

// Segments by the cells of a grid that they run through: near ones are found without a look at all.
class SegmentGrid {
 public:
  // Keeps the span: the segments must outlive the grid.
  explicit SegmentGrid(std::span<const Segment> segments);

  // Calls meet(i, j), i < j, for each two segments in one cell, perhaps several times, until one
  // call gives false; gives whether none did.
  template <typename Meet>
  bool EachNearPair(Meet meet) const {
    for (std::size_t cell = 0; cell + 1 < starts_.size(); ++cell) {
      for (std::size_t i = starts_[cell]; i < starts_[cell + 1]; ++i) {
        for (std::size_t j = i + 1; j < starts_[cell + 1]; ++j) {
          if (!meet(std::size_t{entries_[i]}, std::size_t{entries_[j]})) return false;
        }
      }
    }
    return true;
  }

  // Calls visit(i) for each segment in a cell that the box between two corners reaches into,
  // perhaps several times, until one call gives false.
  template <typename Visit>
  void EachNear(Vertex low, Vertex high, Visit visit) const {
    const std::size_t lastColumn = ColumnOf(high.x);
    const std::size_t lastRow = RowOf(high.y);
    for (std::size_t row = RowOf(low.y); row <= lastRow; ++row) {
      for (std::size_t column = ColumnOf(low.x); column <= lastColumn; ++column) {
        const std::size_t cell = row * columns_ + column;
        for (std::size_t i = starts_[cell]; i < starts_[cell + 1]; ++i) {
          if (!visit(std::size_t{entries_[i]})) return;
        }
      }
    }
  }

  // Calls pass(i, direction) once for each segment that a ray from (x, y) to the west passes.
  template <typename Pass>
  void EachWestOf(double x, double y, Pass pass) const {
    const std::size_t row = RowOf(y);
    const std::size_t last = ColumnOf(x);
    for (std::size_t column = 0; column <= last; ++column) {
      const std::size_t cell = row * columns_ + column;
      for (std::size_t i = starts_[cell]; i < starts_[cell + 1]; ++i) {
        const Segment& segment = segments_[entries_[i]];
        const int direction = PassedGoingWest(segment, x, y);
        // It stands in each cell of the row that it runs through, and counts in the first.
        if (direction == 0 || ColumnsIn(segment, row).first != column) continue;
        pass(std::size_t{entries_[i]}, direction);
      }
    }
  }

 private:
  struct Columns {
    std::size_t first;
    std::size_t last;
  };

  std::size_t ColumnOf(double x) const;
  std::size_t RowOf(double y) const;
  Columns ColumnsIn(const Segment& segment, std::size_t row) const;
  template <typename Visit>
  void EachCellOf(const Segment& segment, Visit visit) const;
  void Measure();

  std::span<const Segment> segments_;
  double west_ = 0;
  double south_ = 0;
  double cellSize_ = 1;
  std::size_t columns_ = 1;
  std::size_t rows_ = 1;
  std::vector<std::size_t> starts_;
  std::vector<std::uint32_t> entries_;
};

}  // namespace vexel::import

#endif  // VEXEL_APPS_IMPORT_TOPOLOGY_SEGMENTS_H_
