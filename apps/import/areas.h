// The areas of a map on their way from features to files.

#ifndef VEXEL_APPS_IMPORT_AREAS_H_
#define VEXEL_APPS_IMPORT_AREAS_H_

#include <cstddef>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "codes.h"
#include "flaws.h"
#include "geo_file.h"
#include "shape.h"

namespace vexel::import {

struct Area {
  std::vector<std::string> values;  // of its key, from the top level down to its own
  std::vector<int> codes;           // the same as numbers
  std::string name;
  Shape shape;
  int source = -1;                      // of `fields`; none for an area that children brought
  std::vector<std::string> fields;      // those that were read
  std::vector<std::string> namesAbove;  // of the areas that it lies in, where its source has them

  std::size_t Level() const { return values.size(); }
};

// Where in Area::fields something stands; -1 where it does not.
using FieldIndex = int;

// A source of areas and what it has been read for.
struct SourceFields {
  struct KeyField {
    FieldIndex index;
    std::size_t length;  // 0 for all of it
  };

  std::vector<std::size_t> read;  // fields of the file, in the order of Area::fields
  std::vector<KeyField> key;      // from the top level down
  FieldIndex name = -1;
  std::vector<FieldIndex> nameOf;  // of areas above, by level from 0
};

// A map as areas, each before the areas in it, siblings by their codes but for those that lie in
// holes of others.
struct AreaTree {
  std::vector<Area> areas;
  std::vector<LevelCodes> codes;  // one entry for each level
  std::size_t dissolved = 0;      // areas with outlines from their children
  std::vector<std::string> bare;  // names of areas without an outline
};

// Puts features into a tree under their keys.
class TreeBuilder {
 public:
  // `codes` are those of earlier imports, one entry for each level of the tree to be.
  explicit TreeBuilder(std::vector<LevelCodes> codes) { tree_.codes = std::move(codes); }

  // Features of one key are parts of one area.
  void Add(int source, const SourceFields& fields, std::vector<Feature> features, Flaws& flaws);

  // Completes the tree: codes, areas above those that there are, and where `dissolve` says so
  // outlines for them.
  AreaTree Finish(bool dissolve);

 private:
  std::size_t IndexOf(const std::vector<std::string>& values);
  void AddParents();
  void AssignCodes();
  void SortByCodes();
  void Dissolve();

  AreaTree tree_;
  std::unordered_map<std::string, std::size_t> indexes_;  // by the values of a key
};

// Moves areas that lie in holes of others behind those, as far as that can be: what a page paints
// later lies on top. Gives how many could not be moved.
std::size_t OrderByHoles(AreaTree& tree);

}  // namespace vexel::import

#endif  // VEXEL_APPS_IMPORT_AREAS_H_
