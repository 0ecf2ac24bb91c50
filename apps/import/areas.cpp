#include "areas.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <map>
#include <numeric>
#include <optional>
#include <queue>
#include <set>
#include <span>

#include "geometry.h"
#include "join.h"
#include "topology/dissolve.h"
#include "topology/order.h"

namespace vexel::import {

namespace {

// The first characters of a text, of which none is cut.
std::string FirstCharacters(std::string_view text, std::size_t count) {
  const auto isContinued = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; };
  std::size_t end = 0;
  for (; end < text.size() && count > 0; --count) {
    ++end;
    while (end < text.size() && isContinued(text[end])) ++end;
  }
  return std::string(text.substr(0, end));
}

// The values of a feature's key up to the deepest that it has; none where it has one below one that
// it has not.
std::vector<std::string> KeyOf(const Feature& feature, const SourceFields& fields) {
  std::vector<std::string> values;
  for (const SourceFields::KeyField& part : fields.key) {
    const std::string& value = feature.values[static_cast<std::size_t>(part.index)];
    values.push_back(part.length == 0 ? value : FirstCharacters(value, part.length));
  }
  while (!values.empty() && values.back().empty()) values.pop_back();
  if (std::any_of(values.begin(), values.end(), [](auto& value) { return value.empty(); })) {
    values.clear();
  }
  return values;
}

std::string FieldOr(const std::vector<std::string>& fields, FieldIndex index,
                    const std::string& otherwise) {
  if (index < 0 || fields[static_cast<std::size_t>(index)].empty()) return otherwise;
  return fields[static_cast<std::size_t>(index)];
}

void Append(Shape&& from, Shape& to) {
  to.insert(to.end(), std::make_move_iterator(from.begin()), std::make_move_iterator(from.end()));
}

}  // namespace

std::size_t TreeBuilder::IndexOf(const std::vector<std::string>& values) {
  const auto [known, isNew] =
      indexes_.try_emplace(JoinText({values.begin(), values.end()}), tree_.areas.size());
  if (isNew) tree_.areas.emplace_back().values = values;
  return known->second;
}

void TreeBuilder::Add(int source, const SourceFields& fields, std::vector<Feature> features,
                      Flaws& flaws) {
  std::size_t number = 0;
  for (Feature& feature : features) {
    ++number;
    const std::vector<std::string> key = KeyOf(feature, fields);
    if (key.empty()) {
      flaws.Add(Flaw::unkeyed,
                FieldOr(feature.values, fields.name, "feature " + std::to_string(number)));
      continue;
    }
    if (feature.shape.empty()) continue;
    Area& area = tree_.areas[IndexOf(key)];
    const bool isFirst = area.source < 0;
    Append(std::move(feature.shape), area.shape);
    if (!isFirst) {
      flaws.Add(Flaw::sameKey, FieldOr(feature.values, fields.name, key.back()));
      continue;
    }
    area.source = source;
    area.name = FieldOr(feature.values, fields.name, key.back());
    for (std::size_t level = 0; level + 1 < key.size(); ++level) {
      const FieldIndex index = level < fields.nameOf.size() ? fields.nameOf[level] : -1;
      area.namesAbove.push_back(FieldOr(feature.values, index, ""));
    }
    area.fields = std::move(feature.values);
  }
}

// Ancestors that no source has, named by the first area in them that tells their name.
void TreeBuilder::AddParents() {
  // The list grows on the way.
  for (std::size_t i = 0; i < tree_.areas.size(); ++i) {  // NOLINT(modernize-loop-convert)
    if (tree_.areas[i].Level() < 2) continue;
    std::vector<std::string> above = tree_.areas[i].values;
    above.pop_back();
    const std::size_t parent = IndexOf(above);
    Area& area = tree_.areas[parent];
    std::vector<std::string> names = tree_.areas[i].namesAbove;
    if (names.empty()) continue;
    if (area.source < 0 && area.name.empty()) area.name = std::move(names.back());
    names.pop_back();
    if (area.namesAbove.empty()) area.namesAbove = std::move(names);
  }
  for (Area& area : tree_.areas) {
    if (area.name.empty()) area.name = area.values.back();
  }
}

void TreeBuilder::AssignCodes() {
  std::vector<std::set<std::string>> values(tree_.codes.size());
  for (const Area& area : tree_.areas) values[area.Level() - 1].insert(area.values.back());
  for (std::size_t level = 0; level < values.size(); ++level) {
    tree_.codes[level].Assign(values[level]);
  }
  for (Area& area : tree_.areas) {
    for (std::size_t level = 0; level < area.Level(); ++level) {
      area.codes.push_back(tree_.codes[level].Of(area.values[level]));
    }
  }
}

// An area comes right before those in it, as its codes are the beginning of theirs.
void TreeBuilder::SortByCodes() {
  std::sort(tree_.areas.begin(), tree_.areas.end(),
            [](const Area& a, const Area& b) { return a.codes < b.codes; });
  indexes_.clear();
}

// From the deepest level up. Where borders are not shared to the last vertex, the union is found
// the slower way.
void TreeBuilder::Dissolve() {
  std::vector<Area>& areas = tree_.areas;
  for (std::size_t level = tree_.codes.size(); level-- > 1;) {
    for (std::size_t i = 0; i < areas.size(); ++i) {
      if (areas[i].Level() != level || !areas[i].shape.empty()) continue;
      std::vector<const Shape*> parts;
      for (std::size_t j = i + 1; j < areas.size() && areas[j].Level() > level; ++j) {
        if (areas[j].Level() == level + 1) parts.push_back(&areas[j].shape);
      }
      std::optional<Shape> whole = import::Dissolve(parts);
      areas[i].shape = whole ? std::move(*whole) : UnionOf(parts);
      std::for_each(areas[i].shape.begin(), areas[i].shape.end(), SetDirection);
      if (!areas[i].shape.empty()) ++tree_.dissolved;
    }
  }
}

AreaTree TreeBuilder::Finish(bool dissolve) {
  AddParents();
  AssignCodes();
  SortByCodes();
  if (dissolve) Dissolve();
  for (const Area& area : tree_.areas) {
    if (area.shape.empty()) tree_.bare.push_back(area.name);
  }
  return std::move(tree_);
}

namespace {

// Siblings in the order of a page: each behind those that it must be behind, else as they are.
// Those that wait for each other in a circle keep their places; `stuck` counts them.
std::vector<std::size_t> Sorted(const std::vector<std::size_t>& siblings,
                                const std::map<std::size_t, std::set<std::size_t>>& behind,
                                std::size_t& stuck) {
  std::map<std::size_t, std::size_t> waits;
  for (const std::size_t area : siblings) waits[area] = 0;
  for (const std::size_t area : siblings) {
    const auto found = behind.find(area);
    if (found == behind.end()) continue;
    for (const std::size_t later : found->second) ++waits[later];
  }
  std::priority_queue<std::size_t, std::vector<std::size_t>, std::greater<>> ready;
  for (const auto& [area, count] : waits) {
    if (count == 0) ready.push(area);
  }
  std::vector<std::size_t> sorted;
  while (!waits.empty()) {
    if (ready.empty()) {
      ready.push(waits.begin()->first);
      ++stuck;
    }
    const std::size_t area = ready.top();
    ready.pop();
    if (waits.erase(area) == 0) continue;
    sorted.push_back(area);
    const auto found = behind.find(area);
    if (found == behind.end()) continue;
    for (const std::size_t later : found->second) {
      const auto waiting = waits.find(later);
      if (waiting != waits.end() && --waiting->second == 0) ready.push(later);
    }
  }
  return sorted;
}

// The parents of areas, and the areas below each; the map itself is the last entry.
struct Family {
  std::vector<std::size_t> parents;
  std::vector<std::vector<std::size_t>> children;
};

Family FamilyOf(const std::vector<Area>& areas) {
  Family family{std::vector<std::size_t>(areas.size()),
                std::vector<std::vector<std::size_t>>(areas.size() + 1)};
  std::vector<std::size_t> path{areas.size()};
  for (std::size_t i = 0; i < areas.size(); ++i) {
    path.resize(areas[i].Level());
    family.parents[i] = path.back();
    family.children[path.back()].push_back(i);
    path.push_back(i);
  }
  return family;
}

}  // namespace

std::size_t OrderByHoles(AreaTree& tree) {
  std::vector<Area>& areas = tree.areas;
  const Family family = FamilyOf(areas);
  // By the area that must come first. Of two areas deeper down it is their ancestors beside each
  // other that have an order.
  std::map<std::size_t, std::set<std::size_t>> behind;
  for (std::size_t level = 1; level <= tree.codes.size(); ++level) {
    std::vector<std::size_t> indexes;
    std::vector<const Shape*> shapes;
    for (std::size_t i = 0; i < areas.size(); ++i) {
      if (areas[i].Level() != level) continue;
      indexes.push_back(i);
      shapes.push_back(&areas[i].shape);
    }
    for (const auto& [outerShape, innerShape] : EnclosedPairs(shapes)) {
      std::size_t outer = indexes[outerShape];
      std::size_t inner = indexes[innerShape];
      if (outer == inner) continue;
      while (family.parents[outer] != family.parents[inner]) {
        outer = family.parents[outer];
        inner = family.parents[inner];
      }
      behind[outer].insert(inner);
    }
  }
  if (behind.empty()) return 0;

  std::size_t stuck = 0;
  std::vector<Area> ordered;
  ordered.reserve(areas.size());
  const std::function<void(std::size_t)> addChildren = [&](std::size_t parent) {
    for (const std::size_t child : Sorted(family.children[parent], behind, stuck)) {
      ordered.push_back(std::move(areas[child]));
      addChildren(child);
    }
  };
  addChildren(areas.size());
  areas = std::move(ordered);
  return stuck;
}

}  // namespace vexel::import
