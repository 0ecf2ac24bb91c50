// How different colours look, to normal and to colour-deficient sight.

#ifndef VEXEL_TESTS_SUPPORT_COLOR_VISION_H_
#define VEXEL_TESTS_SUPPORT_COLOR_VISION_H_

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "kit/palettes/color.h"

namespace vexel::test {

// A kind of sight, as what it makes of linear RGB: G. M. Machado, M. M. Oliveira, L. A. F.
// Fernandes, "A Physiologically-based Model for Simulation of Color Vision Deficiency", IEEE TVCG
// 15 (2009), at severity 1.0.
using Sight = std::array<std::array<double, 3>, 3>;

inline constexpr Sight kNormal{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
inline constexpr Sight kProtan{{{0.152286, 1.052583, -0.204868},
                                {0.114503, 0.786281, 0.099216},
                                {-0.003882, -0.048116, 1.051998}}};
inline constexpr Sight kDeutan{{{0.367322, 0.860646, -0.227968},
                                {0.280085, 0.672501, 0.047413},
                                {-0.011820, 0.042940, 0.968881}}};
inline constexpr Sight kTritan{{{1.255528, -0.076749, -0.178779},
                                {-0.078411, 0.930809, 0.147602},
                                {0.004733, 0.691367, 0.303900}}};

inline LinearRgb Seen(const Sight& sight, const LinearRgb& rgb) {
  LinearRgb seen{};
  std::transform(sight.begin(), sight.end(), seen.begin(), [&](const auto& row) {
    return std::clamp(row[0] * rgb[0] + row[1] * rgb[1] + row[2] * rgb[2], 0.0, 1.0);
  });
  return seen;
}

// The terms below have the names that the formula's authors gave them.
namespace ciede {

constexpr double kDegree = std::numbers::pi / 180.0;

inline double Cos(double degrees) { return std::cos(degrees * kDegree); }

// sqrt(c^7 / (c^7 + 25^7)).
inline double Chromatic(double c) {
  const double c7 = std::pow(c, 7);
  return std::sqrt(c7 / (c7 + std::pow(25.0, 7)));
}

// 0 to 360; 0 for grey.
inline double Hue(double a, double b) {
  const double degrees = std::atan2(b, a) / kDegree;
  return degrees < 0.0 ? degrees + 360.0 : degrees;
}

// From one hue to the other, the shorter way round.
inline double HueStep(double h1, double h2) {
  const double step = h2 - h1;
  if (step > 180.0) return step - 360.0;
  return step < -180.0 ? step + 360.0 : step;
}

// Half-way between two hues on the shorter way round.
inline double MeanHue(double h1, double h2) {
  if (std::abs(h1 - h2) <= 180.0) return (h1 + h2) / 2.0;
  return (h1 + h2 + (h1 + h2 < 360.0 ? 360.0 : -360.0)) / 2.0;
}

inline double HueWeight(double h) {
  return 1.0 - 0.17 * Cos(h - 30.0) + 0.24 * Cos(2.0 * h) + 0.32 * Cos(3.0 * h + 6.0) -
         0.20 * Cos(4.0 * h - 63.0);
}

}  // namespace ciede

// CIEDE2000 with all weights 1: G. Sharma, W. Wu, E. N. Dalal, "The CIEDE2000 Color-Difference
// Formula: Implementation Notes, Supplementary Test Data, and Mathematical Observations", Color
// Research and Application 30 (2005).
inline double Difference(const Lab& x, const Lab& y) {
  const double g =
      0.5 * (1.0 - ciede::Chromatic((std::hypot(x.a, x.b) + std::hypot(y.a, y.b)) / 2.0));
  const double a1 = (1.0 + g) * x.a, a2 = (1.0 + g) * y.a;
  const double c1 = std::hypot(a1, x.b), c2 = std::hypot(a2, y.b);
  const double h1 = ciede::Hue(a1, x.b), h2 = ciede::Hue(a2, y.b);
  const bool hasGrey = c1 * c2 == 0.0;
  const double hueStep = hasGrey ? 0.0 : ciede::HueStep(h1, h2);
  const double hue = hasGrey ? h1 + h2 : ciede::MeanHue(h1, h2);
  const double chroma = (c1 + c2) / 2.0;
  const double light = std::pow((x.lightness + y.lightness) / 2.0 - 50.0, 2);

  const double dL = (y.lightness - x.lightness) / (1.0 + 0.015 * light / std::sqrt(20.0 + light));
  const double dC = (c2 - c1) / (1.0 + 0.045 * chroma);
  const double dH = 2.0 * std::sqrt(c1 * c2) * std::sin(hueStep / 2.0 * ciede::kDegree) /
                    (1.0 + 0.015 * chroma * ciede::HueWeight(hue));
  const double turn = 30.0 * std::exp(-std::pow((hue - 275.0) / 25.0, 2));
  const double rotation = -std::sin(2.0 * turn * ciede::kDegree) * 2.0 * ciede::Chromatic(chroma);
  return std::sqrt(dL * dL + dC * dC + dH * dH + rotation * dC * dH);
}

}  // namespace vexel::test

#endif  // VEXEL_TESTS_SUPPORT_COLOR_VISION_H_
