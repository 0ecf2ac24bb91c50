#include "kit/report/report.h"

#include <vexel/messages/messages.h>

#include <array>
#include <span>
#include <utility>

#include "kit/palettes/color.h"
#include "kit/request/json_request.h"
#include "kit/request/json_text.h"
#include "kit/request/parameters.h"
#include "kit/view/load.h"
#include "kit/view/map_facts.h"

namespace vexel {

namespace {

void WriteRect(JsonWriter& json, std::string_view name, const CRect& rect) {
  json.Member(name, std::array{rect.left, rect.top, rect.right, rect.bottom});
}

void WriteMap(JsonWriter& json, const CVELAMap& map) {
  const MapFacts facts = CountMap(map);
  const std::string file(map.GetFileStatus().fullName.View());
  json.Name("map");
  json.BeginObject();
  json.Member("name", map.GetName().View());
  json.Member("file", file);
  json.Member("form", IsCompiledName(file) ? "compiled" : "text");
  json.Member("levels", facts.levelNames);
  json.Member("areas", facts.areas);
  json.Member("polygons", facts.polygons);
  json.Member("vertices", facts.vertices);
  WriteRect(json, "bounds", map.GetBoundRect());
  json.EndObject();
}

void WriteView(JsonWriter& json, const CVELAMap& map, const PageRects& page) {
  const CMapOb& root = *map.GetDrawRoot();
  const CAreaStruct& key = root.GetArea();
  json.Name("view");
  json.BeginObject();
  json.Member("root", std::span(key.codes).first(static_cast<std::size_t>(key.GetLevel())));
  json.Member("rootName", root.GetName().View());
  json.Member("level", map.GetDrawLevel());
  json.Member("angle", root.GetAngle());
  WriteRect(json, "extent", page.extent);
  json.EndObject();
}

void WriteVariable(JsonWriter& json, View& view) {
  const int column = view.data.GetSelected();
  const int calculation = view.data.GetCalcSelected();
  json.Name("variable");
  json.BeginObject();
  json.Member("column", column + 1);
  json.Member("name", SubjectOf(view));
  json.Member("decimals", view.data.GetVarDecs(column));
  json.Name("calculation");
  if (calculation >= 0) {
    json.Value(CalculationNames()[static_cast<std::size_t>(calculation)]);
  } else {
    json.Value(nullptr);
  }
  json.EndObject();
}

void WriteGroup(JsonWriter& json, const LegendGroup& group) {
  json.BeginObject();
  json.Member("lower", group.lower);
  json.Member("upper", group.upper);
  json.Member("label", group.rangeLabel.View());
  json.Member("name", group.groupName.View());
  json.Member("color", ColorText(group.color));
  json.Member("count", group.count);
  json.EndObject();
}

void WriteLegend(JsonWriter& json, const CLegend& legend) {
  json.Name("legend");
  json.BeginObject();
  json.Member("title", legend.title.View());
  json.Name("groups");
  json.BeginArray();
  for (const LegendGroup& group : legend.GetGroups()) WriteGroup(json, group);
  json.EndArray();
  const LegendGroup& missing = legend.groups[CLegend::kNoDataSlot];
  json.Name("missing");
  json.BeginObject();
  json.Member("label", missing.rangeLabel.View());
  json.Member("color", ColorText(missing.color));
  json.Member("count", missing.count);
  json.EndObject();
  json.EndObject();
}

void WritePageSize(JsonWriter& json, const View& view, const PageRects& page) {
  json.Name("page");
  json.BeginObject();
  json.Member("width", view.request.size.width);
  json.Member("height", view.request.size.height);
  WriteRect(json, "map", page.map);
  WriteRect(json, "legend", page.legend);
  json.EndObject();
}

// The list of areas grows with the map, so that each has one line only.
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
  return ReportText(view, {page.GetExtent(), page.GetMapRect(), page.GetLegendRect()});
}

std::string ReportText(View& view, const PageRects& page) {
  JsonWriter head;
  head.BeginObject();
  WriteMap(head, view.map);
  WriteView(head, view.map, page);
  head.Member("title", view.map.GenerateTitle().View());
  WriteVariable(head, view);
  WriteLegend(head, view.legend);
  WritePageSize(head, view, page);
  std::string text = std::move(head).Take();
  text += ",\n  \"request\": " + JsonText(view.request, "  ");
  AppendWarnings(text, view);
  text += ",\n  \"areas\": [";
  AppendAreas(text, view, view.listener.GetSeparators());
  text += "\n  ]\n}\n";
  return text;
}

}  // namespace vexel
