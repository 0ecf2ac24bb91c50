#include "page_html.h"

#include <algorithm>
#include <array>
#include <utility>

#include "json_text.h"
#include "page_parts.h"

namespace vexel::cli {

namespace {

std::string Text(const CString& text) { return std::string(text.View()); }

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

// The slots of the legend that have a row, the one without data last.
std::vector<std::size_t> LegendSlots(const CLegend& legend) {
  std::vector<std::size_t> slots;
  slots.reserve(legend.groups.size());
  for (int i = 0; i < legend.numGroups; ++i) slots.push_back(static_cast<std::size_t>(i));
  if (legend.IsMissingData() != 0) slots.push_back(CLegend::kNoDataSlot);
  return slots;
}

std::string LabelOf(const CLegend& legend, std::size_t slot) {
  const LegendGroup& group = legend.groups[slot];
  return HtmlEscaped((legend.useGroupNames != 0 ? group.groupName : group.rangeLabel).View());
}

std::size_t SlotOf(const CLegend& legend, const std::optional<double>& value) {
  const std::optional<int> group = value ? GroupOf(legend, *value) : std::nullopt;
  return group ? static_cast<std::size_t>(*group) : CLegend::kNoDataSlot;
}

std::string SwatchStyles(const CLegend& legend) {
  std::string styles;
  for (const std::size_t slot : LegendSlots(legend)) {
    styles +=
        ".g" + std::to_string(slot) + "{background:" + ColorText(legend.groups[slot].color) + "}\n";
  }
  return styles;
}

// A cell that shows the colour of a group and its range.
std::string GroupCell(const CLegend& legend, std::size_t slot) {
  return "<i class=\"g" + std::to_string(slot) + "\"></i>" + LabelOf(legend, slot);
}

std::string LegendRows(const CLegend& legend) {
  std::string rows;
  for (const std::size_t slot : LegendSlots(legend)) {
    rows += "<tr><th scope=\"row\">" + GroupCell(legend, slot) + "</th><td class=\"n\">" +
            std::to_string(legend.groups[slot].count) + "</td></tr>\n";
  }
  return rows;
}

// The areas that an area lies in, the uppermost first and itself last, below the draw root.
std::vector<const CMapOb*> PathOf(const CVELAMap& map, const CMapOb* area) {
  std::vector<const CMapOb*> path{area};
  while (path.back()->GetParent() != nullptr && path.back()->GetParent() != map.GetDrawRoot() &&
         path.back() != map.GetDrawRoot()) {
    path.push_back(path.back()->GetParent());
  }
  std::reverse(path.begin(), path.end());
  return path;
}

// A heading for each level that the path of an area shows.
std::string LevelHeadings(const View& view) {
  std::string headings;
  for (const CMapOb* node : PathOf(view.map, view.areas.front())) {
    const int level = node->GetLevel();
    const bool isNamed = level < CVELAMap::kMostLevels && !view.map.GetLevelName(level).IsEmpty();
    headings += "<th scope=\"col\">" +
                (isNamed ? HtmlEscaped(view.map.GetLevelName(level).View()) : "Area") + "</th>";
  }
  return headings;
}

// One row of the table, and one entry of the list by which the script knows an area.
void AppendArea(const View& view, const CMapOb& area, const std::string& value, std::string& rows,
                std::string& entries) {
  const std::vector<const CMapOb*> path = PathOf(view.map, &area);
  std::string whole;
  std::string cells;
  for (const CMapOb* node : path) {
    const std::string name = Text(node->GetName());
    const bool isLast = node == path.back();
    cells += isLast ? "<th scope=\"row\">" : "<td>";
    cells.append(HtmlEscaped(name)).append(isLast ? "</th>" : "</td>");
    whole = whole.empty() ? name : name + ", " + whole;
  }
  const std::string key = KeyText(area.GetArea());
  const std::size_t slot = SlotOf(view.legend, ValueOf(view, area));
  rows += "<tr data-key=\"" + key + "\">" + cells + "<td class=\"n\">" + HtmlEscaped(value) +
          "</td><td>" + GroupCell(view.legend, slot) + "</td></tr>\n";
  entries += (entries.empty() ? "\"" : ",\n\"") + key + "\":[";
  AppendJson(entries, std::string_view(whole));
  entries += ',';
  AppendJson(entries, std::string_view(value));
  entries += ']';
}

// JSON that may stand in a script element: nothing in it can close one or open a comment.
std::string ForScript(const std::string& json) {
  std::string safe;
  safe.reserve(json.size());
  for (const char c : json) {
    if (c == '<') {
      safe += "\\u003c";
    } else {
      safe += c;
    }
  }
  return safe;
}

}  // namespace

std::string HtmlEscaped(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      case '\'':
        escaped += "&#39;";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

std::string UrlEscaped(std::string_view path) {
  constexpr std::string_view kPlain = "/-._~";
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string escaped;
  for (const char c : path) {
    const auto byte = static_cast<unsigned char>(c);
    const bool isAlphanumeric =
        (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    if (isAlphanumeric || kPlain.find(c) != std::string_view::npos) {
      escaped += c;
    } else {
      escaped += {'%', kDigits[byte >> 4U], kDigits[byte & 0xFU]};
    }
  }
  return escaped;
}

std::string HtmlHead(View& view, const ViewOptions& options, const std::string& picture) {
  const std::string title = HtmlEscaped(view.map.GenerateTitle().View());
  const std::string alternative =
      "Map: " + title + ". " + CountText(view.areas.size(), "area", "areas") + " in " +
      CountText(static_cast<std::size_t>(view.legend.numGroups), "group", "groups") +
      " of colour; the table below has all values.";
  return Filled(kPageHead, {{"TITLE", title},
                            {"SWATCHES", SwatchStyles(view.legend)},
                            {"PICTURE", UrlEscaped(picture)},
                            {"ALTERNATIVE", alternative},
                            {"WIDTH", std::to_string(options.width)},
                            {"HEIGHT", std::to_string(options.height)}});
}

std::string HtmlTail(View& view, CliHost& host) {
  const NumberSeparators& separators = host.GetSeparators();
  const std::string missing = Text(view.legend.noDataText);
  std::string rows;
  std::string entries;
  for (const CMapOb* area : view.areas) {
    AppendArea(view, *area, ValueText(view, *area, separators, missing), rows, entries);
  }
  return Filled(kPageTail, {{"LEGEND", HtmlEscaped(view.legend.title.View())},
                            {"LEGENDROWS", LegendRows(view.legend)},
                            {"TITLE", HtmlEscaped(view.map.GenerateTitle().View())},
                            {"LEVELS", LevelHeadings(view)},
                            {"VARIABLE", HtmlEscaped(SubjectOf(view))},
                            {"ROWS", rows},
                            {"VALUES", '{' + ForScript(entries) + '}'}});
}

}  // namespace vexel::cli
