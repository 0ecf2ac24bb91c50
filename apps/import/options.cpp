#include "options.h"

#include <vexel/platform/string.h>

#include <algorithm>

#include "arguments.h"
#include "kit/files/files.h"
#include "kit/request/error.h"
#include "kit/request/hints.h"
#include "kit/request/values.h"

namespace vexel::import {

namespace {

std::vector<std::string> Names(std::string_view text) {
  std::vector<std::string> names;
  for (const std::string_view part : Split(text, ',')) {
    const std::string_view name = TrimBlanks(part);
    if (name.empty()) throw WrongRequest(Quoted(text) + " has an empty name");
    names.emplace_back(name);
  }
  return names;
}

std::pair<std::string, std::string> ParseNameOf(std::string_view text) {
  const std::size_t mark = text.find('=');
  if (mark == std::string_view::npos || mark == 0 || mark + 1 == text.size()) {
    throw WrongRequest(Quoted(text) + " is not of the form State=STATE_NAME");
  }
  return {std::string(text.substr(0, mark)), std::string(text.substr(mark + 1))};
}

char ParseSeparator(std::string_view text) {
  if (text == "tab" || text == "\t" || text == "\\t") return '\t';
  if (text.size() == 1 && std::string_view(",;|").find(text[0]) != std::string_view::npos) {
    return text[0];
  }
  throw WrongRequest(Quoted(text) + " is none of , ; | tab");
}

double ParseTolerance(std::string_view text) {
  const double tolerance = ParseNumber(text);
  if (tolerance <= 0) throw WrongRequest(Quoted(text) + " is not above 0");
  return tolerance;
}

template <typename List>
void CheckOneForEach(const List& list, const Options& options, const char* option) {
  if (list.size() <= 1 || list.size() == options.sources.size()) return;
  throw WrongRequest(std::string(option) + " is given " + std::to_string(list.size()) +
                     " times for " + Counted(options.sources.size(), "file") +
                     "; once counts for all, else one for each in their order");
}

// Options that would do nothing are hardly meant.
void CheckUsed(const Options& options) {
  struct Use {
    const char* option;
    bool isGiven;
  };
  const auto refuse = [](std::initializer_list<Use> uses, const char* what) {
    const auto* given =
        std::find_if(uses.begin(), uses.end(), [](const Use& use) { return use.isGiven; });
    if (given != uses.end()) throw WrongRequest(std::string(given->option) + what);
  };
  if (options.sources.empty()) {
    refuse({{"--layer", !options.layers.empty()},
            {"--name", !options.nameFields.empty()},
            {"--key", !options.keys.empty()},
            {"--levels", !options.levels.empty()},
            {"--name-of", !options.namesOf.empty()},
            {"--map-name", !options.mapName.empty()},
            {"--no-dissolve", !options.dissolve},
            {"--crs", !options.crs.empty()},
            {"--source-crs", !options.sourceCrs.empty()},
            {"--simplify", options.tolerance > 0},
            {"--var", !options.variables.empty()},
            {"--compile", options.compile}},
           " is for AREAS, and --map has none");
  }
  if (options.table.empty()) {
    refuse({{"--join", !options.join.empty()},
            {"--loose", options.loose},
            {"--columns", !options.columns.empty()},
            {"--separator", options.separator.has_value()}},
           " needs a --table");
  }
}

void Check(const Options& options) {
  if (options.output.empty()) throw WrongRequest("-o is missing");
  if (options.output.back() == '/') throw WrongRequest("-o: a name is missing behind the last /");
  if (IsStandard(options.output)) throw WrongRequest("-o: several files cannot go to one output");
  if (options.sources.empty() && options.map.empty()) {
    throw WrongRequest("AREAS is missing, or --map for a data file alone");
  }
  if (!options.map.empty()) {
    if (!options.sources.empty()) throw WrongRequest("--map and AREAS are two maps; give one");
    if (options.table.empty()) throw WrongRequest("--map needs a --table");
  }
  if (!options.table.empty() && options.join.empty()) {
    throw WrongRequest("--table needs --join: the column that names the areas");
  }
  if (!options.sources.empty() && options.keys.empty() && options.nameFields.empty()) {
    throw WrongRequest("--key is missing: the fields that identify an area, one for each level");
  }
  CheckUsed(options);
  CheckOneForEach(options.layers, options, "--layer");
  CheckOneForEach(options.keys, options, "--key");
  CheckOneForEach(options.nameFields, options, "--name");
}

}  // namespace

std::vector<KeyPart> ParseKeyParts(std::string_view text) {
  std::vector<KeyPart> parts;
  for (std::string& name : Names(text)) {
    KeyPart& part = parts.emplace_back();
    const std::size_t mark = name.rfind(':');
    const std::optional<int> length = mark == std::string::npos
                                          ? std::nullopt
                                          : ParseInt(std::string_view(name).substr(mark + 1));
    if (length) {
      if (*length < 1) throw WrongRequest(Quoted(name) + ": at least one character counts");
      part.length = static_cast<std::size_t>(*length);
      name.resize(mark);
    }
    part.field = std::move(name);
  }
  constexpr std::size_t kMostLevels = 7;
  if (parts.size() > kMostLevels) throw WrongRequest("a map has 7 levels at most");
  return parts;
}

std::vector<JoinPair> ParseJoin(std::string_view text) {
  std::vector<JoinPair> pairs;
  for (const std::string& pair : Names(text)) {
    const std::size_t mark = pair.find('=');
    if (mark == std::string::npos) {
      pairs.push_back({pair, pair});
    } else if (mark == 0 || mark + 1 == pair.size()) {
      throw WrongRequest(Quoted(pair) + " is not of the form column=field");
    } else {
      pairs.push_back({pair.substr(0, mark), pair.substr(mark + 1)});
    }
  }
  return pairs;
}

bool ReadOptions(Options& options, int argc, const char* const* argv) {
  cli::Arguments arguments(
      "vexel import",
      "Make a map, and a data file for it, from a file of areas (GeoJSON, TopoJSON, Shapefile,"
      " GeoPackage, FlatGeobuf) and a table (CSV, TSV). Writes NAME.map, NAME.keys.csv, and with"
      " numbers NAME.mdf and NAME.unmatched.csv: all of them or none.",
      "vexel import counties.shp --name NAME --key STATEFP,COUNTYFP --levels State,County -o us\n"
      "  vexel import areas.geojson --name name --key id --table jobs.csv --join fips=id -o jobs\n"
      "  vexel import --table more.csv --map us.map --join fips -o more");
  arguments.Positionals("AREAS", "Files of areas; several give the levels from the top down",
                        options.sources, false);
  arguments.Group("Areas");
  const auto list = [](std::vector<std::string>& to) {
    return [&to](std::string_view text) { to.emplace_back(text); };
  };
  arguments.Repeated("--layer", "NAME", "The layer of a file that has several",
                     list(options.layers));
  arguments.Repeated("--name", "FIELD", "The field with the areas' names",
                     list(options.nameFields));
  arguments.Repeated(
      "--key", "FIELDS",
      "The fields that identify an area, from the top level down, with commas between;"
      " FIELD:N for its first N characters [the name]",
      [&](std::string_view text) { options.keys.push_back(ParseKeyParts(text)); });
  arguments.Option("--levels", "NAMES", "Names of the levels [those of the fields]",
                   [&](std::string_view text) { options.levels = Names(text); });
  arguments.Repeated("--name-of", "LEVEL=FIELD", "The field with the names of an upper level",
                     [&](std::string_view text) { options.namesOf.push_back(ParseNameOf(text)); });
  arguments.Option("--map-name", "TEXT", "The name of the map [that of the output]",
                   options.mapName);
  arguments.Option("--keys", "FILE", "A keys file of an earlier import, whose codes stay",
                   options.keysFile);
  bool noDissolve = false;
  arguments.Flag("--no-dissolve",
                 "Leave upper levels without outlines where the files have none, instead of joining"
                 " those below",
                 noDissolve);
  arguments.Group("Coordinates");
  arguments.Option("--crs", "SYSTEM", "Project to a coordinate system such as EPSG:5070",
                   options.crs);
  arguments.Option("--source-crs", "SYSTEM", "That of the files, instead of what they say",
                   options.sourceCrs);
  arguments.Option("--simplify", "TOLERANCE",
                   "Leave out vertices that lie nearer than this to the border without them, in"
                   " units of the map; neighbours keep one border",
                   [&](std::string_view text) { options.tolerance = ParseTolerance(text); });
  arguments.Group("Numbers");
  arguments.Option("--table", "FILE", "A table with a row for each area", options.table);
  arguments.Option(
      "--join", "COLUMN=FIELD",
      "The column that names the areas, and the field that holds the same; several with"
      " commas between; with --map, \"name\" or \"key\" for FIELD",
      [&](std::string_view text) { options.join = ParseJoin(text); });
  arguments.Flag("--loose",
                 "Join also where letter case, accents, punctuation or zeros in front differ",
                 options.loose);
  arguments.Option("--columns", "NAMES", "Columns of the table [all that hold numbers]",
                   [&](std::string_view text) { options.columns = Names(text); });
  arguments.Repeated("--var", "FIELD", "A field of the areas that is a variable, too",
                     list(options.variables));
  arguments.Option("--encoding", "NAME",
                   "Of the table's texts, or a Shapefile's: utf-8, windows-1252, iso-8859-2..."
                   " [found out]",
                   [&](std::string_view text) { options.encoding = EncodingOf(text); });
  arguments.Option("--separator", "MARK", "Between cells: , ; | tab [found out]",
                   [&](std::string_view text) { options.separator = ParseSeparator(text); });
  arguments.Option("--decimal", "MARK", "Before decimals: point, comma [found out]",
                   [&](std::string_view text) { options.decimal = DecimalMarkOf(text); });
  arguments.Repeated("--missing", "WORD", "What stands for no number, beside NA, -, .. and others",
                     list(options.missing));
  arguments.Group("Output");
  arguments.Option("-o,--output", "NAME", "The files' path without extension", options.output);
  arguments.Option("--map", "FILE", "Make a data file only, for this map", options.map);
  arguments.Flag("--compile", "Write the compiled map NAME.mpc, too", options.compile);
  arguments.Flag("--force", "Replace files that are there", options.force);
  arguments.Flag("--strict", "Write nothing when anything is lost, repaired or does not match",
                 options.strict);
  arguments.Flag("--json", "The whole account as JSON on standard output", options.json);
  arguments.Flag("--quiet", "No account, and no progress", options.quiet);
  if (!arguments.Parse(argc, argv)) return false;
  options.dissolve = !noDissolve;
  Check(options);
  return true;
}

}  // namespace vexel::import
