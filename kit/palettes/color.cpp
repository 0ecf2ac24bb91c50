#include "kit/palettes/color.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <stdexcept>

namespace vexel {

namespace {

constexpr std::size_t kMostColors = 7;

using Matrix = std::array<std::array<double, 3>, 3>;

// Linear sRGB to CIE XYZ under D65, and back (IEC 61966-2-1, worked out to seven digits).
constexpr Matrix kToXyz{{{0.4124564, 0.3575761, 0.1804375},
                         {0.2126729, 0.7151522, 0.0721750},
                         {0.0193339, 0.1191920, 0.9503041}}};
constexpr Matrix kFromXyz{{{3.2404542, -1.5371385, -0.4985314},
                           {-0.9692660, 1.8760108, 0.0415560},
                           {0.0556434, -0.2040259, 1.0572252}}};

// What screen white is in XYZ: the row sums of kToXyz, so that greys have no hue.
constexpr std::array<double, 3> kWhite{0.9504700, 1.0000001, 1.0888300};

std::array<double, 3> Product(const Matrix& matrix, const std::array<double, 3>& vector) {
  std::array<double, 3> product{};
  std::transform(matrix.begin(), matrix.end(), product.begin(), [&](const auto& row) {
    return row[0] * vector[0] + row[1] * vector[1] + row[2] * vector[2];
  });
  return product;
}

double LinearOf(std::uint32_t byte) {
  const double part = static_cast<double>(byte & 0xFFU) / 255.0;
  return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

std::uint32_t ByteOf(double linear) {
  const double inside = std::clamp(linear, 0.0, 1.0);
  const double part =
      inside <= 0.0031308 ? inside * 12.92 : 1.055 * std::pow(inside, 1.0 / 2.4) - 0.055;
  return static_cast<std::uint32_t>(std::lround(part * 255.0));
}

// The cube root of CIELAB with its straight piece near black.
constexpr double kEpsilon = 216.0 / 24389.0;
constexpr double kKappa = 24389.0 / 27.0;

double Compressed(double t) { return t > kEpsilon ? std::cbrt(t) : (kKappa * t + 16.0) / 116.0; }

double Expanded(double f) {
  const double cube = f * f * f;
  return cube > kEpsilon ? cube : (116.0 * f - 16.0) / kKappa;
}

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// Doubles each digit of the short form: #fa0 is #ffaa00.
constexpr std::uint32_t Widened(std::uint32_t digits) {
  return ((digits & 0xF00U) << 8U | (digits & 0xF0U) << 4U | (digits & 0xFU)) * 0x11U;
}

std::uint32_t ParseColor(std::string_view text) {
  const bool hasLength = text.size() == 4 || text.size() == 7;
  if (hasLength && text.front() == '#') {
    std::uint32_t rgb = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data() + 1, end, rgb, 16);
    if (error == std::errc() && stop == end) {
      return ColorFromRgb(text.size() == 4 ? Widened(rgb) : rgb);
    }
  }
  throw std::invalid_argument('"' + std::string(text) +
                              "\" is not a colour such as #c00 or #cc0000");
}

}  // namespace

std::string ColorText(std::uint32_t color) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text = "#";
  for (const unsigned shift : {4U, 0U, 12U, 8U, 20U, 16U}) {
    text += kDigits[(color >> shift) & 0xFU];
  }
  return text;
}

std::vector<std::uint32_t> ParseColors(std::string_view text) {
  const auto count = static_cast<std::size_t>(std::count(text.begin(), text.end(), ',')) + 1;
  if (count > kMostColors) {
    throw std::invalid_argument(std::to_string(count) + " colours are more than " +
                                std::to_string(kMostColors));
  }
  std::vector<std::uint32_t> colors;
  for (std::size_t begin = 0; begin <= text.size();) {
    const std::size_t end = std::min(text.find(',', begin), text.size());
    colors.push_back(ParseColor(Trimmed(text.substr(begin, end - begin))));
    begin = end + 1;
  }
  return colors;
}

LinearRgb LinearRgbOf(std::uint32_t color) {
  return {LinearOf(color), LinearOf(color >> 8U), LinearOf(color >> 16U)};
}

Lab LabOf(const LinearRgb& rgb) {
  const auto xyz = Product(kToXyz, rgb);
  const double x = Compressed(xyz[0] / kWhite[0]);
  const double y = Compressed(xyz[1] / kWhite[1]);
  const double z = Compressed(xyz[2] / kWhite[2]);
  return {116.0 * y - 16.0, 500.0 * (x - y), 200.0 * (y - z)};
}

std::uint32_t ColorOf(const Lab& lab) {
  const double y = (lab.lightness + 16.0) / 116.0;
  const double x = y + lab.a / 500.0;
  const double z = y - lab.b / 200.0;
  const LinearRgb rgb = Product(
      kFromXyz, {Expanded(x) * kWhite[0], Expanded(y) * kWhite[1], Expanded(z) * kWhite[2]});
  return ByteOf(rgb[0]) | ByteOf(rgb[1]) << 8U | ByteOf(rgb[2]) << 16U;
}

std::uint32_t Mixed(std::uint32_t from, std::uint32_t to, double part) {
  const Lab a = LabOf(LinearRgbOf(from));
  const Lab b = LabOf(LinearRgbOf(to));
  return ColorOf({std::lerp(a.lightness, b.lightness, part), std::lerp(a.a, b.a, part),
                  std::lerp(a.b, b.b, part)});
}

double Luminance(std::uint32_t color) {
  const LinearRgb rgb = LinearRgbOf(color);
  return 0.2126 * rgb[0] + 0.7152 * rgb[1] + 0.0722 * rgb[2];
}

double Contrast(std::uint32_t a, std::uint32_t b) {
  constexpr double kFlare = 0.05;
  const auto [low, high] = std::minmax({Luminance(a), Luminance(b)});
  return (high + kFlare) / (low + kFlare);
}

bool IsDark(std::uint32_t color) {
  // Contrast is (lighter + 0.05) / (darker + 0.05).
  const double luminance = Luminance(color) + 0.05;
  return 1.05 / luminance > luminance / 0.05;
}

}  // namespace vexel
