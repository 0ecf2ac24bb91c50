#include "kit/report/report.h"

#include <vexel/messages/messages.h>

#include <nlohmann/json.hpp>

#include "kit/palettes/color.h"
#include "kit/request/json_request.h"
#include "kit/request/json_text.h"
#include "kit/request/parameters.h"
#include "kit/view/load.h"
#include "kit/view/map_facts.h"

namespace vexel {

namespace {

using Json = nlohmann::ordered_json;

std::string Text(const CString& text) { return std::string(text.View()); }

Json RectJson(const CRect& rect) { return {rect.left, rect.top, rect.right, rect.bottom}; }

Json KeyJson(const CAreaStruct& key) {
  const auto* first = key.codes.data();
  return std::vector<int>(first, first + key.GetLevel());
}

Json MapJson(const CVELAMap& map) {
  const MapFacts facts = CountMap(map);
  const std::string file = Text(map.GetFileStatus().fullName);
  return {{"name", Text(map.GetName())},
          {"file", file},
          {"form", IsCompiledName(file) ? "compiled" : "text"},
          {"levels", facts.levelNames},
          {"areas", facts.areas},
          {"polygons", facts.polygons},
          {"vertices", facts.vertices},
          {"bounds", RectJson(map.GetBoundRect())}};
}

Json ViewJson(const CVELAMap& map, const CMapGif& page) {
  const CMapOb& root = *map.GetDrawRoot();
  return {{"root", KeyJson(root.GetArea())},
          {"rootName", Text(root.GetName())},
          {"level", map.GetDrawLevel()},
          {"angle", root.GetAngle()},
          {"extent", RectJson(page.GetExtent())}};
}

Json VariableJson(View& view) {
  const int column = view.data.GetSelected();
  const int calculation = view.data.GetCalcSelected();
  Json variable{{"column", column + 1},
                {"name", SubjectOf(view)},
                {"decimals", view.data.GetVarDecs(column)},
                {"calculation", nullptr}};
  if (calculation >= 0) {
    variable["calculation"] = CalculationNames()[static_cast<std::size_t>(calculation)];
  }
  return variable;
}

Json LegendJson(const CLegend& legend) {
  Json groups = Json::array();
  for (const LegendGroup& group : legend.GetGroups()) {
    groups.push_back({{"lower", group.lower},
                      {"upper", group.upper},
                      {"label", Text(group.rangeLabel)},
                      {"name", Text(group.groupName)},
                      {"color", ColorText(group.color)},
                      {"count", group.count}});
  }
  const LegendGroup& missing = legend.groups[CLegend::kNoDataSlot];
  return {{"title", Text(legend.title)},
          {"groups", groups},
          {"missing",
           {{"label", Text(missing.rangeLabel)},
            {"color", ColorText(missing.color)},
            {"count", missing.count}}}};
}

// The list of areas grows with the map, so its text is put together without a tree.
void AppendAreas(std::string& to, const View& view, const NumberSeparators& separators) {
  const std::string noData(MessageText(Message::noData));
  std::string_view between = "\n    ";
  for (const CMapOb* area : view.areas) {
    const std::optional<double> value = ValueOf(view, *area);
    const std::optional<int> group = value ? view.legend.GroupOf(*value) : std::nullopt;
    to.append(between) += "{\"key\": ";
    AppendJson(to, area->GetArea());
    to += ", \"name\": ";
    AppendJson(to, area->GetName().View());
    to += ", \"value\": ";
    AppendJson(to, value);
    to += ", \"text\": ";
    AppendJson(to, std::string_view(ValueText(view, *area, separators, noData)));
    to += ", \"group\": " + (group ? std::to_string(*group) : std::string("null"));
    to += ", \"color\": \"" + ColorText(static_cast<std::uint32_t>(area->GetColor())) + "\"}";
    between = ",\n    ";
  }
}

void AppendTexts(std::string& to, const std::vector<std::string>& texts) {
  to += '[';
  for (const std::string& text : texts) {
    if (&text != texts.data()) to += ", ";
    AppendJson(to, std::string_view(text));
  }
  to += ']';
}

// What the result should be read with: sentences on the page, doubtful places in the files, and the
// rows of data that are not on it.
void AppendWarnings(std::string& to, const View& view) {
  to += ",\n  \"notes\": ";
  AppendTexts(to, view.notes);
  to += ",\n  \"remarks\": {\"count\": " + std::to_string(view.listener.GetRemarkCount()) +
        ", \"first\": ";
  AppendTexts(to, view.listener.GetFirstRemarks());
  to += "},\n  \"rowsWithoutArea\": [";
  std::string_view between;
  for (const LostRow& row : view.listener.GetLostRows()) {
    to.append(between).append("{\"key\": [").append(row.codes).append("], \"name\": ");
    AppendJson(to, std::string_view(row.name));
    to += ", \"line\": " + std::to_string(row.line) + '}';
    between = ", ";
  }
  to += ']';
}

}  // namespace

std::string ReportText(View& view, const CMapGif& page) {
  const Json head{{"map", MapJson(view.map)},
                  {"view", ViewJson(view.map, page)},
                  {"title", Text(view.map.GenerateTitle())},
                  {"variable", VariableJson(view)},
                  {"legend", LegendJson(view.legend)},
                  {"page",
                   {{"width", view.request.size.width},
                    {"height", view.request.size.height},
                    {"map", RectJson(page.GetMapRect())},
                    {"legend", RectJson(page.GetLegendRect())}}}};
  std::string text = head.dump(2, ' ', false, Json::error_handler_t::replace);
  text.resize(text.rfind('\n'));  // without its closing brace
  text += ",\n  \"request\": " + JsonText(view.request, "  ");
  AppendWarnings(text, view);
  text += ",\n  \"areas\": [";
  AppendAreas(text, view, view.listener.GetSeparators());
  text += "\n  ]\n}\n";
  return text;
}

}  // namespace vexel
