#include "account.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

#include "kit/request/hints.h"
#include "kit/request/json_text.h"

namespace vexel::import {

namespace {

constexpr std::size_t kShown = 10;

// The first of some texts in one line.
std::string First(const std::vector<std::string>& texts) {
  const std::vector<std::string_view> views(texts.begin(), texts.end());
  return Joined(std::span(views).first(std::min(views.size(), kShown))) +
         (texts.size() > kShown ? ", ..." : "");
}

std::string Sentence(std::size_t count, std::string_view noun, std::string_view rest) {
  return Counted(count, noun).append(" ").append(rest);
}

struct KindText {
  Unmatched::Kind kind;
  std::string_view member;  // in JSON
  std::string_view noun;
  std::string_view rest;
};

constexpr std::array kKinds{
    KindText{Unmatched::Kind::row, "rowsWithoutArea", "row", "found no area"},
    KindText{Unmatched::Kind::ambiguous, "ambiguousRows", "row", "could mean several areas"},
    KindText{Unmatched::Kind::duplicate, "duplicateRows", "row",
             "for an area that has one, of which the first counts"},
    KindText{Unmatched::Kind::area, "areasWithoutRow", "area", "got no row"},
};

std::string TextOf(const Unmatched& each) {
  std::string text = Quoted(each.text);
  if (each.number != 0) text += " in row " + std::to_string(each.number);
  if (each.kind == Unmatched::Kind::area && each.name != each.text) text += " (" + each.name + ")";
  if (!each.hint.empty()) text += " (near " + Quoted(each.hint) + ")";
  return text;
}

void AddMap(const MapAccount& map, std::vector<std::string>& lines) {
  std::string line = map.file + ": ";
  for (const LevelAccount& level : map.levels) {
    line += std::to_string(level.areas) + " of level " + level.name + ", ";
  }
  line += Counted(map.rings, "ring") + ", " + Counted(map.vertices, "point");
  line += map.inDegrees ? ", in degrees" : ", in units of a plane";
  lines.push_back(line);
  if (map.vertices != map.verticesBefore) {
    lines.push_back("simplified from " + std::to_string(map.verticesBefore) + " to " +
                    std::to_string(map.vertices) + " points");
  }
  for (std::size_t i = 0; i < kFlawCount; ++i) {
    const std::string sentence = map.flaws.Sentence(static_cast<Flaw>(i));
    if (!sentence.empty()) lines.push_back(sentence);
  }
  if (map.dissolved > 0) {
    lines.push_back(Sentence(map.dissolved, "area", "got their outlines from those in them"));
  }
  if (!map.bare.empty()) {
    lines.push_back(Sentence(map.bare.size(), "area", "without an outline: ") + First(map.bare));
  }
  if (map.hidden > 0) {
    lines.push_back(Sentence(map.hidden, "area", "in a hole of another, which a GIF page hides"));
  }
  if (!map.alike.empty()) {
    lines.push_back("values that differ only in zeros in front are kept apart: " +
                    First(map.alike));
  }
  if (!map.displaced.empty()) {
    lines.push_back("numbers whose code belongs to an earlier value got another: " +
                    First(map.displaced));
  }
}

void AddData(const DataAccount& data, std::vector<std::string>& lines) {
  std::string line = data.file + ": " + Counted(data.variables.size(), "variable");
  if (!data.table.empty()) {
    line += "; " + std::to_string(data.matched) + " of " + Counted(data.rows, "row") + " of " +
            data.table + " found their areas";
  }
  lines.push_back(line);
  if (data.near > 0) {
    lines.push_back(Sentence(data.near, "row", "of these did not match to the letter (--loose)"));
  }
  if (!data.leftOut.empty()) {
    lines.push_back("columns without numbers are left out: " + First(data.leftOut));
  }
  bool hasHint = false;
  for (const KindText& kind : kKinds) {
    std::vector<std::string> texts;
    for (const Unmatched& each : data.unmatched) {
      if (each.kind != kind.kind) continue;
      hasHint = hasHint || !each.hint.empty();
      texts.emplace_back(texts.size() > kShown ? "" : TextOf(each));
    }
    if (!texts.empty()) {
      lines.push_back(Sentence(texts.size(), kind.noun, kind.rest) + ": " + First(texts));
    }
  }
  if (hasHint) lines.emplace_back("with --loose those that are near count as the same");
  if (!data.unmatched.empty()) lines.push_back("all of these are in " + data.unmatchedFile);
}

void WriteMap(const MapAccount& map, JsonWriter& json) {
  json.Name("map");
  json.BeginObject();
  json.Member("file", map.file);
  json.Member("longLat", map.inDegrees);
  json.Name("levels");
  json.BeginArray();
  for (const LevelAccount& level : map.levels) {
    json.BeginObject();
    json.Member("name", level.name);
    json.Member("areas", level.areas);
    json.EndObject();
  }
  json.EndArray();
  json.Member("polygons", map.rings);
  json.Member("vertices", map.vertices);
  json.Member("verticesBefore", map.verticesBefore);
  json.Member("dissolved", map.dissolved);
  json.Member("hidden", map.hidden);
  json.Member("withoutOutline", map.bare);
  json.Member("sameButForZeros", map.alike);
  json.Member("otherCode", map.displaced);
  json.Name("flaws");
  json.BeginObject();
  for (std::size_t i = 0; i < kFlawCount; ++i) {
    const Flaws::Tally& tally = map.flaws.Of(static_cast<Flaw>(i));
    json.Name(Flaws::Name(static_cast<Flaw>(i)));
    json.BeginObject();
    json.Member("count", tally.count);
    json.Member("first", tally.names);
    json.EndObject();
  }
  json.EndObject();
  json.EndObject();
}

void WriteData(const DataAccount& data, JsonWriter& json) {
  json.Name("data");
  json.BeginObject();
  json.Member("file", data.file);
  json.Member("variables", data.variables);
  json.Member("areas", data.areas);
  if (!data.table.empty()) {
    json.Name("table");
    json.BeginObject();
    json.Member("file", data.table);
    json.Member("encoding", data.encoding);
    json.Member("separator", data.separator);
    json.Member("decimal", data.decimal);
    json.Member("rows", data.rows);
    json.Member("matched", data.matched);
    json.Member("matchedLoosely", data.near);
    json.Member("columnsLeftOut", data.leftOut);
    json.EndObject();
    for (const KindText& kind : kKinds) {
      json.Name(kind.member);
      json.BeginArray();
      for (const Unmatched& each : data.unmatched) {
        if (each.kind != kind.kind) continue;
        json.BeginObject();
        if (each.number != 0) json.Member("row", each.number);
        json.Member("value", each.text);
        if (!each.name.empty()) json.Member("area", each.name);
        if (!each.hint.empty()) json.Member("near", each.hint);
        json.EndObject();
      }
      json.EndArray();
    }
  }
  json.EndObject();
}

}  // namespace

std::size_t DataAccount::Count(Unmatched::Kind kind) const {
  return static_cast<std::size_t>(
      std::count_if(unmatched.begin(), unmatched.end(),
                    [=](const Unmatched& each) { return each.kind == kind; }));
}

bool Account::HasLoss() const {
  if (data && !data->unmatched.empty()) return true;
  return map && (map->flaws.HasLoss() || map->hidden > 0 || !map->bare.empty() ||
                 !map->alike.empty() || !map->displaced.empty());
}

std::vector<std::string> AccountLines(const Account& account) {
  std::vector<std::string> lines = account.notes;
  if (account.map) AddMap(*account.map, lines);
  if (account.data) AddData(*account.data, lines);
  return lines;
}

std::string AccountJson(const Account& account) {
  JsonWriter json;
  json.BeginObject();
  json.Member("files", account.files);
  json.Name("sources");
  json.BeginArray();
  for (const SourceAccount& source : account.sources) {
    json.BeginObject();
    json.Member("file", source.file);
    json.Member("format", source.format);
    json.Member("layer", source.layer);
    json.Member("features", source.features);
    json.EndObject();
  }
  json.EndArray();
  if (account.map) WriteMap(*account.map, json);
  if (account.data) WriteData(*account.data, json);
  json.Member("notes", account.notes);
  json.EndObject();
  return std::move(json).Take() + '\n';
}

}  // namespace vexel::import
