#include "kit/report/page_html.h"

#include <vexel/brindle/text.h>

#include <algorithm>
#include <array>
#include <utility>

#include "kit/palettes/color.h"
#include "kit/report/page_parts.h"
#include "kit/request/json_text.h"
#include "kit/request/query.h"

namespace vexel {

namespace {

// The text with U+FFFD for each byte that is part of no character: a page says that it is UTF-8.
std::string AsUtf8(std::string_view text) {
  constexpr std::size_t kLongestCharacter = 4;
  std::string whole;
  while (!text.empty()) {
    std::size_t length = 1;
    while (length <= kLongestCharacter && !IsUtf8(text.substr(0, length))) ++length;
    const bool isCharacter = length <= kLongestCharacter;
    whole += isCharacter ? text.substr(0, length) : "\uFFFD";
    text.remove_prefix(std::min(isCharacter ? length : 1, text.size()));
  }
  return whole;
}

// A text as it stands in a page or in an attribute.
void AppendEscaped(std::string& to, std::string_view text) {
  if (!IsUtf8(text)) {
    AppendEscaped(to, AsUtf8(text));
    return;
  }
  constexpr std::array<std::pair<char, std::string_view>, 5> kEntities{
      {{'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'"', "&quot;"}, {'\'', "&#39;"}}};
  for (;;) {
    const std::size_t plain = std::min(text.find_first_of("&<>\"'"), text.size());
    to.append(text.substr(0, plain));
    if (plain == text.size()) return;
    const auto isOf = [&](const auto& entity) { return entity.first == text[plain]; };
    to += std::find_if(kEntities.begin(), kEntities.end(), isOf)->second;
    text.remove_prefix(plain + 1);
  }
}

std::string HtmlEscaped(std::string_view text) {
  std::string escaped;
  AppendEscaped(escaped, text);
  return escaped;
}

// Replaces each "$NAME$" of a text by its value, in one pass, so that values may hold anything.
std::string Filled(std::string_view pattern,
                   std::initializer_list<std::pair<std::string_view, std::string>> values) {
  std::string filled;
  for (;;) {
    const std::size_t open = pattern.find('$');
    const std::size_t close = open == std::string_view::npos ? open : pattern.find('$', open + 1);
    filled.append(pattern.substr(0, open));
    if (close == std::string_view::npos) return filled;
    const std::string_view name = pattern.substr(open + 1, close - open - 1);
    const auto* value = std::find_if(values.begin(), values.end(),
                                     [=](const auto& entry) { return entry.first == name; });
    if (value != values.end()) filled += value->second;
    pattern.remove_prefix(close + 1);
  }
}

std::string CountText(std::size_t count, const std::string& one, const std::string& many) {
  return std::to_string(count) + ' ' + (count == 1 ? one : many);
}

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
  return "<i class=\"g" + std::to_string(row.slot) + "\"></i>" + HtmlEscaped(row.text);
}

std::string LegendRows(const CLegend& legend) {
  std::string rows;
  for (const LegendRow& row : legend.GetRows()) {
    rows += "<tr><th scope=\"row\">" + GroupCell(row) + "</th><td class=\"n\">" +
            std::to_string(row.group->count) + "</td></tr>\n";
  }
  return rows;
}

// Sets `path` to the areas that an area lies in, below the draw root: the uppermost first and
// itself last.
void FindPath(const CVELAMap& map, const CMapOb* area, std::vector<const CMapOb*>& path) {
  path.assign(1, area);
  while (path.back()->GetParent() != nullptr && path.back()->GetParent() != map.GetDrawRoot() &&
         path.back() != map.GetDrawRoot()) {
    path.push_back(path.back()->GetParent());
  }
  std::reverse(path.begin(), path.end());
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
                (isNamed ? HtmlEscaped(view.map.GetLevelName(level).View()) : "Area") + "</th>";
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
        AppendEscaped(text_, node->GetName().View());
        text_ += isLast ? "</th>" : "</td>";
      }
      text_ += "<td class=\"n\">";
      AppendEscaped(text_, ValueText(view_, *area, separators_, missing_));
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
      AppendForScript(whole_);
      text_ += ',';
      AppendForScript(ValueText(view_, *area, separators_, missing_));
      text_ += ']';
      file_.WriteString(text_);
      between = ",\n";
    }
  }

 private:
  // A string of JSON that may stand in a script element: nothing in it can close one or open a
  // comment.
  void AppendForScript(std::string_view string) {
    const std::size_t begin = text_.size();
    AppendJson(text_, string);
    for (std::size_t at = begin; (at = text_.find('<', at)) != std::string::npos;) {
      text_.replace(at, 1, "\\u003c");
    }
  }

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
  const std::string title = HtmlEscaped(view.map.GenerateTitle().View());
  const std::string alternative =
      "Map: " + title + ". " + CountText(view.areas.size(), "area", "areas") + " in " +
      CountText(static_cast<std::size_t>(view.legend.numGroups), "group", "groups") +
      " of colour; the table below has all values.";
  return Filled(kPageHead, {{"TITLE", title},
                            {"SWATCHES", SwatchStyles(view.legend)},
                            {"PICTURE", PercentEncoded(picture, "/")},
                            {"ALTERNATIVE", alternative},
                            {"WIDTH", std::to_string(view.request.size.width)},
                            {"HEIGHT", std::to_string(view.request.size.height)}});
}

void WriteHtmlTail(View& view, CStdioFile& file) {
  file.WriteString(Filled(kPageTable, {{"LEGEND", HtmlEscaped(view.legend.title.View())},
                                       {"LEGENDROWS", LegendRows(view.legend)},
                                       {"TITLE", HtmlEscaped(view.map.GenerateTitle().View())},
                                       {"LEVELS", LevelHeadings(view)},
                                       {"VARIABLE", HtmlEscaped(SubjectOf(view))}}));
  AreaWriter areas(view, file);
  areas.WriteRows();
  file.WriteString(kPageValues);
  areas.WriteEntries();
  file.WriteString(kPageEnd);
}

}  // namespace vexel
