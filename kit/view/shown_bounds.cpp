#include "kit/view/shown_bounds.h"

#include <algorithm>
#include <cmath>

namespace vexel {

namespace {

constexpr int kMoreDecimals = 4;
constexpr int kMoreForWhole = 3;

double Scale(int decimals) { return std::pow(10.0, static_cast<double>(decimals)); }

// Whether a scaled number is whole, but for the noise of the scaling.
bool IsWhole(double scaled) {
  constexpr double kNoise = 1e-9;
  return std::abs(scaled - std::round(scaled)) <= kNoise * std::max(1.0, std::abs(scaled));
}

// By the engine's own comparison.
bool AreApart(std::span<const double> lower, int decimals) {
  const double step = std::pow(10.0, -static_cast<double>(decimals));
  const auto tooClose = [=](double below, double above) { return below + step > above; };
  return std::adjacent_find(lower.begin(), lower.end(), tooClose) == lower.end();
}

bool AreShownWhole(std::span<const double> lower, int decimals) {
  const double scale = Scale(decimals);
  return std::all_of(lower.begin(), lower.end(),
                     [=](double bound) { return IsWhole(bound * scale); });
}

double RoundedUp(double number, int decimals) {
  const double scale = Scale(decimals);
  const double scaled = number * scale;
  if (!std::isfinite(scaled)) return number;
  return (IsWhole(scaled) ? std::round(scaled) : std::ceil(scaled)) / scale;
}

std::vector<double> AllRoundedUp(std::span<const double> lower, int decimals, double fixed) {
  std::vector<double> moved(lower.begin(), lower.end());
  // The first bound becomes the least value in any case.
  std::transform(moved.begin() + 1, moved.end(), moved.begin() + 1,
                 [=](double bound) { return bound == fixed ? bound : RoundedUp(bound, decimals); });
  return moved;
}

}  // namespace

Rounding::Rounding(int decimals) : scale_(Scale(decimals)) {}

double Rounding::operator()(double number) const {
  const double scaled = number * scale_;
  return std::isfinite(scaled) ? std::round(scaled) / scale_ : number;
}

ShownBounds WithDecimals(std::span<const double> lower, int decimals) {
  ShownBounds shown{{lower.begin(), lower.end()}, decimals};
  int apart = decimals;
  while (apart < decimals + kMoreDecimals && !AreApart(lower, apart)) ++apart;
  if (!AreApart(lower, apart)) return shown;
  shown.decimals = apart;
  for (int whole = apart; whole <= apart + kMoreForWhole; ++whole) {
    if (!AreShownWhole(lower.subspan(1), whole)) continue;
    shown.decimals = whole;
    break;
  }
  return shown;
}

ShownBounds MovedToDecimals(std::span<const double> lower, int decimals, double fixed) {
  const ShownBounds whole = WithDecimals(lower, decimals);
  if (AreShownWhole(lower.subspan(1), whole.decimals)) return whole;
  int least = decimals;
  while (least < decimals + kMoreForWhole && !IsWhole(fixed * Scale(least))) ++least;
  for (int more = least; more <= decimals + kMoreDecimals; ++more) {
    std::vector<double> moved = AllRoundedUp(lower, more, fixed);
    if (AreApart(moved, more)) return {std::move(moved), more};
  }
  return whole;
}

}  // namespace vexel
