// vexel info: what is in a map or a data file.

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>

#include "arguments.h"
#include "brindle/specfile.h"
#include "commands.h"
#include "failure.h"
#include "files.h"
#include "load.h"
#include "map_facts.h"

namespace vexel::cli {

namespace {

using Json = nlohmann::ordered_json;

// A map that tells which compiled form it was read from.
class ReadMap : public CVELAMap {
 public:
  const char* Form() const {
    return compiledOldFormat != 0 ? "compiled map, old format" : "compiled map";
  }
};

std::string FirstHeading(const std::string& file) {
  CSpecFile spec(0);
  CheckReadable(file);
  if (spec.Open(file.c_str(), 0) == 0) throw Failure(file, "cannot be opened");
  CSpecFile::Line line;
  if (!spec.NextLine(line)) throw Failure(file, "is empty");
  while (!line.IsHeading()) {
    if (!spec.NextLine(line)) return {};
  }
  return std::string(line.command);
}

Json MapInfo(CliHost& host, const std::string& file, bool compiled) {
  ReadMap map;
  LoadMap(map, file, 0, host);
  const MapFacts facts = CountMap(map);
  Json levels = Json::array();
  for (std::size_t i = 0; i < facts.areasOnLevel.size(); ++i) {
    const std::string name = i < facts.levelNames.size() ? facts.levelNames[i] : "";
    levels.push_back({{"name", name}, {"areas", facts.areasOnLevel[i]}});
  }
  const CRect& bounds = map.GetBoundRect();
  return {{"kind", compiled ? map.Form() : "text map"},
          {"name", std::string(map.GetName().View())},
          {"coordinates", map.GetLongLat() != 0 ? "longitude and latitude" : "plane"},
          {"levels", levels},
          {"areas", facts.areas},
          {"polygons", facts.polygons},
          {"holes", facts.holes},
          {"vertices", facts.vertices},
          {"bounds", {bounds.left, bounds.top, bounds.right, bounds.bottom}}};
}

Json DataInfo(CliHost& host, const std::string& file) {
  CVELAMap map;
  CVELAData data;
  map.data = &data;
  data.map = &map;
  LoadData(data, file, "", host);
  Json levels = Json::array();
  for (int i = 1; i <= data.GetNumDataLevels(); ++i) {
    levels.push_back(std::string(map.GetLevelName(i).View()));
  }
  Json variables = Json::array();
  for (int column = 0; column < data.GetNumVars(); ++column) {
    int missing = 0;
    for (int row = 0; row < data.GetNumAreas(); ++row) {
      missing += data.GetAreaData(row).GetValue(column) == NO_DATA_VALUE ? 1 : 0;
    }
    variables.push_back({{"column", column + 1},
                         {"name", std::string(data.GetVarName(column).View())},
                         {"decimals", data.GetVarDecs(column)},
                         {"missing", missing}});
  }
  return {{"kind", "data file"},
          {"label", std::string(data.GetMapLabel().View())},
          {"map", map.GetFileStatus().fullName.GetString()},
          {"levels", levels},
          {"rows", data.GetNumAreas()},
          {"rows without an area", host.GetLostRows().size()},
          {"variables", variables}};
}

std::string Plain(const Json& value) {
  if (value.is_string()) return value.get<std::string>();
  if (!value.is_array()) return value.dump();
  std::string text;
  for (const Json& item : value) text.append(text.empty() ? "" : ", ").append(Plain(item));
  return text;
}

// A line for each field, and one for each entry of a list of records.
std::string ToText(const Json& info) {
  std::string text;
  for (const auto& [name, value] : info.items()) {
    if (!value.is_array() || value.empty() || !value.front().is_object()) {
      text.append(name).append(": ").append(Plain(value)).append("\n");
      continue;
    }
    text.append(name).append(":\n");
    for (const Json& record : value) {
      text += ' ';
      for (const auto& [field, content] : record.items()) {
        text.append(" ").append(field).append(" ").append(Plain(content)).append(",");
      }
      text.back() = '\n';
    }
  }
  return text;
}

}  // namespace

int Info(CliHost& host, int argc, const char* const* argv) {
  Arguments arguments("info", "Tell what is in a map, a compiled map or a data file.",
                      "vexel info us-counties.mdf --json");
  std::string file;
  bool asJson = false;
  arguments.Positional("FILE", "Map or data file", file);
  arguments.Flag("--json", "Answer in JSON", asJson);
  if (!arguments.Parse(argc, argv)) return kDone;
  Json info;
  if (IsCompiledName(file)) {
    info = MapInfo(host, file, true);
  } else {
    const std::string heading = FirstHeading(file);
    const bool isData = EqualNoCase(heading, "[MapDataFile]");
    if (!isData && !EqualNoCase(heading, "[Map]")) {
      throw Failure(file, "is neither a map nor a data file");
    }
    info = isData ? DataInfo(host, file) : MapInfo(host, file, false);
  }
  WriteText(
      "-", asJson ? info.dump(1, ' ', false, Json::error_handler_t::replace) + '\n' : ToText(info));
  return kDone;
}

}  // namespace vexel::cli
