#include "topology/vertex_table.h"

#include <bit>
#include <limits>

namespace vexel::import {
namespace {

constexpr VertexId kFree = std::numeric_limits<VertexId>::max();

std::size_t HashOf(Vertex vertex) {
  // Adding zero makes one of the two zeros.
  const std::uint64_t x = std::bit_cast<std::uint32_t>(vertex.x + 0.0F);
  const std::uint64_t y = std::bit_cast<std::uint32_t>(vertex.y + 0.0F);
  std::uint64_t hash = (x << 32 | y) * 0x9E3779B97F4A7C15U;
  hash ^= hash >> 32;
  return static_cast<std::size_t>(hash * 0xD6E8FEB86659FD93U >> 20);
}

}  // namespace

VertexTable::VertexTable(std::size_t most)
    : slots_(std::bit_ceil(most + most / 2 + 2), kFree), mask_(slots_.size() - 1) {
  vertices_.reserve(most);
}

VertexId VertexTable::IdOf(Vertex vertex) {
  std::size_t slot = HashOf(vertex) & mask_;
  while (slots_[slot] != kFree && vertices_[slots_[slot]] != vertex) slot = (slot + 1) & mask_;
  if (slots_[slot] == kFree) {
    slots_[slot] = static_cast<VertexId>(vertices_.size());
    vertices_.push_back(vertex);
  }
  return slots_[slot];
}

std::vector<VertexId> VertexTable::IdsOf(const Ring& ring) {
  std::vector<VertexId> ids;
  ids.reserve(ring.vertices.size());
  for (const Vertex& vertex : ring.vertices) {
    const VertexId id = IdOf(vertex);
    if (ids.empty() || ids.back() != id) ids.push_back(id);
  }
  while (ids.size() > 1 && ids.back() == ids.front()) ids.pop_back();
  return ids;
}

}  // namespace vexel::import
