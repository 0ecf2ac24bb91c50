#include "kit/report/page_html.h"

#include <vexel/brindle/text.h>

#include <algorithm>
#include <array>

#include "kit/palettes/color.h"
#include "kit/report/page_parts.h"
#include "kit/report/page_pieces.h"
#include "kit/request/hints.h"
#include "kit/request/markup.h"
#include "kit/request/query.h"

namespace vexel {

namespace {

std::size_t SlotOf(const CLegend& legend, const std::optional<double>& value) {
  const std::optional<int> group = value ? legend.GroupOf(*value) : std::nullopt;
  return static_cast<std::size_t>(group.value_or(CLegend::kNoDataSlot));
}

std::string SwatchStyles(const CLegend& legend) {
  std::string styles;
  for (const LegendRow& row : legend.GetRows()) {
    styles +=
        ".g" + std::to_string(row.slot) + "{background:" + ColorText(row.group->color) + "}\n";
  }
  return styles;
}

// A cell that shows the colour of a group and its text.
std::string GroupCell(const LegendRow& row) {
  return "<i class=\"g" + std::to_string(row.slot) + "\"></i>" + MarkupText(row.text);
}

std::string LegendRows(const CLegend& legend) {
  std::string rows;
  for (const LegendRow& row : legend.GetRows()) {
    rows += "<tr><th scope=\"row\">" + GroupCell(row) + "</th><td class=\"n\">" +
            std::to_string(row.group->count) + "</td></tr>\n";
  }
  return rows;
}

// A heading for each level that the path of an area shows.
std::string LevelHeadings(const View& view) {
  std::string headings;
  std::vector<const CMapOb*> path;
  FindPath(view.map, view.areas.front(), path);
  for (const CMapOb* node : path) {
    const int level = node->GetLevel();
    const bool isNamed = level < CVELAMap::kMostLevels && !view.map.GetLevelName(level).IsEmpty();
    headings += "<th scope=\"col\">" +
                (isNamed ? MarkupText(view.map.GetLevelName(level).View()) : "Area") + "</th>";
  }
  return headings;
}

// Writes what a page says of its areas, one after the other: of a large map that is more than the
// map itself.
class AreaWriter {
 public:
  AreaWriter(const View& view, CStdioFile& file)
      : view_(view),
        separators_(view.listener.GetSeparators()),
        missing_(view.legend.noDataText.View()),
        file_(file) {
    for (int slot = 0; slot <= CLegend::kNoDataSlot; ++slot) {
      groupCells_[static_cast<std::size_t>(slot)] = GroupCell(view.legend.GetRow(slot));
    }
  }

  // A row of the table for each area.
  void WriteRows() {
    for (const CMapOb* area : view_.areas) {
      text_.assign("<tr data-key=\"").append(KeyText(area->GetArea())).append("\">");
      FindPath(view_.map, area, path_);
      for (const CMapOb* node : path_) {
        const bool isLast = node == area;
        text_ += isLast ? "<th scope=\"row\">" : "<td>";
        AppendMarkup(text_, node->GetName().View());
        text_ += isLast ? "</th>" : "</td>";
      }
      text_ += "<td class=\"n\">";
      AppendMarkup(text_, ValueText(view_, *area, separators_, missing_));
      text_.append("</td><td>").append(groupCells_[SlotOf(view_.legend, ValueOf(view_, *area))]);
      text_ += "</td></tr>\n";
      file_.WriteString(text_);
    }
  }

  // The entries by which the script knows the areas: key, full name and value.
  void WriteEntries() {
    const char* between = "";
    for (const CMapOb* area : view_.areas) {
      text_.assign(between).append("\"").append(KeyText(area->GetArea())).append("\":[");
      FindPath(view_.map, area, path_);
      whole_.clear();
      std::for_each(path_.rbegin(), path_.rend(), [this](const CMapOb* node) {
        whole_.append(whole_.empty() ? "" : ", ").append(node->GetName().View());
      });
      AppendForScript(text_, whole_);
      text_ += ',';
      AppendForScript(text_, ValueText(view_, *area, separators_, missing_));
      text_ += ']';
      file_.WriteString(text_);
      between = ",\n";
    }
  }

 private:
  const View& view_;
  const NumberSeparators& separators_;
  std::string missing_;
  CStdioFile& file_;
  std::array<std::string, CLegend::kNoDataSlot + 1> groupCells_;
  std::vector<const CMapOb*> path_;
  std::string text_;
  std::string whole_;
};

}  // namespace

std::string HtmlHead(View& view, const std::string& picture) {
  const std::string title = MarkupText(view.map.GenerateTitle().View());
  const std::string alternative = "Map: " + title + ". " + Counted(view.areas.size(), "area") +
                                  " in " + Counted(view.legend.numGroups, "group") +
                                  " of colour; the table below has all values.";
  return Filled(kPageHead, {{"TITLE", title},
                            {"SWATCHES", SwatchStyles(view.legend)},
                            {"PICTURE", PercentEncoded(picture, "/")},
                            {"ALTERNATIVE", alternative},
                            {"WIDTH", std::to_string(view.request.size.width)},
                            {"HEIGHT", std::to_string(view.request.size.height)}});
}

void WriteHtmlTail(View& view, CStdioFile& file) {
  file.WriteString(Filled(kPageTable, {{"LEGEND", MarkupText(view.legend.title.View())},
                                       {"LEGENDROWS", LegendRows(view.legend)},
                                       {"TITLE", MarkupText(view.map.GenerateTitle().View())},
                                       {"LEVELS", LevelHeadings(view)},
                                       {"VARIABLE", MarkupText(SubjectOf(view))}}));
  AreaWriter areas(view, file);
  areas.WriteRows();
  file.WriteString(kPageValues);
  areas.WriteEntries();
  file.WriteString(kPageEnd);
}

}  // namespace vexel
