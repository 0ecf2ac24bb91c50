#include "kit/publish/compose.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <tuple>
#include <utility>

#include "kit/palettes/color.h"
#include "kit/publish/fills.h"
#include "kit/publish/labels.h"
#include "kit/publish/page_plan.h"
#include "kit/publish/placement.h"
#include "kit/request/error.h"
#include "kit/request/hints.h"
#include "kit/request/markup.h"
#include "kit/request/values.h"
#include "kit/view/areas.h"

namespace vexel {

namespace {

constexpr std::uint32_t kBlack = 0x000000;
constexpr Ink kDarkInk{ColorFromRgb(0x1A1A1A), ColorFromRgb(0x595959)};
constexpr Ink kLightInk{ColorFromRgb(0xFFFFFF), ColorFromRgb(0xC8C8C8)};

// Lines between areas, in page pixels: part of what an area is across, so that many small areas
// stay areas of colour; beyond the least they are left out.
constexpr double kLineOfArea = 0.04;
constexpr double kMostLine = 1.0 / 18.0;  // units
constexpr double kLeastLine = 0.12;
constexpr double kSeamWidth = 0.5;

// Where areas are smaller than that across, in page pixels, the grid may be wider.
constexpr double kSmallArea = 3.0;
constexpr int kFineGrid = 10;
constexpr int kWideGrid = 4;

constexpr double kAboveLine = 1.0 / 12.0;  // units
constexpr double kAboveLineOfArea = 0.03;
constexpr double kHatchStep = 2.0 / 7.0;  // units
constexpr double kChosenLine = 1.0 / 6.0;
constexpr double kChosenHalo = 1.0 / 3.0;

class Composer {
 public:
  explicit Composer(View& view)
      : view_(view),
        wishes_(view.request.publication),
        separators_(view.listener.GetSeparators()),
        missing_(view.legend.noDataText.View()),
        turn_(view.map.GetDrawRoot()->GetAngle()),
        paper_(wishes_.background.value_or(kWhite)),
        ink_(IsDark(paper_) ? kLightInk : kDarkInk) {}

  Drawing Make() {
    FindExtent();
    const PageContents contents = Contents();
    const PagePlan plan = PlanPage(contents);
    NotePlan(plan);
    BeginDrawing(plan);
    const Placement placement(turn_, extent_, plan.map, plan.mapScale, drawing_.grid);
    AddAreas(placement);
    AddAbove(placement, plan.unit);
    AddChosen(plan.unit);
    AddLabels(placement, plan);
    return std::move(drawing_);
  }

 private:
  void FindExtent() {
    for (const CMapOb* area : view_.areas) {
      for (int i = 0; i < area->GetNumPolygons(); ++i) {
        const auto vertices = area->GetPoly(i)->GetPoints();
        for (const CPoint& vertex : vertices) extent_.Include(turn_(vertex));
        mostVertices_ += vertices.size();
        ++mostRings_;
      }
    }
    if (extent_.left > extent_.right) throw Failed("a polygon of the map has no points");
    // A map without width or height still has a place.
    constexpr double kLeastExtent = 1.0;
    if (extent_.right - extent_.left < kLeastExtent) extent_.right = extent_.left + kLeastExtent;
    if (extent_.top - extent_.bottom < kLeastExtent) extent_.bottom = extent_.top - kLeastExtent;
  }

  std::string Title() const {
    return XmlText(wishes_.title ? std::string_view(*wishes_.title)
                                 : view_.map.GenerateTitle().View());
  }

  PageContents Contents() const {
    const Request& request = view_.request;
    PageContents contents;
    contents.size = request.size;
    contents.extentWidth = extent_.right - extent_.left;
    contents.extentHeight = extent_.top - extent_.bottom;
    contents.ink = ink_;
    if (!request.noTitle) contents.title = Title();
    contents.subtitle = XmlText(wishes_.subtitle);
    contents.note = XmlText(wishes_.note);
    contents.source = XmlText(wishes_.source);
    if (request.noLegend) return contents;
    // The engine's title names the variable; under another one the legend has to.
    if (request.noTitle || wishes_.title) contents.legend.heading = XmlText(SubjectOf(view_));
    for (const LegendRow& row : view_.legend.GetRows()) {
      contents.legend.entries.push_back({XmlText(row.text), static_cast<std::uint16_t>(row.slot)});
    }
    return contents;
  }

  void NotePlan(const PagePlan& plan) {
    const std::string page = "a page of " + SizeText(view_.request.size);
    if (plan.lacksLegend) view_.notes.push_back("the legend does not fit on " + page);
    const auto note = [&](const std::string& text, const char* what, const char* end) {
      view_.notes.emplace_back("the ").append(text).append(what).append(page).append(end);
    };
    for (const std::string& text : plan.lost) note(text, " does not fit on ", "");
    for (const std::string& text : plan.shortened) {
      note(text, " is too long for ", " and ends in an ellipsis");
    }
  }

  void BeginDrawing(const PagePlan& plan) {
    drawing_.width = view_.request.size.width;
    drawing_.height = view_.request.size.height;
    drawing_.background = wishes_.background;
    drawing_.title = Title();
    if (drawing_.title.empty()) drawing_.title = XmlText(view_.map.GenerateTitle().View());
    drawing_.description = Description();
    drawing_.map = plan.map;
    drawing_.legend = plan.legend;
    drawing_.boxes = plan.boxes;
    drawing_.texts = plan.texts;
    drawing_.hatchStep = kHatchStep * plan.unit;
    AddFills();

    const double across = AcrossOf(view_.areas.size());
    const int grid = across < kSmallArea ? kWideGrid : kFineGrid;
    drawing_.grid = grid * std::max(static_cast<int>(std::lround(wishes_.scale)), 1);
    const double line =
        wishes_.lineWidth.value_or(std::min(across * kLineOfArea, kMostLine * plan.unit));
    if (line >= (wishes_.lineWidth ? 0.0 : kLeastLine) && line > 0.0) {
      drawing_.areaLine = wishes_.lineColor.value_or(paper_);
      drawing_.areaLineWidth = line;
    } else {
      drawing_.areaLineWidth = kSeamWidth;
    }
  }

  // What each of so many areas is across on the map, more or less; page pixels.
  double AcrossOf(std::size_t areas) const {
    const PageArea& map = drawing_.map;
    return std::sqrt(map.width * map.height / static_cast<double>(std::max<std::size_t>(areas, 1)));
  }

  std::string Description() const {
    return "Map of " + Counted(view_.areas.size(), "area") + " in " +
           Counted(view_.legend.numGroups, "group") + " of colour";
  }

  void AddFills() {
    drawing_.fills = FillsOf(view_);
    for (FillStyle& fill : drawing_.fills) SetLine(fill);
    plateFill_ = static_cast<std::uint16_t>(drawing_.fills.size());
    drawing_.fills.push_back({"plate", kWhite, {}, {}});
  }

  // Areas that look like the page, or have as little colour, need a line that can be seen on it.
  void SetLine(FillStyle& fill) const {
    if (wishes_.lineColor) return;
    const Lab a = LabOf(LinearRgbOf(fill.color));
    const Lab b = LabOf(LinearRgbOf(paper_));
    constexpr double kAlike = 7.0;
    const double apart = std::hypot(a.lightness - b.lightness, a.a - b.a, a.b - b.b);
    if (apart >= kAlike && !fill.hatch) return;
    fill.line = fill.hatch.value_or(Mixed(fill.color, ink_.strong, 0.35));
  }

  WordRange AddWords(std::string_view text) {
    const WordRange words{static_cast<std::uint32_t>(drawing_.words.size()),
                          static_cast<std::uint32_t>(text.size())};
    drawing_.words.append(text);
    return words;
  }

  RingRange AddRings(const CMapOb& area, const Placement& placement) {
    Rings& rings = drawing_.rings;
    const auto first = static_cast<std::uint32_t>(rings.Count());
    for (int i = 0; i < area.GetNumPolygons(); ++i) {
      const CPolygon* polygon = area.GetPoly(i);
      AddRing(rings, polygon->GetPoints(), polygon->IsHole() != 0, placement);
    }
    return {first, static_cast<std::uint32_t>(rings.Count())};
  }

  std::string Value(const CMapOb& area) const {
    return XmlText(ValueText(view_, area, separators_, missing_));
  }

  std::uint16_t FillOf(const CMapOb& area) const {
    return static_cast<std::uint16_t>(SlotOf(view_, area));
  }

  void AddAreas(const Placement& placement) {
    constexpr std::size_t kWords = 24;  // of a usual area
    drawing_.areas.reserve(view_.areas.size());
    drawing_.words.reserve(view_.areas.size() * kWords);
    drawing_.rings.Reserve(mostVertices_, mostRings_);
    for (const CMapOb* area : view_.areas) {
      drawing_.areas.push_back({AddRings(*area, placement), FillOf(*area),
                                AddWords(KeyText(area->GetArea())),
                                AddWords(XmlText(area->GetName().View())), AddWords(Value(*area))});
    }
  }

  // The outlines of the level above, over its parts.
  void AddAbove(const Placement& placement, double unit) {
    const CMapOb& root = *view_.map.GetDrawRoot();
    const int level = view_.map.GetDrawLevel() - 1;
    if (level <= root.GetLevel()) return;
    const auto first = static_cast<std::uint32_t>(drawing_.rings.Count());
    ForEachOnLevel(root, level, [&](const CMapOb& area) {
      above_.emplace_back(&area, AddRings(area, placement));
    });
    const auto end = static_cast<std::uint32_t>(drawing_.rings.Count());
    if (first == end || wishes_.lineWidth == 0.0) return;
    const double usual = std::min(kAboveLine * unit, kAboveLineOfArea * AcrossOf(above_.size()));
    const double width = std::max(usual, 2.0 * wishes_.lineWidth.value_or(0.0));
    const std::uint32_t color = wishes_.lineColor.value_or(Mixed(paper_, ink_.strong, 0.75));
    drawing_.outlines.push_back({"above", {color, width}, {first, end}});
  }

  const AreaShape& ShapeOf(const CMapOb* area) const {
    const auto found = std::find(view_.areas.begin(), view_.areas.end(), area);
    return drawing_.areas[static_cast<std::size_t>(found - view_.areas.begin())];
  }

  // The areas whose outlines stand out: a dark line on a light one shows on every colour.
  void AddChosen(double unit) {
    for (const auto& [name, color, width] :
         {std::tuple{"halo", kWhite, kChosenHalo}, std::tuple{"chosen", kBlack, kChosenLine}}) {
      for (const CMapOb* area : view_.outlines) {
        drawing_.outlines.push_back(
            {name, {static_cast<std::uint32_t>(color), width * unit}, ShapeOf(area).rings});
      }
    }
  }

  std::vector<std::string> LinesFor(const CMapOb& area, LabelText text) const {
    std::vector<std::string> lines;
    if (text != LabelText::value) lines.push_back(XmlText(area.GetName().View()));
    if (text != LabelText::name) lines.push_back(Value(area));
    std::erase(lines, "");
    return lines;
  }

  // The area's rings on the page: those that are drawn, or else new ones that only its label needs.
  RingRange RingsOf(const CMapOb& area, const Placement& placement) {
    if (area.GetLevel() == view_.map.GetDrawLevel()) return ShapeOf(&area).rings;
    const auto above = std::find_if(above_.begin(), above_.end(),
                                    [&](const auto& each) { return each.first == &area; });
    if (above != above_.end() && above->second.first != above->second.end) return above->second;
    const RingRange own = AddRings(area, placement);
    if (own.first != own.end) return own;
    RingRange parts{own.end, own.end};
    ForEachOnLevel(area, view_.map.GetDrawLevel(),
                   [&](const CMapOb& part) { parts.end = AddRings(part, placement).end; });
    return parts;
  }

  Label MakeLabel(const CMapOb& area, LabelText text, const RingRange& rings, bool isWanted) const {
    Label label;
    label.lines = LinesFor(area, text);
    label.rings = rings;
    label.isWanted = isWanted;
    label.isBold = area.GetLevel() < view_.map.GetDrawLevel();
    if (isWanted || label.isBold) {
      label.color = kDarkInk.strong;
      label.halo = kWhite;
    } else {
      const FillStyle& fill = drawing_.fills[FillOf(area)];
      label.color = IsDark(fill.color) ? kWhite : kDarkInk.strong;
      if (fill.hatch) label.halo = fill.color;
    }
    return label;
  }

  // Whether an area has been labelled by itself.
  bool IsNamed(const CMapOb* area) const {
    return std::find(named_.begin(), named_.end(), area) != named_.end();
  }

  // The level that a label's word names; 0 for none.
  int LevelNamed(std::string_view word) const {
    const int drawn = view_.map.GetDrawLevel();
    if (EqualNoCase(word, kAllAreas)) return drawn;
    for (int level = 1; level <= std::min(drawn, CVELAMap::kMostLevels - 1); ++level) {
      if (EqualNoCase(word, view_.map.GetLevelName(level).View())) return level;
    }
    return 0;
  }

  const CMapOb& AreaOf(const std::string& word) const {
    const bool isKey = word.find_first_not_of("0123456789,- ") == std::string::npos;
    if (!isKey) {
      std::vector<std::string_view> names{kAllAreas};
      for (int level = 1; level <= view_.map.GetDrawLevel() && level < CVELAMap::kMostLevels;
           ++level) {
        names.push_back(view_.map.GetLevelName(level).View());
      }
      std::erase(names, "");
      throw WrongRequest("--label: " + Quoted(word) +
                         " is neither a key nor a level on show; there are " + Joined(names));
    }
    const CMapOb* area = AreaNamed(view_.map, "--label", ParseKey(word));
    if (!IsInDrawRoot(view_.map, area) || area->GetLevel() > view_.map.GetDrawLevel()) {
      throw WrongRequest("--label: area " + KeyText(area->GetArea()) + " is none of those on show");
    }
    return *area;
  }

  // Boxes first, then what is asked for by its key, then whole levels from the uppermost on.
  void AddLabels(const Placement& placement, const PagePlan& plan) {
    std::vector<Label> labels;
    for (const CMapOb* area : view_.boxes) {
      named_.push_back(area);
      labels.push_back(MakeLabel(*area, LabelText::both, RingsOf(*area, placement), true));
      labels.back().hasPlate = true;
      labels.back().halo.reset();
      labels.back().color = kDarkInk.strong;
    }
    std::vector<int> levels;
    for (const std::string& word : wishes_.labels) {
      if (const int level = LevelNamed(word); level > 0) {
        levels.push_back(level);
        continue;
      }
      const CMapOb& area = AreaOf(word);
      if (IsNamed(&area)) continue;
      named_.push_back(&area);
      labels.push_back(MakeLabel(area, wishes_.labelText, RingsOf(area, placement), true));
    }
    std::sort(levels.begin(), levels.end());
    for (const int level : levels) AddLevel(level, placement, labels);
    NoteLeftOut(labels, PlaceLabels(drawing_, labels, plan.taken, plan.unit, plateFill_));
  }

  // Those that were asked for one by one by their names, and of all how many.
  void NoteLeftOut(const std::vector<Label>& labels, const std::vector<std::size_t>& leftOut) {
    if (leftOut.empty()) return;
    std::string names;
    for (const std::size_t index : leftOut) {
      const Label& label = labels[index];
      if (label.isWanted) names += (names.empty() ? ": " : ", ") + Quoted(label.lines.front());
    }
    view_.notes.push_back(std::to_string(leftOut.size()) + " of " +
                          Counted(labels.size(), "label") + " found no place" + names);
  }

  void AddLevel(int level, const Placement& placement, std::vector<Label>& labels) {
    if (level == view_.map.GetDrawLevel()) {
      for (std::size_t i = 0; i < view_.areas.size(); ++i) {
        if (IsNamed(view_.areas[i])) continue;
        labels.push_back(
            MakeLabel(*view_.areas[i], wishes_.labelText, drawing_.areas[i].rings, false));
      }
      return;
    }
    const bool isAbove = !above_.empty() && above_.front().first->GetLevel() == level;
    std::size_t number = 0;
    ForEachOnLevel(*view_.map.GetDrawRoot(), level, [&](const CMapOb& area) {
      // Those of the level above stand in this very order.
      RingRange rings = isAbove ? above_[number++].second : RingRange();
      if (IsNamed(&area)) return;
      if (rings.first == rings.end) rings = RingsOf(area, placement);
      labels.push_back(MakeLabel(area, wishes_.labelText, rings, false));
    });
  }

  View& view_;
  const Publication& wishes_;
  const NumberSeparators& separators_;
  std::string missing_;
  PlaneTurn turn_;
  std::uint32_t paper_;
  Ink ink_;
  PlaneExtent extent_;
  std::size_t mostVertices_ = 0;
  std::size_t mostRings_ = 0;
  Drawing drawing_;
  std::uint16_t plateFill_ = 0;
  std::vector<std::pair<const CMapOb*, RingRange>> above_;
  std::vector<const CMapOb*> named_;
};

}  // namespace

Drawing Compose(View& view) { return Composer(view).Make(); }

}  // namespace vexel
