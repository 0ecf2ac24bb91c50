#include "kit/report/map_page.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <optional>
#include <unordered_map>
#include <vector>

#include "kit/palettes/color.h"
#include "kit/publish/svg.h"
#include "kit/report/map_page_parts.h"
#include "kit/report/map_page_script.h"
#include "kit/report/map_page_style.h"
#include "kit/report/page_pieces.h"
#include "kit/request/hints.h"
#include "kit/request/json_text.h"
#include "kit/request/markup.h"
#include "kit/request/query.h"

namespace vexel {

namespace {

// Up to so many areas stand in the table as the page comes, for readers and without a script; of
// more the script makes so many rows at a time.
constexpr std::size_t kMostRows = 500;
constexpr std::size_t kRowsAtATime = 100;

constexpr std::uint32_t kPaper = 0xFFFFFF;

// Where a group's colour has less contrast to the paper than this, by WCAG 2, what pales around it
// becomes grey instead.
constexpr double kLeastContrast = 2.0;

// The names of the areas that an area lies in, the innermost first; each list of them once.
class Parents {
 public:
  explicit Parents(const View& view) {
    std::unordered_map<const CMapOb*, std::size_t> places;
    std::vector<const CMapOb*> path;
    for (const CMapOb* area : view.areas) {
      FindPath(view.map, area, path);
      path.pop_back();
      const CMapOb* parent = path.empty() ? nullptr : path.back();
      const auto [place, isNew] = places.emplace(parent, texts_.size());
      if (isNew) texts_.push_back(Joined(path));
      ofAreas_.push_back(place->second);
    }
  }

  const std::vector<std::string>& Texts() const { return texts_; }
  std::size_t PlaceFor(std::size_t area) const { return ofAreas_[area]; }
  const std::string& TextFor(std::size_t area) const { return texts_[ofAreas_[area]]; }
  bool AreAny() const { return texts_.size() > 1 || !texts_.front().empty(); }

 private:
  static std::string Joined(const std::vector<const CMapOb*>& path) {
    std::string whole;
    std::for_each(path.rbegin(), path.rend(), [&](const CMapOb* node) {
      whole.append(whole.empty() ? "" : ", ").append(XmlText(node->GetName().View()));
    });
    return whole;
  }

  std::vector<std::string> texts_;
  std::vector<std::size_t> ofAreas_;
};

// The texts of the values that there are, from the least to the greatest; each once.
class ValueTexts {
 public:
  ValueTexts(const View& view, const Drawing& drawing) : places_(view.areas.size()) {
    std::vector<std::pair<double, std::size_t>> values;
    for (std::size_t i = 0; i < view.areas.size(); ++i) {
      if (const auto value = ValueOf(view, *view.areas[i])) values.emplace_back(*value, i);
    }
    std::sort(values.begin(), values.end());
    for (const auto& [value, area] : values) {
      const std::string_view text = drawing.Of(drawing.areas[area].value);
      if (texts_.empty() || texts_.back() != text) texts_.push_back(text);
      places_[area] = texts_.size() - 1;
    }
  }

  const std::vector<std::string_view>& Texts() const { return texts_; }
  std::optional<std::size_t> PlaceFor(std::size_t area) const { return places_[area]; }

 private:
  std::vector<std::string_view> texts_;
  std::vector<std::optional<std::size_t>> places_;
};

// What the script knows of the areas: an object of lists, which takes less than a list of objects.
class DataWriter {
 public:
  DataWriter(std::string& page, const View& view, const Drawing& drawing, const Parents& parents)
      : page_(page), view_(view), drawing_(drawing), parents_(parents) {}

  void Write() {
    page_ += '{';
    WriteTexts("parentTexts", parents_.Texts());
    const ValueTexts values(view_, drawing_);
    WriteTexts("valueTexts", values.Texts());
    WriteForAreas("keys", [&](const AreaShape& area) { AppendWords(area.key); });
    WriteForAreas("names", [&](const AreaShape& area) { AppendWords(area.name); });
    WriteForAreas("parents", [&](const AreaShape& area) {
      page_ += std::to_string(parents_.PlaceFor(NumberOf(area)));
    });
    WriteForAreas("values", [&](const AreaShape& area) {
      const auto place = values.PlaceFor(NumberOf(area));
      page_ += place ? std::to_string(*place) : "null";
    });
    WriteForAreas("slots", [&](const AreaShape& area) { page_ += std::to_string(area.fill); });
    WriteForAreas("outlines", [&](const AreaShape& area) {
      page_ += '"';
      AppendPath(page_, drawing_, area.rings);
      page_ += '"';
    });
    page_ += "\"missing\":";
    AppendForScript(page_, XmlText(view_.legend.noDataText.View()));
    page_ += '}';
  }

 private:
  std::size_t NumberOf(const AreaShape& area) const {
    return static_cast<std::size_t>(&area - drawing_.areas.data());
  }

  void AppendWords(const WordRange& words) { AppendForScript(page_, drawing_.Of(words)); }

  template <typename Items, typename Append>
  void WriteList(std::string_view name, const Items& items, const Append& append) {
    page_.append("\"").append(name).append("\":[");
    for (const auto& item : items) {
      append(item);
      page_ += ',';
    }
    if (!items.empty()) page_.pop_back();
    page_ += "],\n";
  }

  template <typename Texts>
  void WriteTexts(std::string_view name, const Texts& texts) {
    WriteList(name, texts, [this](std::string_view text) { AppendForScript(page_, text); });
  }

  template <typename Append>
  void WriteForAreas(std::string_view name, const Append& append) {
    WriteList(name, drawing_.areas, append);
  }

  std::string& page_;
  const View& view_;
  const Drawing& drawing_;
  const Parents& parents_;
};

std::string SwatchClass(std::size_t slot) { return 'g' + std::to_string(slot); }

std::string SwatchStyles(const CLegend& legend, const Drawing& drawing) {
  std::string styles;
  for (const LegendRow& row : legend.GetRows()) {
    const FillStyle& fill = drawing.fills.at(static_cast<std::size_t>(row.slot));
    const std::string color = ColorText(fill.color);
    styles += '.' + SwatchClass(static_cast<std::size_t>(row.slot)) + "{background:";
    if (fill.hatch) {
      styles += "repeating-linear-gradient(45deg," + color + " 0 3px," + ColorText(*fill.hatch) +
                " 3px 4px)";
    } else {
      styles += color;
    }
    styles += "}\n";
  }
  return styles;
}

// A cell that shows the colour of a group and its text.
std::string GroupCell(const LegendRow& row) {
  return "<i class=\"" + SwatchClass(static_cast<std::size_t>(row.slot)) + "\"></i>" +
         MarkupText(XmlText(row.text));
}

std::uint32_t PaperOf(const Drawing& drawing) { return drawing.background.value_or(kPaper); }

double Contrast(std::uint32_t a, std::uint32_t b) {
  constexpr double kFlare = 0.05;
  const auto [low, high] = std::minmax({Luminance(a), Luminance(b)});
  return (high + kFlare) / (low + kFlare);
}

std::string LegendRows(const CLegend& legend, const Drawing& drawing) {
  std::string rows;
  for (const LegendRow& row : legend.GetRows()) {
    const auto count = std::count_if(drawing.areas.begin(), drawing.areas.end(),
                                     [&](const AreaShape& area) { return area.fill == row.slot; });
    const FillStyle& fill = drawing.fills.at(static_cast<std::size_t>(row.slot));
    const bool isNear = Contrast(fill.color, PaperOf(drawing)) < kLeastContrast;
    rows += "<tr data-slot=\"" + std::to_string(row.slot) + (isNear ? "\" data-veil=\"dim" : "") +
            "\"><th scope=\"row\">" + GroupCell(row) + "</th><td class=\"n\">" +
            std::to_string(count) + "</td></tr>\n";
  }
  return rows;
}

void AppendRows(std::string& page, const View& view, const Drawing& drawing,
                const Parents& parents) {
  for (std::size_t i = 0; i < drawing.areas.size(); ++i) {
    const AreaShape& area = drawing.areas[i];
    page += "<tr><th scope=\"row\"><bdi>";
    AppendMarkup(page, drawing.Of(area.name));
    page += "</bdi></th>";
    if (parents.AreAny()) page += "<td><bdi>" + MarkupText(parents.TextFor(i)) + "</bdi></td>";
    page += "<td class=\"n\">";
    AppendMarkup(page, drawing.Of(area.value));
    page += "</td><td>" + GroupCell(view.legend.GetRow(area.fill)) + "</td></tr>\n";
  }
}

std::string LevelHeading(const View& view) {
  const int level = view.map.GetDrawLevel();
  const bool isNamed = level < CVELAMap::kMostLevels && !view.map.GetLevelName(level).IsEmpty();
  return isNamed ? MarkupText(XmlText(view.map.GetLevelName(level).View())) : "Area";
}

// A length in page pixels, as text in steps of the drawing's grid.
std::string InSteps(const Drawing& drawing, double pixels) {
  return std::to_string(std::lround(pixels * drawing.grid));
}

std::string Body(View& view, const Drawing& drawing, const Parents& parents,
                 const std::string& title, const std::string& picture) {
  const std::size_t count = drawing.areas.size();
  const bool hasRows = count <= kMostRows;
  const std::string rows = std::to_string(hasRows ? kMostRows : kRowsAtATime);
  const std::string areas = Counted(count, "area");
  const std::string groups = Counted(view.legend.numGroups, "group");
  return Filled(kMapPageBody,
                {{"SWATCHES", SwatchStyles(view.legend, drawing)},
                 {"TITLE", title},
                 {"WITHOUT", hasRows ? "The table below holds all of them." : "So does the table."},
                 {"PICTURE", PercentEncoded(picture, "/")},
                 {"ALTERNATIVE", "Map: " + title + ". " + areas + " in " + groups + " of colour."},
                 {"WIDTH", std::to_string(drawing.width)},
                 {"HEIGHT", std::to_string(drawing.height)},
                 {"GRIDWIDTH", InSteps(drawing, drawing.width)},
                 {"GRIDHEIGHT", InSteps(drawing, drawing.height)},
                 {"MAPLEFT", InSteps(drawing, drawing.map.left)},
                 {"MAPTOP", InSteps(drawing, drawing.map.top)},
                 {"MAPWIDTH", InSteps(drawing, drawing.map.width)},
                 {"MAPHEIGHT", InSteps(drawing, drawing.map.height)},
                 {"PAPER", ColorText(PaperOf(drawing))},
                 {"LEGEND", MarkupText(XmlText(view.legend.title.View()))},
                 {"LEGENDROWS", LegendRows(view.legend, drawing)},
                 {"STATE", " data-rows=\"" + rows + (hasRows ? "\" open" : "\" hidden")},
                 {"AREAS", (count > 1 ? "all " : "") + areas},
                 {"LEVEL", LevelHeading(view)},
                 {"WITHIN", parents.AreAny() ? "<th scope=\"col\" id=\"within\">Part of</th>" : ""},
                 {"VARIABLE", MarkupText(XmlText(SubjectOf(view)))}});
}

}  // namespace

std::string MapPageText(View& view, const Drawing& drawing, const std::string& picture) {
  const std::string title = MarkupText(drawing.title);
  const Parents parents(view);
  std::string page = Filled(kMapPageHead, {{"TITLE", title}});
  page += kMapPageStyle;
  page += Body(view, drawing, parents, title, picture);
  if (drawing.areas.size() <= kMostRows) AppendRows(page, view, drawing, parents);
  page += kMapPageData;
  DataWriter(page, view, drawing, parents).Write();
  page += kMapPageScriptBegin;
  page += kMapPageSearch;
  page += kMapPageConduct;
  page += kMapPageEnd;
  return page;
}

}  // namespace vexel
