// How vertices come to the page: a turn in the working space, then one scaling for each axis.

#ifndef VEXEL_RENDER_SCALE_H_
#define VEXEL_RENDER_SCALE_H_

#include <cmath>
#include <cstdint>

#include "map/rect.h"
#include "platform/geometry.h"
#include "platform/number.h"

namespace vexel {

// a * b / c, truncated toward zero, with the product formed first. Nothing overflows: arguments
// and result stop at the ends of an int. A divisor of 0 gives 0.
constexpr int Quotient(std::int64_t a, std::int64_t b, std::int64_t c) noexcept {
  if (c == 0) return 0;
  return SaturateToInt(std::int64_t{SaturateToInt(a)} * SaturateToInt(b) / c);
}

// b - a, stopping at the ends of an int.
constexpr int Distance(int a, int b) noexcept { return SaturateToInt(std::int64_t{b} - a); }

// A rectangle of sums that may have left the range of an int; they stop at its ends.
constexpr CRect MakeRect(std::int64_t left, std::int64_t top, std::int64_t right,
                         std::int64_t bottom) noexcept {
  return {SaturateToInt(left), SaturateToInt(top), SaturateToInt(right), SaturateToInt(bottom)};
}

// Maps the source values `from` to `to` linearly onto pixels: `from` comes to `start`, and `to`
// lies `length` pixels on. A source without length comes to `start` as a whole.
class Axis {
 public:
  constexpr Axis(int from, int to, int start, int length) noexcept
      : from_(from), start_(start), length_(length), divisor_(std::int64_t{to} - from) {
    if (divisor_ == 0) {
      divisor_ = 1;
      length_ = 0;
    }
  }

  constexpr int operator()(int value) const noexcept {
    return SaturateToInt(std::int64_t{length_} * Distance(from_, value) / divisor_ + start_);
  }

  int GetFrom() const noexcept { return from_; }
  int GetStart() const noexcept { return start_; }
  int GetLength() const noexcept { return length_; }
  std::int64_t GetDivisor() const noexcept { return divisor_; }

 private:
  int from_;
  int start_;
  int length_;
  std::int64_t divisor_;
};

// A turn about the origin of the working space. Sine and cosine are those of a float; what follows
// is done in double and truncated.
class Turn {
 public:
  explicit Turn(float radians) noexcept
      : sine_(NarrowToFloat(std::sin(double{radians}))),
        cosine_(NarrowToFloat(std::cos(double{radians}))) {}

  CPoint operator()(const CPoint& point) const noexcept {
    return {TruncateToInt(point.x * cosine_ - point.y * sine_),
            TruncateToInt(point.y * cosine_ + point.x * sine_)};
  }

 private:
  double sine_;
  double cosine_;
};

inline CRect Truncated(const CRectF& rect) noexcept {
  return {TruncateToInt(rect.left), TruncateToInt(rect.top), TruncateToInt(rect.right),
          TruncateToInt(rect.bottom)};
}

}  // namespace vexel

#endif  // VEXEL_RENDER_SCALE_H_
