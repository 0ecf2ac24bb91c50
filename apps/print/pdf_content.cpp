#include "pdf_content.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <initializer_list>
#include <string_view>
#include <utility>

namespace vexel::print {

namespace {

class ContentWriter {
 public:
  explicit ContentWriter(const Drawing& drawing) : drawing_(drawing) {}

  std::string Write() {
    const double height = drawing_.height * kPointsOfPixel;
    if (drawing_.background) {
      SetFill(*drawing_.background);
      Numbers({0.0, 0.0, drawing_.width * kPointsOfPixel, height}, "re f\n");
    }
    // In steps of the map's grid, in which all vertices are whole numbers.
    const double step = kPointsOfPixel / drawing_.grid;
    text_ += "q 1 j\n";
    Numbers({step, 0.0, 0.0, -step, 0.0, height}, "cm\n");
    WriteAreas();
    for (const OutlineShapes& outline : drawing_.outlines) {
      SetLine(outline.stroke, drawing_.grid);
      AddRings(outline.rings);
      text_ += "S\n";
    }
    text_ += "Q q\n";
    Numbers({kPointsOfPixel, 0.0, 0.0, -kPointsOfPixel, 0.0, height}, "cm\n");
    for (const PageBox& box : drawing_.boxes) WriteBox(box);
    text_ += "Q\n";
    return std::move(text_);
  }

 private:
  void Whole(std::int32_t number) {
    constexpr std::size_t kLongest = 12;
    std::array<char, kLongest> digits;
    char* const end = std::to_chars(digits.data(), digits.data() + kLongest, number).ptr;
    text_.append(digits.data(), end).push_back(' ');
  }

  void Numbers(std::initializer_list<double> numbers, std::string_view instruction) {
    constexpr double kParts = 1e6;
    constexpr std::size_t kLongest = 32;
    for (const double number : numbers) {
      std::array<char, kLongest> digits;
      const double rounded = std::round(number * kParts) / kParts + 0.0;
      char* const end =
          std::to_chars(digits.data(), digits.data() + kLongest, rounded, std::chars_format::fixed)
              .ptr;
      text_.append(digits.data(), end).push_back(' ');
    }
    text_ += instruction;
  }

  void SetColor(std::uint32_t color, std::string_view instruction) {
    constexpr double kMost = 255.0;
    constexpr double kParts = 1e4;  // of what a colour needs
    const auto part = [=](unsigned shift) {
      return std::round(((color >> shift) & 0xFFU) / kMost * kParts) / kParts;
    };
    Numbers({part(0), part(8), part(16)}, instruction);
  }
  void SetFill(std::uint32_t color) { SetColor(color, "rg\n"); }
  void SetLine(const LineStyle& line, double unit) {
    SetColor(line.color, "RG ");
    Numbers({line.width * unit}, "w\n");
  }

  void AddRings(const RingRange& range) {
    for (std::uint32_t i = range.first; i < range.end; ++i) {
      const auto ring = drawing_.rings.Ring(i);
      char instruction = 'm';
      for (const GridPoint& point : ring) {
        Whole(point.x);
        Whole(point.y);
        text_.push_back(instruction);
        text_.push_back('\n');
        instruction = 'l';
      }
      text_ += "h\n";
    }
  }

  void WriteAreas() {
    const double width = drawing_.areaLineWidth * drawing_.grid;
    Numbers({width}, "w\n");
    // A line of no width would be drawn as thin as a device can.
    const std::string_view both = width > 0.0 ? "B\n" : "f\n";
    const FillStyle* last = nullptr;
    for (const AreaShape& area : drawing_.areas) {
      if (area.rings.first == area.rings.end) continue;
      const FillStyle& fill = drawing_.fills[area.fill];
      if (&fill != last) {
        SetFill(fill.color);
        const std::uint32_t line = fill.line.value_or(drawing_.areaLine.value_or(fill.color));
        SetColor(drawing_.areaLine ? line : fill.color, "RG\n");
        last = &fill;
      }
      const std::size_t begin = text_.size();
      AddRings(area.rings);
      if (fill.hatch) {
        const std::string path = text_.substr(begin);
        text_ += "f\n";
        Hatch(path, *fill.hatch, BoundsOf(area.rings), drawing_.grid);
        text_ += path;
        text_ += width > 0.0 ? "S\n" : "n\n";
      } else {
        text_ += both;
      }
    }
  }

  PageArea BoundsOf(const RingRange& range) const {
    GridPoint least = drawing_.rings.Ring(range.first).front();
    GridPoint most = least;
    for (std::uint32_t i = range.first; i < range.end; ++i) {
      for (const GridPoint& point : drawing_.rings.Ring(i)) {
        least = {std::min(least.x, point.x), std::min(least.y, point.y)};
        most = {std::max(most.x, point.x), std::max(most.y, point.y)};
      }
    }
    const double unit = 1.0 / drawing_.grid;
    return {least.x * unit, least.y * unit, (most.x - least.x) * unit, (most.y - least.y) * unit};
  }

  // Lines over the inside of a path, at places that are the same for every path. A unit is one of
  // so many parts of a page pixel.
  void Hatch(const std::string& path, std::uint32_t color, const PageArea& bounds, double unit) {
    text_ += "q\n" + path + "W n\n";
    const double width = drawing_.hatchStep * kHatchWidth;
    SetLine({color, width}, unit);
    // A line is where x + y is `sum`.
    const double diagonal = std::sqrt(2.0);
    const double step = drawing_.hatchStep * diagonal;
    const double middle = width / 2.0 * diagonal;
    const double top = bounds.top - width;
    const double bottom = bounds.top + bounds.height + width;
    const double first = std::floor((bounds.left + bounds.top) / step) * step + middle;
    const double last = bounds.left + bounds.width + bounds.top + bounds.height + step;
    const auto count = static_cast<int>(std::ceil((last - first) / step));
    for (int i = 0; i < count; ++i) {
      const double sum = first + i * step;
      Numbers({(sum - top) * unit, top * unit}, "m ");
      Numbers({(sum - bottom) * unit, bottom * unit}, "l\n");
    }
    text_ += "S Q\n";
  }

  void WriteBox(const PageBox& box) {
    const FillStyle& fill = drawing_.fills[box.fill];
    const std::size_t begin = text_.size();
    Numbers({box.left, box.top, box.width, box.height}, "re\n");
    const std::string path = text_.substr(begin);
    text_.resize(begin);
    SetFill(fill.color);
    text_ += path + "f\n";
    if (fill.hatch) {
      Hatch(path, *fill.hatch, {box.left, box.top, box.width, box.height}, 1.0);
    }
    if (box.stroke.width <= 0.0) return;
    SetLine(box.stroke, 1.0);
    text_ += path + "S\n";
  }

  const Drawing& drawing_;
  std::string text_;
};

}  // namespace

std::string PdfContent(const Drawing& drawing) { return ContentWriter(drawing).Write(); }

}  // namespace vexel::print
