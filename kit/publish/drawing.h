// The list of things to draw that a publication page comes to. What makes it knows no medium, and a
// medium that draws it knows no map.

#ifndef VEXEL_KIT_PUBLISH_DRAWING_H_
#define VEXEL_KIT_PUBLISH_DRAWING_H_

#include <vexel/platform/export.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vexel {

// A vertex in parts of a page pixel, Drawing::grid of them to one; y grows downward.
struct GridPoint {
  std::int32_t x = 0;
  std::int32_t y = 0;

  friend constexpr bool operator==(const GridPoint&, const GridPoint&) = default;
};

// Closed rings, one behind the other in one list of vertices.
class VEXEL_API Rings {
 public:
  std::size_t Count() const { return ends_.size(); }
  std::size_t VertexCount() const { return points_.size(); }
  void Reserve(std::size_t vertices, std::size_t rings) {
    points_.reserve(vertices);
    ends_.reserve(rings);
  }
  std::span<const GridPoint> Ring(std::size_t index) const {
    const std::size_t begin = index == 0 ? 0 : ends_[index - 1];
    return std::span(points_).subspan(begin, ends_[index] - begin);
  }

  // The ring that is being made: its vertices so far, to be added to and mended in place. It counts
  // once it is ended.
  std::vector<GridPoint>& Points() { return points_; }
  std::size_t OpenBegin() const { return ends_.empty() ? 0 : ends_.back(); }
  void End() { ends_.push_back(static_cast<std::uint32_t>(points_.size())); }

 private:
  std::vector<GridPoint> points_;
  std::vector<std::uint32_t> ends_;
};

// Some of the rings, by their numbers: first, and the one behind the last.
struct RingRange {
  std::uint32_t first = 0;
  std::uint32_t end = 0;
};

// A part of Drawing::words.
struct WordRange {
  std::uint32_t begin = 0;
  std::uint32_t length = 0;
};

// What areas and boxes are filled with. Colours are 0x00BBGGRR.
struct FillStyle {
  std::string name;  // a word of letters and digits, unlike that of every other
  std::uint32_t color = 0;
  std::optional<std::uint32_t> hatch;   // lines in this colour over it
  std::optional<std::uint32_t> line{};  // around its areas, where Drawing::areaLine would not show
};

// The lines of a hatch go up to the right at 45 degrees, one of them from the page's left upper
// corner, as wide as this part of their distance.
inline constexpr double kHatchWidth = 0.25;

// The rim of a text with a halo, both sides together, in sizes of the text.
inline constexpr double kHaloWidth = 0.25;

// A line's width is in page pixels.
struct LineStyle {
  std::uint32_t color = 0;
  double width = 0.0;
};

// An area of the map. Its outline goes one way round and its holes the other, so that the rule of
// nonzero winding fills it.
struct AreaShape {
  RingRange rings;
  std::uint16_t fill = 0;  // in Drawing::fills
  WordRange key;           // codes with commas between: "12,3"
  WordRange name;
  WordRange value;  // with the decimals of its variable, or what stands for a missing one
};

// Outlines that are not filled.
struct OutlineShapes {
  std::string name;  // as that of a fill
  LineStyle stroke;
  RingRange rings;
};

// A rectangle in page pixels with a line around it.
struct PageBox {
  double left = 0.0;
  double top = 0.0;
  double width = 0.0;
  double height = 0.0;
  std::uint16_t fill = 0;
  LineStyle stroke;
};

enum class TextRole { title, subtitle, legend, label, note };
enum class TextAnchor { start, middle, end };

// A line of text. Its letters are those of a common face without serifs; a medium whose face runs
// wider than `room` narrows it to that.
struct TextLine {
  std::string text;  // UTF-8 without control characters
  double x = 0.0;    // page pixels, of the anchor
  double y = 0.0;    // of the baseline
  double size = 0.0;
  double room = 0.0;
  TextAnchor anchor = TextAnchor::start;
  TextRole role = TextRole::label;
  bool isBold = false;
  std::uint32_t color = 0;
  std::optional<std::uint32_t> halo;  // a rim in this colour
};

// A rectangle of the page, in its pixels.
struct PageArea {
  double left = 0.0;
  double top = 0.0;
  double width = 0.0;
  double height = 0.0;
};

// A page. Its parts are drawn in the order in which they stand here.
struct VEXEL_API Drawing {
  int width = 0;  // page pixels
  int height = 0;
  std::optional<std::uint32_t> background;
  std::string title;        // for those who do not see it
  std::string description;  // likewise

  int grid = 1;
  Rings rings;
  std::string words;
  std::vector<FillStyle> fills;
  double hatchStep = 4.0;  // from line to line of a hatch, in page pixels

  std::vector<AreaShape> areas;
  // Around each area, over its fill. Nothing: in the colour of its own fill, which keeps the page
  // from shining through between neighbours.
  std::optional<std::uint32_t> areaLine;
  double areaLineWidth = 0.0;

  std::vector<OutlineShapes> outlines;
  std::vector<PageBox> boxes;
  std::vector<TextLine> texts;

  // Where map and legend stand; for reports.
  PageArea map;
  PageArea legend;

  std::string_view Of(const WordRange& part) const {
    return std::string_view(words).substr(part.begin, part.length);
  }
};

}  // namespace vexel

#endif  // VEXEL_KIT_PUBLISH_DRAWING_H_
