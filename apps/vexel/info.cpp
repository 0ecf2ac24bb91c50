// What is in a file.

#include <vexel/brindle/specfile.h>
#include <vexel/map/formats.h>

#include <algorithm>
#include <array>
#include <limits>
#include <memory>
#include <nlohmann/json.hpp>

#include "arguments.h"
#include "commands.h"
#include "kit/files/files.h"
#include "kit/report/summary.h"
#include "kit/request/error.h"
#include "kit/view/load.h"
#include "kit/view/map_facts.h"

namespace vexel::cli {

namespace {

using Json = nlohmann::ordered_json;

std::string Text(const CString& text) { return std::string(text.View()); }

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

// The bound of all vertices in map units: left, top, right, bottom, `top` the largest y.
struct Bounds {
  double left = std::numeric_limits<double>::max();
  double top = std::numeric_limits<double>::lowest();
  double right = std::numeric_limits<double>::lowest();
  double bottom = std::numeric_limits<double>::max();

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

Json LevelsJson(const MapFacts& facts) {
  Json levels = Json::array();
  for (std::size_t i = 0; i < facts.levelNames.size(); ++i) {
    levels.push_back({{"name", facts.levelNames[i]}, {"areas", facts.areasOnLevel[i]}});
  }
  return levels;
}

Json MapInfo(const std::string& path, CliHost& host) {
  const std::string format = CompiledFormat(path);
  if (!format.empty() && !IsCompiledName(path)) {
    throw Failed(path, "a compiled map, but known as one only by a name that ends in mpc");
  }
  const std::unique_ptr<CVELAMap> map = LoadForInfo(path, host);
  const MapFacts facts = CountMap(*map);
  const CRect& bounds = map->GetBoundRect();
  Json info{{"file", path}, {"kind", format.empty() ? "text map" : "compiled map"}};
  if (!format.empty()) info["format"] = format;
  info["name"] = Text(map->GetName());
  info["longLat"] = map->GetLongLat() != 0;
  info["levels"] = LevelsJson(facts);
  info["areas"] = facts.areas;
  info["polygons"] = facts.polygons;
  info["holes"] = facts.holes;
  info["vertices"] = facts.vertices;
  info["bounds"] = {bounds.left, bounds.top, bounds.right, bounds.bottom};
  info["mapUnits"] = nullptr;
  Bounds units;
  units.Widen(*map);
  if (units.left <= units.right) {
    info["mapUnits"] = {units.left, units.top, units.right, units.bottom};
  }
  return info;
}

Json VariablesJson(const CVELAData& data) {
  Json variables = Json::array();
  for (int column = 0; column < data.GetNumVars(); ++column) {
    int missing = 0;
    for (int row = 0; row < data.GetNumAreas(); ++row) {
      if (data.GetAreaData(row).GetValue(column) == NO_DATA_VALUE) ++missing;
    }
    variables.push_back({{"number", column + 1},
                         {"name", Text(data.GetVarName(column))},
                         {"decimals", data.GetVarDecs(column)},
                         {"missing", missing}});
  }
  return variables;
}

Json LostRowsJson(const CliHost& host) {
  Json rows = Json::array();
  for (const LostRow& row : host.GetLostRows()) {
    rows.push_back({{"codes", row.codes}, {"name", row.name}});
  }
  return rows;
}

Json DataInfo(const std::string& path, CliHost& host) {
  CVELAMap map;
  CVELAData data;
  map.data = &data;
  data.map = &map;
  LoadData(data, path, "", host);
  Json levels = Json::array();
  for (int i = 1; i <= data.GetNumDataLevels(); ++i) levels.push_back(Text(map.GetLevelName(i)));
  const std::string mapFile = Text(map.GetFileStatus().fullName);
  Json info{{"file", path}, {"kind", "data file"}};
  info["map"] = mapFile.empty() ? Json(nullptr) : Json(mapFile);
  info["label"] = Text(data.GetMapLabel());
  info["levels"] = levels;
  info["variables"] = VariablesJson(data);
  info["rows"] = data.GetNumAreas();
  info["rowsWithoutArea"] = LostRowsJson(host);
  return info;
}

// A count with its noun.
std::string Counted(const Json& count, const std::string& noun) {
  return count.dump() + ' ' + noun + (count == 1 ? "" : "s");
}

// The four sides of a bound as two corners.
std::string Corners(const Json& sides) {
  return sides[0].dump() + ", " + sides[1].dump() + " to " + sides[2].dump() + ", " +
         sides[3].dump();
}

using Facts = std::vector<std::pair<std::string, std::string>>;

std::string FactsText(const Facts& facts) {
  constexpr std::size_t kNameWidth = 13;
  std::string text;
  for (const auto& [name, value] : facts) {
    const std::size_t gap = name.size() < kNameWidth ? kNameWidth - name.size() : 1;
    text.append(name).append(gap, ' ').append(value).append("\n");
  }
  return text;
}

std::string MapText(const Json& info) {
  Facts facts{{"file", info["file"]}, {"kind", info["kind"]}};
  if (info.contains("format")) facts.emplace_back("format", info["format"]);
  facts.emplace_back("name", info["name"]);
  facts.emplace_back("coordinates", info["longLat"] == true ? "longitude and latitude" : "plane");
  facts.emplace_back("areas", info["areas"].dump());
  for (const Json& level : info["levels"]) {
    facts.emplace_back("  " + level["name"].get<std::string>(), level["areas"].dump());
  }
  facts.emplace_back("polygons",
                     info["polygons"].dump() + ", of them " + Counted(info["holes"], "hole"));
  facts.emplace_back("vertices", info["vertices"].dump());
  facts.emplace_back("bounds", Corners(info["bounds"]) + " in the working space");
  facts.emplace_back("", info["mapUnits"].is_null() ? "no map units in the file"
                                                    : Corners(info["mapUnits"]) + " in map units");
  return FactsText(facts);
}

std::string DataText(const Json& info, const CliHost& host) {
  std::string levels;
  for (const Json& level : info["levels"]) {
    levels += (levels.empty() ? "" : ", ") + level.get<std::string>();
  }
  std::string text = FactsText({{"file", info["file"]},
                                {"kind", info["kind"]},
                                {"map", info["map"].is_null() ? "none" : info["map"]},
                                {"label", info["label"]},
                                {"levels", levels},
                                {"rows", info["rows"].dump()},
                                {"variables", info["variables"].empty() ? "none" : ""}});
  Lines lines;
  for (const Json& variable : info["variables"]) {
    lines.push_back({variable["number"].dump() + "  " + variable["name"].get<std::string>(),
                     Counted(variable["decimals"], "decimal"),
                     variable["missing"].dump() + " missing"});
  }
  text += Aligned(lines, "  ");
  if (!host.GetLostRows().empty()) text += LostRowsText(host.GetLostRows()) + '\n';
  return text;
}

}  // namespace

int Info(int argc, const char* const* argv, CliHost& host) {
  std::string path;
  bool asJson = false;
  Arguments arguments("info", "Tell what is in a map, a compiled map or a data file.",
                      "vexel info counties.mdf");
  arguments.Positional("FILE", "The file", path);
  arguments.Flag("--json", "Print JSON", asJson);
  if (!arguments.Parse(argc, argv)) return kDone;
  CheckReadable(path);
  const bool isData = !IsCompiledName(path) && IsDataFile(path);
  const Json info = isData ? DataInfo(path, host) : MapInfo(path, host);
  const std::string text = asJson ? info.dump(2, ' ', false, Json::error_handler_t::replace) + '\n'
                           : isData ? DataText(info, host)
                                    : MapText(info);
  WriteText("-", text);
  return kDone;
}

}  // namespace vexel::cli
