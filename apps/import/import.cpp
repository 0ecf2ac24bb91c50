#include "import.h"

#include <vexel/map/map.h>
#include <vexel/platform/string.h>

#include <algorithm>
#include <deque>
#include <filesystem>
#include <iterator>
#include <map>
#include <set>
#include <string_view>
#include <utility>

#include "codes.h"
#include "kit/files/files.h"
#include "kit/files/outputs.h"
#include "kit/request/error.h"
#include "kit/request/hints.h"
#include "kit/view/load.h"
#include "sources.h"
#include "texts.h"
#include "variables.h"

namespace vexel::import {

namespace {

// The bar of the program for as long as files are read.
class ProgressBar {
 public:
  explicit ProgressBar(cli::CliHost& host) : host_(host), isShown_(host.ShowsProgress()) {
    if (!isShown_) return;
    host_.OpenProgress();
    host_.SetProgressText("Reading");
    host_.SetProgressRange(0, 100);
  }
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;
  ~ProgressBar() {
    if (isShown_) host_.CloseProgress();
  }

  void operator()(int percent) {
    if (!isShown_) return;
    host_.SetProgressPosition(percent);
    if (host_.ProgressCancelled()) throw Failed("interrupted; nothing was written");
  }

 private:
  cli::CliHost& host_;
  bool isShown_;
};

// The files of an import, by their extensions.
class Outputs {
 public:
  explicit Outputs(const Options& options) : options_(options) {}

  std::string PathOf(std::string_view extension) const {
    return options_.output + std::string(extension);
  }

  // Refuses what would lose something, before it takes any time.
  void Check() const {
    for (const std::string_view extension : Extensions()) {
      const std::string path = PathOf(extension);
      for (const std::string& input : Inputs()) {
        if (!input.empty() && IsSameFile(input, path)) {
          throw WrongRequest(path + " would take the place of a file that is read");
        }
      }
      std::error_code error;
      if (!options_.force && std::filesystem::exists(path, error)) {
        throw Failed(path, "is there already; --force replaces it");
      }
    }
  }

  void Add(std::string_view extension, std::string text) {
    TextOutput& output = outputs_.emplace_back();
    output.name = PathOf(extension);
    output.text = std::move(text);
  }

  std::vector<std::string> Write() {
    const SignalHold hold;
    std::vector<std::string> names;
    for (TextOutput& output : outputs_) output.Write();
    for (TextOutput& output : outputs_) {
      output.Deliver();
      names.push_back(output.name);
    }
    return names;
  }

 private:
  std::vector<std::string_view> Extensions() const {
    std::vector<std::string_view> extensions;
    if (options_.map.empty()) extensions.insert(extensions.end(), {".map", ".keys.csv"});
    if (options_.compile && options_.map.empty()) extensions.emplace_back(".mpc");
    if (!options_.table.empty()) extensions.emplace_back(".unmatched.csv");
    if (!options_.table.empty() || !options_.variables.empty()) extensions.emplace_back(".mdf");
    return extensions;
  }

  // A keys file may be written anew with its codes.
  std::vector<std::string> Inputs() const {
    std::vector<std::string> inputs = options_.sources;
    inputs.insert(inputs.end(), {options_.table, options_.map});
    return inputs;
  }

  const Options& options_;
  std::deque<TextOutput> outputs_;
};

// The compiled form of a text map.
std::string CompiledMap(const std::string& text, cli::CliHost& host) {
  const TemporaryFolder folder("import.map");
  WriteText(folder.FilePath(), text);
  CVELAMap map;
  LoadMap(map, folder.FilePath(), 1, host);
  const TemporaryFolder compiled("import.mpc");
  if (map.SaveMpc(CVELAString(compiled.FilePath())) == 0) {
    throw Failed("the compiled map cannot be made in the temporary folder");
  }
  return ReadFile(compiled.FilePath());
}

// The name by which a data file finds a map.
std::string MapReference(const Options& options) {
  if (options.map.empty()) return std::filesystem::path(options.output).filename().string();
  return WithExtension(RelativeTo(options.map, FolderOf(options.output)), "");
}

void AddData(const Options& options, const DataAreas& areas, const std::vector<std::string>& levels,
             const std::vector<std::vector<std::string>>& fields, Outputs& outputs,
             Account& account) {
  DataAccount& data = account.data.emplace();
  data.file = outputs.PathOf(".mdf");
  std::vector<bool> hasRow(areas.codes.size(), false);
  std::vector<DataColumn> columns = FieldColumns(options, areas, fields, hasRow, account);
  if (!options.table.empty()) {
    std::vector<DataColumn> more = TableColumns(options, areas, hasRow, account);
    std::move(more.begin(), more.end(), std::back_inserter(columns));
    data.unmatchedFile = outputs.PathOf(".unmatched.csv");
    outputs.Add(".unmatched.csv", UnmatchedText(data.unmatched));
  }
  std::vector<DataRow> rows;
  for (std::size_t area = 0; area < areas.codes.size(); ++area) {
    if (hasRow[area]) rows.push_back({areas.codes[area], area});
  }
  data.areas = rows.size();
  for (const DataColumn& column : columns) data.variables.push_back(column.name);
  outputs.Add(".mdf", DataText(MapReference(options), levels, rows, columns));
}

DataAreas AreasOf(const SourceAreas& sources) {
  DataAreas areas;
  for (const Area& area : sources.tree.areas) {
    areas.codes.push_back(area.codes);
    areas.names.push_back(area.name);
  }
  areas.identities = sources.identities;
  return areas;
}

// The keys of all areas, and behind them those of areas of earlier imports that are gone, so that
// no other area gets their codes.
std::string KeysOf(const AreaTree& tree, const std::vector<KeyRow>& earlier) {
  std::vector<KeyRow> rows;
  std::set<std::vector<int>> keys;
  for (const Area& area : tree.areas) {
    rows.push_back({area.codes, area.values.back(), area.name});
    keys.insert(area.codes);
  }
  std::copy_if(earlier.begin(), earlier.end(), std::back_inserter(rows),
               [&](const KeyRow& row) { return keys.insert(row.key).second; });
  return KeysText(rows);
}

void ImportAreas(const Options& options, cli::CliHost& host, Outputs& outputs, Account& account) {
  SourceAreas sources;
  {
    ProgressBar bar(host);
    sources = ReadSources(options, account, [&](int percent) { bar(percent); });
  }
  const std::string name = options.mapName.empty()
                               ? std::filesystem::path(options.output).filename().string()
                               : options.mapName;
  account.map->file = outputs.PathOf(".map");
  std::string text = MapText(sources.tree, name, sources.levels, sources.inDegrees);
  std::string compiled = options.compile ? CompiledMap(text, host) : "";
  std::error_code error;
  if (!options.compile && std::filesystem::exists(outputs.PathOf(".mpc"), error)) {
    account.notes.push_back(outputs.PathOf(".mpc") +
                            " is of an earlier import; the newer text map is taken instead of it");
  }
  outputs.Add(".map", std::move(text));
  // Behind it, as of the two forms the one written last is loaded.
  if (options.compile) outputs.Add(".mpc", std::move(compiled));
  outputs.Add(".keys.csv", KeysOf(sources.tree, sources.earlierKeys));
  if (options.table.empty() && options.variables.empty()) return;
  AddData(options, AreasOf(sources), sources.levels, sources.variables, outputs, account);
}

// The areas of a map that is there, with the values that its keys file has for them.
class KnownMap {
 public:
  KnownMap(const Options& options, cli::CliHost& host) : options_(options) {
    LoadMap(map_, options.map, 0, host);
    std::string keysFile = options.keysFile;
    const std::string beside = WithExtension(options.map, ".keys.csv");
    std::error_code error;
    if (keysFile.empty() && std::filesystem::is_regular_file(beside, error)) keysFile = beside;
    if (!keysFile.empty()) {
      hasKeys_ = true;
      for (KeyRow& row : ReadKeys(keysFile)) values_[row.key] = std::move(row.value);
    }
    for (int level = 1; level < map_.GetNumMapLevels(); ++level) {
      levels_.emplace_back(map_.GetLevelName(level).View());
    }
  }

  const std::vector<std::string>& Levels() const { return levels_; }

  DataAreas Areas() {
    const bool byName = EqualNoCase(options_.join.front().field, "name");
    const std::size_t columns = options_.join.size();
    for (const JoinPair& pair : options_.join) {
      const bool isKnown = pair.field == pair.column || EqualNoCase(pair.field, "key") || byName;
      if (!isKnown || (byName && columns > 1)) {
        throw WrongRequest("--join: " + Quoted(pair.field) +
                           " is not of a map, whose areas have a key or a name");
      }
    }
    if (columns > 1 && columns != levels_.size()) {
      throw WrongRequest("--join: " + Counted(columns, "column") + " for " +
                         Counted(levels_.size(), "level") +
                         "; one column, or one for each level of the map");
    }
    areas_.numbersAlone = !hasKeys_ && !byName;
    Add(map_, byName);
    return std::move(areas_);
  }

 private:
  void Add(const CMapOb& parent, bool byName) {
    parent.ForEachChild([&](const CMapOb& node) {
      const std::size_t area = areas_.codes.size();
      const auto level = static_cast<std::size_t>(node.GetArea().GetLevel());
      areas_.codes.emplace_back(node.GetArea().codes.begin(), node.GetArea().codes.begin() + level);
      areas_.names.emplace_back(node.GetName().View());
      if (byName) {
        areas_.identities.push_back({areas_.names.back(), area});
      } else if (level > 0) {
        AddIdentities(area);
      }
      Add(node, byName);
    });
  }

  // The value of an area's own level, or those of all levels: apart where there are several
  // columns, in one where there is one, as in codes that begin with that of the area above.
  void AddIdentities(std::size_t area) {
    const std::vector<int>& codes = areas_.codes[area];
    std::vector<std::string> values;
    for (std::size_t level = 1; level <= codes.size(); ++level) {
      const auto found = values_.find({codes.begin(), codes.begin() + static_cast<long>(level)});
      values.push_back(found != values_.end() ? found->second : std::to_string(codes[level - 1]));
    }
    if (options_.join.size() > 1) {
      values.resize(options_.join.size());
      areas_.identities.push_back({JoinText({values.begin(), values.end()}), area});
      return;
    }
    areas_.identities.push_back({values.back(), area});
    if (values.size() == 1) return;
    std::string whole;
    for (const std::string& value : values) whole += value;
    areas_.identities.push_back({std::move(whole), area});
  }

  const Options& options_;
  CVELAMap map_;
  std::map<std::vector<int>, std::string> values_;
  bool hasKeys_ = false;
  std::vector<std::string> levels_;
  DataAreas areas_;
};

void ImportTable(const Options& options, cli::CliHost& host, Outputs& outputs, Account& account) {
  KnownMap map(options, host);
  AddData(options, map.Areas(), map.Levels(), {}, outputs, account);
}

}  // namespace

Account Import(const Options& options, cli::CliHost& host) {
  Outputs outputs(options);
  outputs.Check();
  Account account;
  if (options.map.empty()) {
    ImportAreas(options, host, outputs, account);
  } else {
    ImportTable(options, host, outputs, account);
  }
  if (!options.strict || !account.HasLoss()) account.files = outputs.Write();
  return account;
}

}  // namespace vexel::import
