// A page divides twice for each vertex, and a processor takes long to divide 64-bit integers. What
// follows divides both coordinates at once as doubles, 4 times as fast, with the same results.
//
// The dividend is a product of integers and less than 2^52, and so exact. Where the true quotient
// is no whole number k, it is at least 1 / divisor away from it, which is more than the last bit of
// a double near k: the rounded quotient does not reach k, and truncation gives what it gives for
// integers.

#include "render/place.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdlib>

namespace vexel {

namespace {

using Ints = int __attribute__((vector_size(8)));
using Doubles = double __attribute__((vector_size(16)));

// Coordinates on either side of 0 that keep to this stay clear of all that overflows.
constexpr int kNear = 1 << 24;
constexpr int kLongest = 1 << 20;  // pixels, of an axis and of what lies before its start

// Whether all that is near comes to pixels that an int holds.
bool IsModest(const Axis& axis) {
  if (std::abs(std::int64_t{axis.GetFrom()}) > kNear) return false;
  if (std::abs(std::int64_t{axis.GetLength()}) > kLongest) return false;
  if (std::abs(std::int64_t{axis.GetStart()}) > kLongest) return false;
  const std::int64_t most = 2 * std::int64_t{kNear} * std::abs(std::int64_t{axis.GetLength()});
  return most / std::abs(axis.GetDivisor()) <= (1 << 30);
}

bool AreNear(std::span<const CPoint> vertices) {
  int bits = 0;  // all that are set in a coordinate, or not set in one below 0
  for (const CPoint& vertex : vertices) {
    bits |= (vertex.x ^ (vertex.x >> 31)) | (vertex.y ^ (vertex.y >> 31));
  }
  return bits < kNear;
}

void PlaceNear(std::span<const CPoint> vertices, const Axis& column, const Axis& row, CPoint* to) {
  const Doubles from{static_cast<double>(column.GetFrom()), static_cast<double>(row.GetFrom())};
  const Doubles length{static_cast<double>(column.GetLength()),
                       static_cast<double>(row.GetLength())};
  const Doubles divisor{static_cast<double>(column.GetDivisor()),
                        static_cast<double>(row.GetDivisor())};
  const Ints start{column.GetStart(), row.GetStart()};
  for (const CPoint& vertex : vertices) {
    const auto point = __builtin_convertvector(std::bit_cast<Ints>(vertex), Doubles);
    const auto placed = __builtin_convertvector((point - from) * length / divisor, Ints);
    *to++ = std::bit_cast<CPoint>(placed + start);
  }
}

}  // namespace

void PlaceVertices(std::span<const CPoint> vertices, const Axis& column, const Axis& row,
                   CPoint* to) noexcept {
  if (IsModest(column) && IsModest(row) && AreNear(vertices)) {
    PlaceNear(vertices, column, row, to);
    return;
  }
  std::transform(vertices.begin(), vertices.end(), to, [&](const CPoint& vertex) {
    return CPoint{column(vertex.x), row(vertex.y)};
  });
}

}  // namespace vexel
