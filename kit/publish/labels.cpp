#include "kit/publish/labels.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <tuple>

#include "kit/publish/pole.h"
#include "kit/publish/text_metrics.h"

namespace vexel {

namespace {

constexpr double kHalf = 0.5;
constexpr double kLabelSize = 0.82;  // units
constexpr double kLeastSize = 7.0;   // page pixels
constexpr double kSmaller = 0.85;    // what a label may shrink to
constexpr double kLineHeight = 1.15;
constexpr double kRoomAround = 0.15;  // sizes, of the text
constexpr double kPlateRoom = 0.4;
constexpr std::uint32_t kPlateLine = 0x808080;
constexpr double kPlateLineWidth = 1.0 / 18.0;
constexpr std::uint32_t kLeader = 0x1A1A1A;
constexpr double kLeaderWidth = 1.0 / 12.0;
constexpr std::uint32_t kLeaderRim = 0xFFFFFF;
constexpr double kLeaderRimWidth = 1.0 / 4.0;

// Which places of a page are taken, as squares of a few pixels.
class Occupancy {
 public:
  Occupancy(int width, int height, double step)
      : step_(step),
        columns_(static_cast<std::size_t>(width / step) + 1),
        rows_(static_cast<std::size_t>(height / step) + 1),
        width_(width),
        height_(height),
        taken_(columns_ * rows_) {}

  // False where the box leaves the page or meets what is taken.
  bool IsFree(const PageArea& box) const {
    if (box.left < 0.0 || box.top < 0.0 || box.left + box.width > width_ ||
        box.top + box.height > height_) {
      return false;
    }
    const Span span = Cells(box);
    for (std::size_t row = span.top; row <= span.bottom; ++row) {
      const auto begin = taken_.begin() + static_cast<std::ptrdiff_t>(row * columns_);
      const auto left = begin + static_cast<std::ptrdiff_t>(span.left);
      const auto right = begin + static_cast<std::ptrdiff_t>(span.right) + 1;
      if (std::find(left, right, true) != right) return false;
    }
    return true;
  }

  void Take(const PageArea& box) {
    const Span span = Cells(box);
    for (std::size_t row = span.top; row <= span.bottom; ++row) {
      const auto begin = taken_.begin() + static_cast<std::ptrdiff_t>(row * columns_);
      std::fill(begin + static_cast<std::ptrdiff_t>(span.left),
                begin + static_cast<std::ptrdiff_t>(span.right) + 1, true);
    }
  }

 private:
  struct Span {
    std::size_t left, top, right, bottom;
  };

  Span Cells(const PageArea& box) const {
    const auto cell = [this](double at, std::size_t count) {
      return std::min(static_cast<std::size_t>(std::max(at / step_, 0.0)), count - 1);
    };
    return {cell(box.left, columns_), cell(box.top, rows_), cell(box.left + box.width, columns_),
            cell(box.top + box.height, rows_)};
  }

  double step_;
  std::size_t columns_;
  std::size_t rows_;
  double width_;
  double height_;
  std::vector<bool> taken_;
};

// The lines in which a label is set, and how large.
struct Setting {
  std::vector<std::string> lines;
  Typeface face;
  double width = 0.0;
  double height = 0.0;
};

Setting SettingOf(std::vector<std::string> lines, const Typeface& face) {
  Setting setting{std::move(lines), face};
  for (const std::string& line : setting.lines) {
    setting.width = std::max(setting.width, TextWidth(line, face));
  }
  setting.height = static_cast<double>(setting.lines.size()) * kLineHeight * face.size;
  return setting;
}

// The first line broken where its halves are most alike; nothing when it has no blank.
std::vector<std::string> Broken(const std::vector<std::string>& lines) {
  const std::string& first = lines.front();
  std::size_t best = std::string::npos;
  for (std::size_t at = first.find(' '); at != std::string::npos; at = first.find(' ', at + 1)) {
    const auto uneven = [&](std::size_t where) { return std::max(where, first.size() - where); };
    if (best == std::string::npos || uneven(at) < uneven(best)) best = at;
  }
  if (best == std::string::npos) return {};
  std::vector<std::string> broken{first.substr(0, best), first.substr(best + 1)};
  broken.insert(broken.end(), lines.begin() + 1, lines.end());
  return broken;
}

class LabelPlacer {
 public:
  LabelPlacer(Drawing& drawing, const std::vector<PageArea>& taken, double unit,
              std::uint16_t plateFill)
      : drawing_(drawing),
        unit_(unit),
        plateFill_(plateFill),
        occupancy_(drawing.width, drawing.height, std::max(unit / 4.0, 1.0)) {
    for (const PageArea& area : taken) occupancy_.Take(area);
  }

  // Whether the label stands. One without a text or an area is not missed.
  bool Place(const Label& label) {
    if (label.lines.empty() || label.rings.first == label.rings.end) return true;
    const AreaBorders borders(drawing_, label.rings);
    return label.isWanted ? PlaceWanted(label, borders) : PlaceWithin(label, borders);
  }

 private:
  double Size() const { return std::max(kLabelSize * unit_, kLeastSize); }

  // Within the area, or not at all.
  bool PlaceWithin(const Label& label, const AreaBorders& borders) {
    for (const double size : {Size(), std::max(Size() * kSmaller, kLeastSize)}) {
      for (const auto& lines : {label.lines, Broken(label.lines)}) {
        if (lines.empty()) continue;
        const Setting setting = SettingOf(lines, {size, label.isBold});
        const PageArea& bounds = borders.Bounds();
        if (setting.width > bounds.width || setting.height > bounds.height) continue;
        const PageArea box =
            Around(borders.Pole(setting.width / setting.height), setting, kRoomAround * size);
        if (!borders.Holds(box)) continue;
        if (!occupancy_.IsFree(box)) continue;
        Draw(label, setting, box);
        return true;
      }
    }
    return false;
  }

  // On the area, or beside it where that is taken or would be hidden.
  bool PlaceWanted(const Label& label, const AreaBorders& borders) {
    const double size = Size();
    const Setting setting = SettingOf(label.lines, {size, label.isBold});
    const PagePoint pole = borders.Pole(std::max(setting.width / setting.height, 1.0));
    const double around = (label.hasPlate ? kPlateRoom : kRoomAround) * size;
    const double down = setting.height + 2.0 * around;
    const double across = setting.width + 2.0 * around;
    const PageArea& bounds = borders.Bounds();
    const bool hides = bounds.width < across && bounds.height < down;
    const std::array<PagePoint, 9> steps{{{0.0, 0.0},
                                          {0.0, -down},
                                          {0.0, down},
                                          {across * kHalf, 0.0},
                                          {-across * kHalf, 0.0},
                                          {across * kHalf, -down},
                                          {-across * kHalf, -down},
                                          {across * kHalf, down},
                                          {-across * kHalf, down}}};
    for (const PagePoint& step : std::span(steps).subspan(hides ? 1 : 0)) {
      PageArea box = Around({pole.x + step.x, pole.y + step.y}, setting, around);
      box.left = std::clamp(box.left, 0.0, std::max(drawing_.width - box.width, 0.0));
      box.top = std::clamp(box.top, 0.0, std::max(drawing_.height - box.height, 0.0));
      if (!occupancy_.IsFree(box)) continue;
      if (&step != steps.data()) DrawLeader(pole, box);
      Draw(label, setting, box);
      return true;
    }
    return false;
  }

  // A line from the area to the middle of a label beside it, which the label's plate covers in
  // part.
  void DrawLeader(const PagePoint& pole, const PageArea& box) {
    const auto onGrid = [this](double x, double y) {
      return GridPoint{static_cast<std::int32_t>(std::lround(x * drawing_.grid)),
                       static_cast<std::int32_t>(std::lround(y * drawing_.grid))};
    };
    const double side = std::clamp(pole.x, box.left, box.left + box.width);
    const double edge = std::clamp(pole.y, box.top, box.top + box.height);
    Rings& rings = drawing_.rings;
    const auto first = static_cast<std::uint32_t>(rings.Count());
    rings.Points().push_back(onGrid(pole.x, pole.y));
    rings.Points().push_back(onGrid(side, edge));
    rings.End();
    for (const auto& [name, color, width] : {std::tuple{"leader-rim", kLeaderRim, kLeaderRimWidth},
                                             std::tuple{"leader", kLeader, kLeaderWidth}}) {
      drawing_.outlines.push_back({name, {color, width * unit_}, {first, first + 1}});
    }
  }

  static PageArea Around(const PagePoint& centre, const Setting& setting, double around) {
    const double width = setting.width + 2.0 * around;
    const double height = setting.height + 2.0 * around;
    return {centre.x - width * kHalf, centre.y - height * kHalf, width, height};
  }

  void Draw(const Label& label, const Setting& setting, const PageArea& box) {
    occupancy_.Take(box);
    if (label.hasPlate) {
      drawing_.boxes.push_back({box.left,
                                box.top,
                                box.width,
                                box.height,
                                plateFill_,
                                {kPlateLine, kPlateLineWidth * unit_}});
    }
    const Typeface& face = setting.face;
    const double step = kLineHeight * face.size;
    double baseline = box.top + (box.height - setting.height) * kHalf +
                      (step - (kAscent + kDescent) * face.size) * kHalf + kAscent * face.size;
    for (const std::string& line : setting.lines) {
      drawing_.texts.push_back({line, box.left + box.width * kHalf, baseline, face.size,
                                TextWidth(line, face), TextAnchor::middle, TextRole::label,
                                face.isBold, label.color, label.halo});
      baseline += step;
    }
  }

  Drawing& drawing_;
  double unit_;
  std::uint16_t plateFill_;
  Occupancy occupancy_;
};

}  // namespace

std::vector<std::size_t> PlaceLabels(Drawing& drawing, const std::vector<Label>& labels,
                                     const std::vector<PageArea>& taken, double unit,
                                     std::uint16_t plateFill) {
  LabelPlacer placer(drawing, taken, unit, plateFill);
  std::vector<std::size_t> leftOut;
  for (std::size_t i = 0; i < labels.size(); ++i) {
    if (!placer.Place(labels[i])) leftOut.push_back(i);
  }
  return leftOut;
}

}  // namespace vexel
