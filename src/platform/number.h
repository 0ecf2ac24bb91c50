// Conversions of numbers that no file can bring to undefined behaviour.

#ifndef VEXEL_PLATFORM_NUMBER_H_
#define VEXEL_PLATFORM_NUMBER_H_

#include <algorithm>
#include <cstdint>
#include <limits>

namespace vexel {

// Truncates toward zero; what an int cannot hold becomes the nearest int, and NaN becomes 0.
inline int TruncateToInt(double value) noexcept {
  constexpr double kMost = std::numeric_limits<int>::max();
  constexpr double kLeast = std::numeric_limits<int>::min();
  if (value > kLeast && value < kMost) [[likely]] {
    return static_cast<int>(value);
  }
  if (value >= kMost) return std::numeric_limits<int>::max();
  return value <= kLeast ? std::numeric_limits<int>::min() : 0;
}

// Narrows to a float; what a float cannot hold becomes the largest or lowest float.
inline float NarrowToFloat(double value) noexcept {
  constexpr double kMost = std::numeric_limits<float>::max();
  if (value >= -kMost && value <= kMost) [[likely]] {
    return static_cast<float>(value);
  }
  if (value > kMost) return std::numeric_limits<float>::max();
  return value < -kMost ? std::numeric_limits<float>::lowest() : 0.0F;
}

// The nearest int of a 64-bit result.
constexpr int SaturateToInt(std::int64_t value) noexcept {
  return static_cast<int>(std::clamp<std::int64_t>(value, std::numeric_limits<int>::min(),
                                                   std::numeric_limits<int>::max()));
}

// The low 32 bits, as a signed number.
constexpr std::int32_t LowInt32(std::int64_t value) noexcept {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
}

}  // namespace vexel

#endif  // VEXEL_PLATFORM_NUMBER_H_
