// What is in a file.

#include <vexel/brindle/specfile.h>
#include <vexel/map/formats.h>

#include <algorithm>
#include <array>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "arguments.h"
#include "commands.h"
#include "kit/files/files.h"
#include "kit/files/printable.h"
#include "kit/report/summary.h"
#include "kit/request/error.h"
#include "kit/request/hints.h"
#include "kit/request/json_text.h"
#include "kit/view/load.h"
#include "kit/view/map_facts.h"

namespace vexel::cli {

namespace {

// The format that the first bytes of a compiled map tell; empty for another file.
std::string CompiledFormat(const std::string& path) {
  std::array<char, kCompiledTag.size()> bytes{};
  CFile file;
  if (file.Open(path.c_str(), CFile::typeBinary) == 0) return {};
  const std::string_view found(bytes.data(), file.Read(bytes.data(), bytes.size()));
  for (const std::string_view format : {kCompiledTag, kOldCompiledTag}) {
    if (EqualNoCase(found, format)) return std::string(format);
  }
  return {};
}

bool IsDataFile(const std::string& path) {
  CSpecFile file(0);
  if (file.Open(path.c_str(), 0) == 0) return false;
  CSpecFile::Line line;
  while (file.NextLine(line)) {
    if (line.IsHeading()) return EqualNoCase(line.command, "[MapDataFile]");
  }
  return false;
}

// The bound of all vertices in map units, `top` the largest y.
struct Bounds {
  double left = std::numeric_limits<double>::max();
  double top = std::numeric_limits<double>::lowest();
  double right = std::numeric_limits<double>::lowest();
  double bottom = std::numeric_limits<double>::max();

  bool IsEmpty() const { return left > right; }
  std::array<double, 4> Sides() const { return {left, top, right, bottom}; }

  void Widen(const CMapOb& node) {
    for (int i = 0; i < node.GetNumPolygons(); ++i) {
      for (const tagVELAPOINTF& point : node.GetPoly(i)->GetPointsF()) {
        left = std::min<double>(left, point.x);
        right = std::max<double>(right, point.x);
        bottom = std::min<double>(bottom, point.y);
        top = std::max<double>(top, point.y);
      }
    }
    for (int i = 0; i < node.GetNumChildren(); ++i) Widen(*node.GetChild(i));
  }
};

// Loads a map with its map units if it has them.
std::unique_ptr<CVELAMap> LoadForInfo(const std::string& path, CliHost& host) {
  auto map = std::make_unique<CVELAMap>();
  try {
    LoadMap(*map, path, 1, host);
  } catch (const Error&) {
    if (!IsCompiledName(path) || host.HasSpoken()) throw;
    map = std::make_unique<CVELAMap>();
    LoadMap(*map, path, 0, host);
  }
  return map;
}

// Whole coordinates of the working space, and those of map units with a point at least.
std::string CoordinateText(int number) { return std::to_string(number); }
std::string CoordinateText(double number) { return JsonNumber(number); }

// The four sides of a bound as two corners.
template <typename Number>
std::string Corners(const std::array<Number, 4>& sides) {
  return CoordinateText(sides[0]) + ", " + CoordinateText(sides[1]) + " to " +
         CoordinateText(sides[2]) + ", " + CoordinateText(sides[3]);
}

using Facts = std::vector<std::pair<std::string, std::string>>;

std::string FactsText(const Facts& facts) {
  constexpr std::size_t kNameWidth = 13;
  std::string text;
  for (const auto& [name, value] : facts) {
    const std::size_t gap = name.size() < kNameWidth ? kNameWidth - name.size() : 1;
    text.append(Printable(name)).append(gap, ' ').append(Printable(value)).append("\n");
  }
  return text;
}

struct MapInfo {
  std::string file;
  std::string format;  // empty for a text map
  std::string name;
  bool longLat = false;
  MapFacts facts;
  std::array<int, 4> bounds{};
  Bounds mapUnits;

  const char* Kind() const { return format.empty() ? "text map" : "compiled map"; }
};

MapInfo ReadMapInfo(const std::string& path, CliHost& host) {
  const std::string format = CompiledFormat(path);
  if (!format.empty() && !IsCompiledName(path)) {
    throw Failed(path, "a compiled map, but known as one only by a name that ends in mpc");
  }
  const std::unique_ptr<CVELAMap> map = LoadForInfo(path, host);
  const CRect& bounds = map->GetBoundRect();
  MapInfo info{.file = path,
               .format = format,
               .name = std::string(map->GetName().View()),
               .longLat = map->GetLongLat() != 0,
               .facts = CountMap(*map),
               .bounds = {bounds.left, bounds.top, bounds.right, bounds.bottom},
               .mapUnits = {}};
  info.mapUnits.Widen(*map);
  return info;
}

std::string MapJson(const MapInfo& info) {
  JsonWriter json;
  json.BeginObject();
  json.Member("file", info.file);
  json.Member("kind", info.Kind());
  if (!info.format.empty()) json.Member("format", info.format);
  json.Member("name", info.name);
  json.Member("longLat", info.longLat);
  json.Name("levels");
  json.BeginArray();
  for (std::size_t i = 0; i < info.facts.levelNames.size(); ++i) {
    json.BeginObject();
    json.Member("name", info.facts.levelNames[i]);
    json.Member("areas", info.facts.areasOnLevel[i]);
    json.EndObject();
  }
  json.EndArray();
  json.Member("areas", info.facts.areas);
  json.Member("polygons", info.facts.polygons);
  json.Member("holes", info.facts.holes);
  json.Member("vertices", info.facts.vertices);
  json.Member("bounds", info.bounds);
  json.Name("mapUnits");
  if (info.mapUnits.IsEmpty()) {
    json.Value(nullptr);
  } else {
    json.Value(info.mapUnits.Sides());
  }
  json.EndObject();
  return std::move(json).Take() + '\n';
}

std::string MapText(const MapInfo& info) {
  Facts facts{{"file", info.file}, {"kind", info.Kind()}};
  if (!info.format.empty()) facts.emplace_back("format", info.format);
  facts.emplace_back("name", info.name);
  facts.emplace_back("coordinates", info.longLat ? "longitude and latitude" : "plane");
  facts.emplace_back("areas", std::to_string(info.facts.areas));
  for (std::size_t i = 0; i < info.facts.levelNames.size(); ++i) {
    facts.emplace_back("  " + info.facts.levelNames[i], std::to_string(info.facts.areasOnLevel[i]));
  }
  facts.emplace_back("polygons", std::to_string(info.facts.polygons) + ", of them " +
                                     Counted(info.facts.holes, "hole"));
  facts.emplace_back("vertices", std::to_string(info.facts.vertices));
  facts.emplace_back("bounds", Corners(info.bounds) + " in the working space");
  facts.emplace_back("", info.mapUnits.IsEmpty()
                             ? "no map units in the file"
                             : Corners(info.mapUnits.Sides()) + " in map units");
  return FactsText(facts);
}

struct VariableInfo {
  std::string name;
  int decimals = 0;
  int missing = 0;
};

struct DataInfo {
  std::string file;
  std::string map;  // empty when there is none
  std::string label;
  std::vector<std::string> levels;
  std::vector<VariableInfo> variables;
  int rows = 0;
  std::vector<LostRow> lostRows;
};

std::vector<VariableInfo> ReadVariables(const CVELAData& data) {
  std::vector<VariableInfo> variables;
  for (int column = 0; column < data.GetNumVars(); ++column) {
    VariableInfo& variable = variables.emplace_back();
    variable.name = data.GetVarName(column).View();
    variable.decimals = data.GetVarDecs(column);
    for (int row = 0; row < data.GetNumAreas(); ++row) {
      if (data.GetAreaData(row).GetValue(column) == NO_DATA_VALUE) ++variable.missing;
    }
  }
  return variables;
}

DataInfo ReadDataInfo(const std::string& path, CliHost& host) {
  CVELAMap map;
  CVELAData data;
  map.data = &data;
  data.map = &map;
  LoadData(data, path, "", host);
  DataInfo info;
  info.file = path;
  info.map = map.GetFileStatus().fullName.View();
  info.label = data.GetMapLabel().View();
  for (int i = 1; i <= data.GetNumDataLevels(); ++i) {
    info.levels.emplace_back(map.GetLevelName(i).View());
  }
  info.variables = ReadVariables(data);
  info.rows = data.GetNumAreas();
  info.lostRows = host.GetLostRows();
  return info;
}

void WriteVariables(JsonWriter& json, const std::vector<VariableInfo>& variables) {
  json.Name("variables");
  json.BeginArray();
  int number = 0;
  for (const VariableInfo& variable : variables) {
    json.BeginObject();
    json.Member("number", ++number);
    json.Member("name", variable.name);
    json.Member("decimals", variable.decimals);
    json.Member("missing", variable.missing);
    json.EndObject();
  }
  json.EndArray();
}

void WriteLostRows(JsonWriter& json, const std::vector<LostRow>& rows) {
  json.Name("rowsWithoutArea");
  json.BeginArray();
  for (const LostRow& row : rows) {
    json.BeginObject();
    json.Member("codes", row.codes);
    json.Member("name", row.name);
    json.EndObject();
  }
  json.EndArray();
}

std::string DataJson(const DataInfo& info) {
  JsonWriter json;
  json.BeginObject();
  json.Member("file", info.file);
  json.Member("kind", "data file");
  if (info.map.empty()) {
    json.Member("map", nullptr);
  } else {
    json.Member("map", info.map);
  }
  json.Member("label", info.label);
  json.Member("levels", info.levels);
  WriteVariables(json, info.variables);
  json.Member("rows", info.rows);
  WriteLostRows(json, info.lostRows);
  json.EndObject();
  return std::move(json).Take() + '\n';
}

std::string DataText(const DataInfo& info) {
  std::string levels;
  for (const std::string& level : info.levels) levels += (levels.empty() ? "" : ", ") + level;
  std::string text = FactsText({{"file", info.file},
                                {"kind", "data file"},
                                {"map", info.map.empty() ? "none" : info.map},
                                {"label", info.label},
                                {"levels", levels},
                                {"rows", std::to_string(info.rows)},
                                {"variables", info.variables.empty() ? "none" : ""}});
  Lines lines;
  int number = 0;
  for (const VariableInfo& variable : info.variables) {
    lines.push_back({std::to_string(++number) + "  " + Printable(variable.name),
                     Counted(variable.decimals, "decimal"),
                     std::to_string(variable.missing) + " missing"});
  }
  text += Aligned(lines, "  ");
  if (!info.lostRows.empty()) text += LostRowsText(info.lostRows) + '\n';
  return text;
}

std::string MapAnswer(const std::string& path, bool asJson, CliHost& host) {
  const MapInfo info = ReadMapInfo(path, host);
  return asJson ? MapJson(info) : MapText(info);
}

std::string DataAnswer(const std::string& path, bool asJson, CliHost& host) {
  const DataInfo info = ReadDataInfo(path, host);
  return asJson ? DataJson(info) : DataText(info);
}

}  // namespace

int Info(int argc, const char* const* argv, CliHost& host) {
  std::string path;
  bool asJson = false;
  Arguments arguments("vexel info", "Tell what is in a map, a compiled map or a data file.",
                      "vexel info counties.mdf");
  arguments.Positional("FILE", "The file", path);
  arguments.Flag("--json", "Print JSON", asJson);
  if (!arguments.Parse(argc, argv)) return kDone;
  CheckReadable(path);
  const bool isData = !IsCompiledName(path) && IsDataFile(path);
  WriteText("-", isData ? DataAnswer(path, asJson, host) : MapAnswer(path, asJson, host));
  return kDone;
}

}  // namespace vexel::cli
