#include "sources.h"

#include <vexel/platform/string.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <span>

#include "geo_file.h"
#include "kit/request/error.h"
#include "kit/request/hints.h"
#include "kit/request/values.h"
#include "topology/simplify.h"

namespace vexel::import {

namespace {

// One file with what is read of it.
struct Source {
  std::unique_ptr<GeoFile> file;
  std::vector<KeyPart> key;
  SourceFields fields;
  std::vector<FieldIndex> join;       // for each pair
  std::vector<FieldIndex> variables;  // for each variable
};

// The entry that counts for a file: of several its own, of one that.
template <typename Value>
Value EntryFor(const std::vector<Value>& entries, std::size_t source) {
  if (entries.empty()) return {};
  return entries.size() == 1 ? entries.front() : entries[source];
}

// Has a field read, once.
FieldIndex Read(SourceFields& fields, std::size_t field) {
  const auto known = std::find(fields.read.begin(), fields.read.end(), field);
  if (known == fields.read.end()) {
    fields.read.push_back(field);
    return static_cast<FieldIndex>(fields.read.size()) - 1;
  }
  return static_cast<FieldIndex>(known - fields.read.begin());
}

FieldIndex ReadIfThere(Source& source, std::string_view name) {
  const std::optional<std::size_t> field = source.file->FindField(name);
  return field ? Read(source.fields, *field) : -1;
}

// The parts of the key that a file has. Of one key for all files each takes the first parts, as far
// as it has their fields.
std::vector<KeyPart> KeyFor(const GeoFile& file, const Options& options, std::size_t index) {
  if (options.keys.empty()) return {{EntryFor(options.nameFields, index), 0}};
  std::vector<KeyPart> key = EntryFor(options.keys, index);
  if (options.keys.size() > 1 || options.sources.size() == 1) return key;
  const auto missing = std::find_if(
      key.begin(), key.end(), [&](const KeyPart& part) { return !file.FindField(part.field); });
  if (missing != key.begin()) key.erase(missing, key.end());
  return key;
}

Source Open(const Options& options, std::size_t index) {
  Source source;
  source.file = std::make_unique<GeoFile>(options.sources[index], EntryFor(options.layers, index),
                                          options.encoding);
  GeoFile& file = *source.file;
  source.key = KeyFor(file, options, index);
  for (const KeyPart& part : source.key) {
    source.fields.key.push_back({Read(source.fields, file.FieldNamed(part.field)), part.length});
  }
  if (!options.nameFields.empty()) {
    source.fields.name = Read(source.fields, file.FieldNamed(EntryFor(options.nameFields, index)));
  }
  for (const JoinPair& pair : options.join) source.join.push_back(ReadIfThere(source, pair.field));
  for (const std::string& name : options.variables) {
    source.variables.push_back(ReadIfThere(source, name));
  }
  file.ChooseCoordinates({options.sourceCrs, options.crs});
  return source;
}

const Source& Deepest(const std::vector<Source>& sources) {
  return *std::max_element(sources.begin(), sources.end(), [](const Source& a, const Source& b) {
    return a.key.size() < b.key.size();
  });
}

std::vector<std::string> LevelNames(const Options& options, const std::vector<KeyPart>& key) {
  if (options.levels.empty()) {
    std::vector<std::string> names;
    names.reserve(key.size());
    for (const KeyPart& part : key) {
      names.push_back(part.length == 0 ? part.field
                                       : part.field + ':' + std::to_string(part.length));
    }
    return names;
  }
  if (options.levels.size() != key.size()) {
    throw WrongRequest("--levels: " + Counted(options.levels.size(), "name") + " for " +
                       Counted(key.size(), "level"));
  }
  return options.levels;
}

std::size_t LevelNamed(const std::string& name, const std::vector<std::string>& levels) {
  const auto isIt = [&](const std::string& level) { return EqualNoCase(level, name); };
  const auto found = std::find_if(levels.begin(), levels.end(), isIt);
  if (found != levels.end()) return static_cast<std::size_t>(found - levels.begin());
  const std::optional<int> number = ParseInt(name);
  if (number && *number >= 1 && static_cast<std::size_t>(*number) <= levels.size()) {
    return static_cast<std::size_t>(*number) - 1;
  }
  const std::vector<std::string_view> views(levels.begin(), levels.end());
  throw WrongRequest("--name-of: there is no level " + Quoted(name) + "; there are " +
                     Joined(views));
}

// Fields with the names of upper levels, which any file below may have.
void FindNamesOf(const Options& options, const std::vector<std::string>& levels,
                 std::vector<Source>& sources) {
  for (const auto& [level, field] : options.namesOf) {
    const std::size_t index = LevelNamed(level, levels);
    bool isFound = false;
    for (Source& source : sources) {
      source.fields.nameOf.resize(levels.size(), -1);
      source.fields.nameOf[index] = ReadIfThere(source, field);
      isFound = isFound || source.fields.nameOf[index] >= 0;
    }
    if (!isFound) Deepest(sources).file->FieldNamed(field);  // tells what there is
  }
}

// Fields that no file has are told by the one that should have them.
void CheckWanted(const Options& options, const std::vector<Source>& sources) {
  const auto check = [&](const std::string& name, auto fieldOf) {
    const bool isFound = std::any_of(sources.begin(), sources.end(),
                                     [&](const Source& source) { return fieldOf(source) >= 0; });
    if (!isFound) Deepest(sources).file->FieldNamed(name);
  };
  for (std::size_t i = 0; i < options.join.size(); ++i) {
    check(options.join[i].field, [i](const Source& source) { return source.join[i]; });
  }
  for (std::size_t i = 0; i < options.variables.size(); ++i) {
    check(options.variables[i], [i](const Source& source) { return source.variables[i]; });
  }
}

// Counts features of all files towards 100.
class Steps {
 public:
  Steps(const std::vector<Source>& sources, const Progress& progress) : progress_(progress) {
    for (const Source& source : sources) total_ += std::max(source.file->FeatureCount(), 1LL);
  }

  void operator()() {
    const int percent = static_cast<int>(std::min(++done_ * 100 / total_, 100LL));
    if (percent != percent_) progress_(percent_ = percent);
  }

 private:
  const Progress& progress_;
  long long total_ = 0;
  long long done_ = 0;
  int percent_ = -1;
};

// The level of a key whose value stands for a field: that of the area itself where its part is of
// the field, else another with the whole field.
std::optional<std::size_t> KeyLevel(const Area& area, const std::vector<KeyPart>& key,
                                    const std::string& field) {
  const auto isIt = [&](const KeyPart& part) { return EqualNoCase(part.field, field); };
  if (isIt(key[area.Level() - 1])) return area.Level() - 1;
  const auto whole = std::find_if(
      key.begin(), key.end(), [&](const KeyPart& part) { return part.length == 0 && isIt(part); });
  if (whole == key.end()) return std::nullopt;
  return static_cast<std::size_t>(whole - key.begin());
}

// What an area has in the field of a join: a part of its key, or something that its file has for
// it. Areas that no file has are known by the key of those in them.
struct JoinValue {
  std::string_view text;
  bool isOwn = false;  // and of no area above it
};

std::optional<JoinValue> ValueIn(const Area& area, const std::vector<Source>& sources,
                                 std::size_t pair, const std::string& field) {
  const auto ofKey = [&](const Source& source) -> std::optional<JoinValue> {
    const std::optional<std::size_t> level = KeyLevel(area, source.key, field);
    if (!level) return std::nullopt;
    if (*level >= area.Level()) return JoinValue{};
    return JoinValue{area.values[*level], *level + 1 == area.Level()};
  };
  if (area.source < 0) return ofKey(Deepest(sources));
  const Source& source = sources[static_cast<std::size_t>(area.source)];
  if (const std::optional<JoinValue> value = ofKey(source)) return value;
  if (source.join[pair] < 0) return ofKey(Deepest(sources));
  const std::string& text = area.fields[static_cast<std::size_t>(source.join[pair])];
  return JoinValue{text, !text.empty()};
}

// The text by which rows mean an area; nothing for one that no row can mean, as its own level is
// not in the join.
std::optional<std::string> IdentityOf(const Area& area, const Options& options,
                                      const std::vector<Source>& sources) {
  std::vector<std::string_view> values;
  bool isOwn = false;
  for (std::size_t pair = 0; pair < options.join.size(); ++pair) {
    const std::optional<JoinValue> value = ValueIn(area, sources, pair, options.join[pair].field);
    if (!value) return std::nullopt;
    values.push_back(value->text);
    isOwn = isOwn || value->isOwn;
  }
  return isOwn ? std::optional(JoinText(values)) : std::nullopt;
}

std::vector<Identity> IdentitiesOf(const std::vector<Area>& areas, const Options& options,
                                   const std::vector<Source>& sources) {
  std::vector<Identity> identities;
  if (options.join.empty()) return identities;
  for (std::size_t i = 0; i < areas.size(); ++i) {
    std::optional<std::string> text = IdentityOf(areas[i], options, sources);
    if (text) identities.push_back({std::move(*text), i});
  }
  return identities;
}

std::vector<std::vector<std::string>> VariablesOf(const std::vector<Area>& areas,
                                                  const std::vector<Source>& sources,
                                                  std::size_t count) {
  std::vector<std::vector<std::string>> variables(count);
  for (std::size_t i = 0; i < count; ++i) {
    variables[i].reserve(areas.size());
    for (const Area& area : areas) {
      const FieldIndex field =
          area.source < 0 ? -1 : sources[static_cast<std::size_t>(area.source)].variables[i];
      variables[i].push_back(field < 0 ? "" : area.fields[static_cast<std::size_t>(field)]);
    }
  }
  return variables;
}

std::size_t CountVertices(const std::vector<Area>& areas) {
  std::size_t count = 0;
  for (const Area& area : areas) {
    for (const Ring& ring : area.shape) count += ring.vertices.size();
  }
  return count;
}

// All levels at once, as an area runs along those in it.
void SimplifyAll(std::vector<Area>& areas, double tolerance) {
  std::vector<Shape> shapes;
  shapes.reserve(areas.size());
  for (Area& area : areas) shapes.push_back(std::move(area.shape));
  Simplify(shapes, tolerance);
  for (std::size_t i = 0; i < areas.size(); ++i) areas[i].shape = std::move(shapes[i]);
}

void Tell(const AreaTree& tree, const std::vector<std::string>& levels, MapAccount& map) {
  for (std::size_t level = 0; level < levels.size(); ++level) {
    const auto isThere = [=](const Area& area) { return area.Level() == level + 1; };
    const auto count = std::count_if(tree.areas.begin(), tree.areas.end(), isThere);
    map.levels.push_back({levels[level], static_cast<std::size_t>(count)});
  }
  for (const Area& area : tree.areas) map.rings += area.shape.size();
  map.vertices = CountVertices(tree.areas);
  map.dissolved = tree.dissolved;
  map.bare = tree.bare;
  for (const LevelCodes& codes : tree.codes) {
    map.alike.insert(map.alike.end(), codes.SameButForZeros().begin(),
                     codes.SameButForZeros().end());
    map.displaced.insert(map.displaced.end(), codes.Displaced().begin(), codes.Displaced().end());
  }
}

}  // namespace

SourceAreas ReadSources(const Options& options, Account& account, const Progress& progress) {
  std::vector<Source> sources;
  for (std::size_t i = 0; i < options.sources.size(); ++i) sources.push_back(Open(options, i));
  const std::vector<KeyPart>& key = Deepest(sources).key;
  SourceAreas result;
  result.levels = LevelNames(options, key);
  FindNamesOf(options, result.levels, sources);
  CheckWanted(options, sources);
  result.inDegrees = sources.front().file->InDegrees();
  for (const Source& source : sources) {
    if (source.file->Fits(*sources.front().file)) continue;
    throw WrongRequest(source.file->Path() + " and " + sources.front().file->Path() +
                       " have coordinates of two systems; project them to one with --crs");
  }

  std::vector<LevelCodes> codes(key.size());
  if (!options.keysFile.empty()) {
    result.earlierKeys = ReadKeys(options.keysFile);
    codes = CodesOf(result.earlierKeys, key.size(), options.keysFile);
  }
  MapAccount& map = account.map.emplace();
  map.inDegrees = result.inDegrees;
  TreeBuilder builder(std::move(codes));
  Steps steps(sources, progress);
  for (std::size_t i = 0; i < sources.size(); ++i) {
    GeoFile& file = *sources[i].file;
    std::vector<Feature> features =
        file.Read(sources[i].fields.read, sources[i].fields.name, map.flaws, [&] { steps(); });
    account.sources.push_back({file.Path(), file.DriverName(), file.LayerName(), features.size()});
    builder.Add(static_cast<int>(i), sources[i].fields, std::move(features), map.flaws);
    account.notes.insert(account.notes.end(), file.Notes().begin(), file.Notes().end());
  }
  result.tree = builder.Finish(options.dissolve);
  if (result.tree.areas.empty()) {
    throw Failed(sources.front().file->Path(), "has no area with an outline and a key");
  }
  map.verticesBefore = CountVertices(result.tree.areas);
  if (options.tolerance > 0) SimplifyAll(result.tree.areas, options.tolerance);
  map.hidden = OrderByHoles(result.tree);
  Tell(result.tree, result.levels, map);
  result.identities = IdentitiesOf(result.tree.areas, options, sources);
  result.variables = VariablesOf(result.tree.areas, sources, options.variables.size());
  return result;
}

}  // namespace vexel::import
