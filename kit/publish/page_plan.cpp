#include "kit/publish/page_plan.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "kit/publish/text_metrics.h"

namespace vexel {

namespace {

// Of plain text: a page of 800x600 has 14 pixels, larger ones grow with their sides, and small ones
// stay legible.
constexpr double kSidesToUnit = 1.0 / 50.0;
constexpr double kLeastUnit = 9.0;
constexpr double kMostOfSide = 1.0 / 12.0;

// In units of plain text.
constexpr double kMargin = 1.0;
constexpr double kGap = 0.8;
constexpr double kTitleSize = 1.45;
constexpr double kSubtitleSize = 1.0;
constexpr double kLegendSize = 0.9;
constexpr double kNoteSize = 0.78;

constexpr double kLineHeight = 1.3;  // of the size of its text
constexpr std::size_t kMostTitleLines = 3;
constexpr std::size_t kMostOtherLines = 2;

// Of a legend, in sizes of its text.
constexpr double kRowHeight = 1.45;
constexpr double kSwatchWidth = 1.6;
constexpr double kSwatchHeight = 1.0;
constexpr double kSwatchGap = 0.5;
constexpr double kColumnGap = 1.2;
constexpr double kMostOfWidth = 0.45;  // of the page, that the legend takes beside the map

constexpr double kLeastMap = 0.3;  // of the page's sides

constexpr std::uint32_t kSwatchLine = 0x808080;
constexpr double kSwatchLineWidth = 1.0 / 28.0;  // units

double UnitOf(const PageSize& size) {
  const double width = size.width;
  const double height = size.height;
  const double unit = std::max(kLeastUnit, std::sqrt(width * height) * kSidesToUnit);
  return std::min(unit, std::min(width, height) * kMostOfSide);
}

// Lines of text, each below the one before.
struct TextBlock {
  std::vector<TextLine> lines;
  double height = 0.0;
};

class Planner {
 public:
  explicit Planner(const PageContents& contents)
      : contents_(contents), unit_(UnitOf(contents.size)) {}

  // The page with its title, notes and legend, or without; nothing is left out of a part.
  PagePlan Plan(bool hasTexts, bool hasLegend, bool hasNotes) {
    plan_ = PagePlan();
    plan_.unit = unit_;
    const double margin = kMargin * unit_;
    free_ = {margin, margin, std::max(contents_.size.width - 2.0 * margin, 0.0),
             std::max(contents_.size.height - 2.0 * margin, 0.0)};
    if (hasTexts) PlaceHead();
    if (hasNotes) PlaceFoot();
    if (hasLegend && !contents_.legend.entries.empty()) {
      PlaceMapAndLegend();
    } else {
      plan_.map = Fitted(free_);
    }
    return std::move(plan_);
  }

  bool HasRoom(const PagePlan& plan) const {
    // A long narrow map takes what its proportions allow; of that a page must leave a good part.
    const PageArea whole =
        Fitted({0.0, 0.0, double(contents_.size.width), double(contents_.size.height)});
    return plan.map.width >= kLeastMap * whole.width;
  }

 private:
  double LegendSize() const { return kLegendSize * unit_; }

  // The lines of a text, about as long as each other where there are several.
  std::vector<std::string> Balanced(const std::string& text, const Typeface& face,
                                    std::size_t mostLines) const {
    std::vector<std::string> lines = Wrapped(text, face, free_.width, mostLines);
    if (lines.size() < 2 || IsShortened(lines, text)) return lines;
    constexpr int kSteps = 8;
    double narrow = free_.width / static_cast<double>(lines.size());
    double wide = free_.width;
    for (int i = 0; i < kSteps; ++i) {
      const double middle = (narrow + wide) / 2.0;
      const auto tried = Wrapped(text, face, middle, mostLines);
      const bool fits = tried.size() == lines.size() && !IsShortened(tried, text);
      (fits ? wide : narrow) = middle;
    }
    return Wrapped(text, face, wide, mostLines);
  }

  static bool IsShortened(const std::vector<std::string>& lines, const std::string& text) {
    return text.find_first_not_of(' ') != std::string::npos &&
           (lines.empty() || (lines.back().ends_with(kEllipsis) && !text.ends_with(kEllipsis)));
  }

  void AddLines(TextBlock& block, const std::string& name, const std::string& text, TextRole role,
                const Typeface& face, std::size_t mostLines, std::uint32_t color) {
    std::vector<std::string> lines = Balanced(text, face, mostLines);
    if (IsShortened(lines, text)) plan_.shortened.push_back(name);
    for (std::string& line : lines) {
      const double height = kLineHeight * face.size;
      const double leading = (height - (kAscent + kDescent) * face.size) / 2.0;
      const double width = TextWidth(line, face);
      block.lines.push_back({std::move(line), free_.left,
                             block.height + leading + kAscent * face.size, face.size, width,
                             TextAnchor::start, role, face.isBold, color, std::nullopt});
      block.height += height;
    }
  }

  // Puts a block at `top`, and says that its place is taken.
  void Place(TextBlock block, double top) {
    if (block.lines.empty()) return;
    for (TextLine& line : block.lines) {
      line.y += top;
      plan_.texts.push_back(std::move(line));
    }
    plan_.taken.push_back({free_.left, top, free_.width, block.height});
  }

  void PlaceHead() {
    TextBlock block;
    AddLines(block, "title", contents_.title, TextRole::title, {kTitleSize * unit_, true},
             kMostTitleLines, contents_.ink.strong);
    AddLines(block, "subtitle", contents_.subtitle, TextRole::subtitle,
             {kSubtitleSize * unit_, false}, kMostOtherLines, contents_.ink.soft);
    if (block.lines.empty()) return;
    const double used = block.height + kGap * unit_;
    Place(std::move(block), free_.top);
    free_.top += used;
    free_.height = std::max(free_.height - used, 0.0);
  }

  void PlaceFoot() {
    TextBlock block;
    const Typeface face{kNoteSize * unit_, false};
    const auto add = [&](const char* name, const std::string& text) {
      AddLines(block, name, text, TextRole::note, face, kMostOtherLines, contents_.ink.soft);
    };
    add("note", contents_.note);
    add("source", contents_.source);
    if (block.lines.empty()) return;
    const double top = free_.top + free_.height - block.height;
    free_.height = std::max(free_.height - block.height - kGap * unit_, 0.0);
    Place(std::move(block), top);
  }

  // The largest map that fits, in the middle.
  PageArea Fitted(const PageArea& room) const {
    const double scale = ScaleIn(room);
    const double width = contents_.extentWidth * scale;
    const double height = contents_.extentHeight * scale;
    return {room.left + (room.width - width) / 2.0, room.top + (room.height - height) / 2.0, width,
            height};
  }

  double ScaleIn(const PageArea& room) const {
    return std::min(room.width / contents_.extentWidth, room.height / contents_.extentHeight);
  }

  // How the legend's entries stand: in rows and columns of equal size.
  struct Table {
    std::size_t columns = 1;
    std::size_t rows = 1;
    double columnWidth = 0.0;
    double heading = 0.0;
    double width = 0.0;
    double height = 0.0;
    bool isBeside = false;
  };

  double EntryWidth(double mostWidth) const {
    const double size = LegendSize();
    const Typeface face{size, false};
    double widest = 0.0;
    for (const auto& entry : contents_.legend.entries) {
      widest = std::max(widest, TextWidth(entry.text, face));
    }
    return std::min(widest + (kSwatchWidth + kSwatchGap) * size, mostWidth);
  }

  Table MakeTable(std::size_t columns, double mostEntryWidth, double room) const {
    const double size = LegendSize();
    const std::size_t count = contents_.legend.entries.size();
    Table table;
    table.rows = (count + columns - 1) / columns;
    table.columns = (count + table.rows - 1) / table.rows;
    table.columnWidth = EntryWidth(mostEntryWidth);
    table.width = static_cast<double>(table.columns) * table.columnWidth +
                  static_cast<double>(table.columns - 1) * kColumnGap * size;
    if (!contents_.legend.heading.empty()) {
      table.heading = kLineHeight * size;
      const double wanted = TextWidth(contents_.legend.heading, {size, true});
      table.width = std::max(table.width, std::min(wanted, room));
    }
    table.height = table.heading + static_cast<double>(table.rows) * kRowHeight * size;
    return table;
  }

  // To the right of the map, in as few columns as the height takes.
  Table TableBeside() const {
    const double room = free_.width * kMostOfWidth;
    std::size_t columns = 1;
    Table table = MakeTable(columns, room, room);
    while (table.height > free_.height && columns < contents_.legend.entries.size()) {
      table = MakeTable(++columns, room, room);
    }
    table.isBeside = true;
    return table;
  }

  // Below it, in as few rows as the width takes.
  Table TableBelow() const {
    const double gap = kColumnGap * LegendSize();
    const double step = EntryWidth(free_.width) + gap;
    const auto columns = static_cast<std::size_t>(std::max((free_.width + gap) / step, 1.0));
    return MakeTable(std::min(columns, contents_.legend.entries.size()), free_.width, free_.width);
  }

  PageArea RoomWith(const Table& table) const {
    PageArea room = free_;
    const double gap = kGap * unit_;
    if (table.isBeside) {
      room.width = std::max(room.width - table.width - gap, 0.0);
    } else {
      room.height = std::max(room.height - table.height - gap, 0.0);
    }
    return room;
  }

  bool FitsInFree(const Table& table) const {
    return table.width <= free_.width && table.height <= free_.height;
  }

  // Map and legend together stand in the middle of what is free.
  void PlaceMapAndLegend() {
    const Table beside = TableBeside();
    const Table below = TableBelow();
    const double besideScale = FitsInFree(beside) ? ScaleIn(RoomWith(beside)) : 0.0;
    const double belowScale = FitsInFree(below) ? ScaleIn(RoomWith(below)) : 0.0;
    const Table& table = besideScale > belowScale ? beside : below;
    if (std::max(besideScale, belowScale) <= 0.0) return;

    plan_.map = Fitted(RoomWith(table));
    const double gap = kGap * unit_;
    PageArea& map = plan_.map;
    if (table.isBeside) {
      map.left = free_.left + (free_.width - map.width - gap - table.width) / 2.0;
      plan_.legend = {map.left + map.width + gap,
                      std::max(map.top + map.height - table.height, free_.top), table.width,
                      table.height};
      // A flat map leaves room below; the legend is centred on it rather than on its lower edge.
      if (table.height > map.height) {
        plan_.legend.top = free_.top + (free_.height - table.height) / 2.0;
      }
    } else {
      map.top = free_.top + (free_.height - map.height - gap - table.height) / 2.0;
      plan_.legend = {free_.left + (free_.width - table.width) / 2.0, map.top + map.height + gap,
                      table.width, table.height};
    }
    DrawLegend(table);
  }

  void DrawLegend(const Table& table) {
    const double size = LegendSize();
    const PageArea& area = plan_.legend;
    const double middle = (kAscent - kDescent) / 2.0;  // of a letter, above its baseline
    const auto add = [&](const std::string& text, double x, double y, double room, bool isBold) {
      const Typeface face{size, isBold};
      std::string fitting = Shortened(text, face, room);
      if (fitting != text) plan_.shortened.push_back("legend's \"" + text + '"');
      const double width = TextWidth(fitting, face);
      if (fitting.empty()) return;
      plan_.texts.push_back({std::move(fitting), x, y, size, width, TextAnchor::start,
                             TextRole::legend, isBold, contents_.ink.strong, std::nullopt});
    };
    add(contents_.legend.heading, area.left, area.top + kAscent * size, area.width, true);
    for (std::size_t i = 0; i < contents_.legend.entries.size(); ++i) {
      // Down the columns beside a map, and along the rows below one.
      const std::size_t row = table.isBeside ? i % table.rows : i / table.columns;
      const std::size_t column = table.isBeside ? i / table.rows : i % table.columns;
      const double left =
          area.left + static_cast<double>(column) * (table.columnWidth + kColumnGap * size);
      const double centre =
          area.top + table.heading + (static_cast<double>(row) + 1.0 / 2.0) * kRowHeight * size;
      const auto& entry = contents_.legend.entries[i];
      plan_.boxes.push_back({left,
                             centre - kSwatchHeight * size / 2.0,
                             kSwatchWidth * size,
                             kSwatchHeight * size,
                             entry.fill,
                             {kSwatchLine, kSwatchLineWidth * unit_}});
      const double indent = (kSwatchWidth + kSwatchGap) * size;
      add(entry.text, left + indent, centre + middle * size, table.columnWidth - indent, false);
    }
    plan_.taken.push_back(area);
  }

  const PageContents& contents_;
  double unit_;
  PagePlan plan_;
  PageArea free_;
};

}  // namespace

PagePlan PlanPage(const PageContents& contents) {
  struct Parts {
    bool texts;
    bool legend;
    bool notes;
  };
  Planner planner(contents);
  PagePlan plan;
  for (const Parts& parts : {Parts{true, true, true}, Parts{true, true, false},
                             Parts{true, false, false}, Parts{false, false, false}}) {
    plan = planner.Plan(parts.texts, parts.legend, parts.notes);
    plan.lacksLegend = !parts.legend && !contents.legend.entries.empty();
    const auto lose = [&](bool isThere, const char* name, const std::string& text) {
      if (!isThere && !text.empty()) plan.lost.emplace_back(name);
    };
    lose(parts.texts, "title", contents.title);
    lose(parts.texts, "subtitle", contents.subtitle);
    lose(parts.notes, "note", contents.note);
    lose(parts.notes, "source", contents.source);
    if (planner.HasRoom(plan)) break;
  }
  plan.mapScale = plan.map.width > 0.0 ? plan.map.width / contents.extentWidth
                                       : plan.map.height / contents.extentHeight;
  return plan;
}

}  // namespace vexel
