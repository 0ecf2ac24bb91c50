// Numbers for the places that vertices stand at.

#ifndef VEXEL_APPS_IMPORT_TOPOLOGY_VERTEX_TABLE_H_
#define VEXEL_APPS_IMPORT_TOPOLOGY_VERTEX_TABLE_H_

#include <cstddef>
#include <cstdint>
#include <vector>

#include "shape.h"

namespace vexel::import {

using VertexId = std::uint32_t;

// Gives equal vertices one number, counted from 0 in the order of their first appearance.
class VertexTable {
 public:
  // `most` is how many vertices will be asked for at most; the table never grows.
  explicit VertexTable(std::size_t most);

  VertexId IdOf(Vertex vertex);
  Vertex operator[](VertexId id) const { return vertices_[id]; }
  std::size_t size() const { return vertices_.size(); }

  // The numbers of a ring's vertices, one for a vertex said several times in a row.
  std::vector<VertexId> IdsOf(const Ring& ring);

 private:
  std::vector<Vertex> vertices_;
  std::vector<VertexId> slots_;
  std::size_t mask_;
};

}  // namespace vexel::import

#endif  // VEXEL_APPS_IMPORT_TOPOLOGY_VERTEX_TABLE_H_
