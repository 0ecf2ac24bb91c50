#include "kit/publish/raster.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <set>

#include "kit/publish/coverage.h"
#include "kit/publish/line_mask.h"

namespace vexel {

namespace {

// What fills a shape: a colour, or one for each diagonal of the picture.
class FillPaint {
 public:
  FillPaint(const FillStyle& fill, double hatchStep, const Pixels& page, double scale)
      : pixel_(PixelOf(fill.color)) {
    if (!fill.hatch) return;
    const auto count = static_cast<std::size_t>(page.width) + static_cast<std::size_t>(page.height);
    diagonals_.reserve(count);
    const std::uint32_t line = PixelOf(*fill.hatch);
    for (std::size_t i = 0; i < count; ++i) {
      // The middles of pixels whose places add up to i.
      const double across = (static_cast<double>(i) + 1.0) / (std::sqrt(2.0) * scale);
      diagonals_.push_back(Over(pixel_, line, PartOfLine(across, hatchStep, scale)));
    }
  }

  void Fill(std::uint32_t* row, int y, int first, int end) const {
    if (diagonals_.empty()) {
      std::fill(row + first, row + end, pixel_);
    } else {
      std::copy(diagonals_.begin() + y + first, diagonals_.begin() + y + end, row + first);
    }
  }

  std::uint32_t At(int x, int y) const {
    return diagonals_.empty()
               ? pixel_
               : diagonals_[static_cast<std::size_t>(x) + static_cast<std::size_t>(y)];
  }

 private:
  // How much of a pixel the hatch covers, in 255, where its middle is so far across the lines.
  static std::uint32_t PartOfLine(double across, double step, double scale) {
    const double half = 0.5 / scale;
    const double width = step * kHatchWidth;
    const double place = std::fmod(across, step);
    double covered = 0.0;
    for (const double line : {0.0, step}) {
      covered += std::max(0.0, std::min(place + half, line + width) - std::max(place - half, line));
    }
    return static_cast<std::uint32_t>(std::lround(covered * scale * kOpaque));
  }

  std::uint32_t pixel_;
  std::vector<std::uint32_t> diagonals_;
};

// Neighbours share a pixel: the colour of one comes beside that of the others while there is room,
// and then in their place.
std::uint32_t Beside(std::uint32_t others, std::uint32_t pixel, std::uint32_t part) {
  const std::uint32_t covering = PartOf(pixel, part);
  const std::uint32_t taken = AlphaOf(others);
  if (taken + part <= kOpaque) return others + covering;
  const std::uint32_t left = ((kOpaque - part) * kOpaque + taken / 2) / taken;
  return PartOf(others, left) + covering;
}

// Pixels of which borders have covered nearly all are opaque: the rest is what rounding has lost.
std::uint32_t Settled(std::uint32_t pixel) {
  constexpr std::uint32_t kNearlyAll = 252;
  const std::uint32_t alpha = AlphaOf(pixel);
  if (alpha < kNearlyAll || alpha == kOpaque) return pixel;
  std::uint32_t settled = kOpaque << 24;
  for (const unsigned shift : {0U, 8U, 16U}) {
    const std::uint32_t part = (pixel >> shift) & 0xFFU;
    settled |= std::min((part * kOpaque + alpha / 2) / alpha, kOpaque) << shift;
  }
  return settled;
}

class RasterPainter {
 public:
  RasterPainter(const Drawing& drawing, double scale)
      : drawing_(drawing), scale_(scale), step_(scale / drawing.grid) {
    const auto side = [=](int length) {
      return std::max(static_cast<int>(std::lround(length * scale)), 1);
    };
    page_.width = side(drawing.width);
    page_.height = side(drawing.height);
    page_.data.resize(static_cast<std::size_t>(page_.width) *
                      static_cast<std::size_t>(page_.height));
    for (const FillStyle& fill : drawing.fills)
      paints_.emplace_back(fill, drawing.hatchStep, page_, scale);
  }

  Pixels Paint() {
    for (const AreaShape& area : drawing_.areas) FillArea(area);
    LayPaper();
    DrawLines();
    for (const PageBox& box : drawing_.boxes) DrawBox(box);
    return std::move(page_);
  }

 private:
  // The pixels of the page that some rings touch.
  PixelRect BoundsOf(const RingRange& range) const {
    constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
    constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
    GridPoint least{kMost, kMost};
    GridPoint most{kLeast, kLeast};
    for (std::uint32_t i = range.first; i < range.end; ++i) {
      for (const GridPoint& point : drawing_.rings.Ring(i)) {
        least = {std::min(least.x, point.x), std::min(least.y, point.y)};
        most = {std::max(most.x, point.x), std::max(most.y, point.y)};
      }
    }
    return OnPage(least.x * step_, least.y * step_, most.x * step_, most.y * step_);
  }

  PixelRect OnPage(double left, double top, double right, double bottom) const {
    const auto within = [](double place, int limit) {
      return static_cast<int>(std::clamp(place, 0.0, static_cast<double>(limit)));
    };
    return {within(std::floor(left), page_.width), within(std::floor(top), page_.height),
            within(std::ceil(right), page_.width), within(std::ceil(bottom), page_.height)};
  }

  // Large shapes are filled in bands, so that they take little memory.
  template <typename AddEdges, typename Visit>
  void FillShape(const PixelRect& bounds, const AddEdges& addEdges, const Visit& visit) {
    if (bounds.IsEmpty()) return;
    constexpr int kMostCells = 1 << 20;
    const int width = bounds.right - bounds.left;
    const int rows = std::max(kMostCells / width, 1);
    for (int top = bounds.top; top < bounds.bottom; top += rows) {
      coverage_.Begin(width, std::min(rows, bounds.bottom - top));
      addEdges(PlaneOffset{static_cast<double>(bounds.left), static_cast<double>(top)});
      coverage_.End([&](int y, int first, int end, std::uint32_t part) {
        visit(top + y, bounds.left + first, bounds.left + end, part);
      });
    }
  }

  struct PlaneOffset {
    double x = 0.0;
    double y = 0.0;
  };

  PixelPoint PlaceOf(const GridPoint& point, const PlaneOffset& origin) const {
    return {static_cast<float>(point.x * step_ - origin.x),
            static_cast<float>(point.y * step_ - origin.y)};
  }

  // Calls visit(from, to) for the edges of some rings.
  template <typename Visit>
  void ForEachEdge(const RingRange& range, const PlaneOffset& origin, const Visit& visit) const {
    for (std::uint32_t i = range.first; i < range.end; ++i) {
      const auto ring = drawing_.rings.Ring(i);
      PixelPoint last = PlaceOf(ring.back(), origin);
      for (const GridPoint& point : ring) {
        const PixelPoint place = PlaceOf(point, origin);
        visit(last, place);
        last = place;
      }
    }
  }

  void FillArea(const AreaShape& area) {
    if (area.rings.first == area.rings.end) return;
    const FillPaint& paint = paints_[area.fill];
    const auto addEdges = [&](const PlaneOffset& origin) {
      ForEachEdge(area.rings, origin,
                  [this](PixelPoint from, PixelPoint to) { coverage_.AddEdge(from, to); });
    };
    FillShape(BoundsOf(area.rings), addEdges, [&](int y, int first, int end, std::uint32_t part) {
      std::uint32_t* const row = page_.Row(y);
      if (part == kOpaque) {
        paint.Fill(row, y, first, end);
        return;
      }
      for (int x = first; x < end; ++x) row[x] = Beside(row[x], paint.At(x, y), part);
    });
  }

  // Under the areas.
  void LayPaper() {
    const std::uint32_t paper = drawing_.background ? PixelOf(*drawing_.background) : 0;
    for (std::uint32_t& pixel : page_.data) {
      if (AlphaOf(pixel) == kOpaque) continue;
      if (pixel == 0) {
        pixel = paper;
        continue;
      }
      pixel = Settled(pixel);
      pixel += PartOf(paper, kOpaque - AlphaOf(pixel));
    }
  }

  void DrawLines() {
    const bool hasAreaLine = drawing_.areaLine && drawing_.areaLineWidth > 0.0;
    if (!hasAreaLine && drawing_.outlines.empty()) return;
    LineMask mask(page_.width, page_.height);
    if (hasAreaLine) {
      mask.SetLineWidth(static_cast<float>(drawing_.areaLineWidth * scale_));
      DrawAreaLines(mask, std::nullopt);
      std::set<std::uint32_t> colors;
      for (const FillStyle& fill : drawing_.fills) {
        if (fill.line && colors.insert(*fill.line).second) DrawAreaLines(mask, fill.line);
      }
    }
    for (const OutlineShapes& outline : drawing_.outlines) {
      mask.SetLineWidth(static_cast<float>(outline.stroke.width * scale_));
      AddLines(mask, outline.rings);
      DrawMask(mask, outline.stroke.color);
    }
  }

  // The lines around areas whose fill has a line of that colour; nothing: of the usual one.
  void DrawAreaLines(LineMask& mask, const std::optional<std::uint32_t>& color) {
    for (const AreaShape& area : drawing_.areas) {
      if (drawing_.fills[area.fill].line == color) AddLines(mask, area.rings);
    }
    DrawMask(mask, color.value_or(*drawing_.areaLine));
  }

  void AddLines(LineMask& mask, const RingRange& range) const {
    ForEachEdge(range, {}, [&](PixelPoint from, PixelPoint to) { mask.AddLine(from, to); });
  }

  void DrawMask(LineMask& mask, std::uint32_t color) {
    const std::uint32_t pixel = PixelOf(color);
    mask.Take([&](int y, int first, const std::uint8_t* parts, std::size_t count) {
      std::uint32_t* const row = page_.Row(y) + first;
      for (std::size_t i = 0; i < count; ++i) {
        if (parts[i] != 0) row[i] = Over(row[i], pixel, parts[i]);
      }
    });
  }

  // A rectangle, or what is between two of them.
  template <typename Visit>
  void FillRect(const PageArea& rect, const std::optional<PageArea>& hole, const Visit& visit) {
    const auto right = rect.left + rect.width;
    const auto bottom = rect.top + rect.height;
    const PixelRect bounds =
        OnPage(rect.left * scale_, rect.top * scale_, right * scale_, bottom * scale_);
    const auto addEdges = [&](const PlaneOffset& origin) {
      AddSides(rect, origin, false);
      if (hole) AddSides(*hole, origin, true);
    };
    FillShape(bounds, addEdges, visit);
  }

  void AddSides(const PageArea& rect, const PlaneOffset& origin, bool isHole) {
    const auto x = [&](double place) { return static_cast<float>(place * scale_ - origin.x); };
    const auto y = [&](double place) { return static_cast<float>(place * scale_ - origin.y); };
    const float top = y(rect.top);
    const float bottom = y(rect.top + rect.height);
    const float down = isHole ? bottom : top;
    const float up = isHole ? top : bottom;
    coverage_.AddEdge({x(rect.left), down}, {x(rect.left), up});
    coverage_.AddEdge({x(rect.left + rect.width), up}, {x(rect.left + rect.width), down});
  }

  void DrawBox(const PageBox& box) {
    const FillPaint& paint = paints_[box.fill];
    const PageArea rect{box.left, box.top, box.width, box.height};
    FillRect(rect, {}, [&](int y, int first, int end, std::uint32_t part) {
      std::uint32_t* const row = page_.Row(y);
      for (int x = first; x < end; ++x) row[x] = Over(row[x], paint.At(x, y), part);
    });
    const double width = box.stroke.width;
    if (width <= 0.0) return;
    const auto grown = [&](double by) {
      return PageArea{rect.left - by, rect.top - by, rect.width + 2.0 * by, rect.height + 2.0 * by};
    };
    std::optional<PageArea> hole;
    if (width < std::min(rect.width, rect.height)) hole = grown(-width / 2.0);
    const std::uint32_t line = PixelOf(box.stroke.color);
    FillRect(grown(width / 2.0), hole, [&](int y, int first, int end, std::uint32_t part) {
      std::uint32_t* const row = page_.Row(y);
      for (int x = first; x < end; ++x) row[x] = Over(row[x], line, part);
    });
  }

  const Drawing& drawing_;
  double scale_;
  double step_;  // pixels of one of the grid's
  Pixels page_;
  std::vector<FillPaint> paints_;
  Coverage coverage_;
};

}  // namespace

Pixels RasterOf(const Drawing& drawing, double scale) {
  return RasterPainter(drawing, scale).Paint();
}

}  // namespace vexel
