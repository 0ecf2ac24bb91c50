#include "kit/report/map_page.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "kit/palettes/color.h"
#include "kit/publish/svg.h"
#include "kit/report/area_parents.h"
#include "kit/report/area_search.h"
#include "kit/report/base_style.h"
#include "kit/report/map_data.h"
#include "kit/report/map_page_parts.h"
#include "kit/report/map_page_script.h"
#include "kit/report/map_page_style.h"
#include "kit/report/page_pieces.h"
#include "kit/request/hints.h"
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
                const AreaParents& parents) {
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

// A length in page pixels, as text in steps of the drawing's grid.
std::string InSteps(const Drawing& drawing, double pixels) {
  return std::to_string(std::lround(pixels * drawing.grid));
}

std::string Body(View& view, const Drawing& drawing, const AreaParents& parents,
                 const std::string& title, const std::string& picture) {
  const std::size_t count = drawing.areas.size();
  const bool hasRows = count <= kMostRows;
  const std::string rows = std::to_string(hasRows ? kMostRows : kRowsAtATime);
  const std::string areas = Counted(count, "area");
  return Filled(kMapPageBody,
                {{"SWATCHES", SwatchStyles(view.legend, drawing)},
                 {"TITLE", title},
                 {"WITHOUT", hasRows ? "The table below holds all of them." : "So does the table."},
                 {"PICTURE", PercentEncoded(picture, "/")},
                 {"ALTERNATIVE", AlternativeText(view, title)},
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
                 {"LEVEL", LevelHeading(view.map)},
                 {"WITHIN", parents.AreAny() ? "<th scope=\"col\" id=\"within\">Part of</th>" : ""},
                 {"VARIABLE", MarkupText(XmlText(SubjectOf(view)))}});
}

}  // namespace

std::string MapPageText(View& view, const Drawing& drawing, const std::string& picture) {
  const std::string title = MarkupText(drawing.title);
  const AreaParents parents(view);
  std::string page = Filled(kMapPageHead, {{"TITLE", title}});
  page += kBaseStyle;
  page += kMapPageStyle;
  page += Body(view, drawing, parents, title, picture);
  if (drawing.areas.size() <= kMostRows) AppendRows(page, view, drawing, parents);
  page += kMapPageData;
  page += '{';
  AppendMapData(page, view, drawing, parents);
  page += '}';
  page += kMapPageScriptBegin;
  page += kAreaSearch;
  page += kMapPageConduct;
  page += kMapPageEnd;
  return page;
}

}  // namespace vexel
