#include "topology/arcs.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <unordered_map>
#include <utility>

#include "topology/vertex_table.h"

namespace vexel::import {
namespace {

constexpr VertexId kNobody = std::numeric_limits<VertexId>::max();

struct Neighbours {
  VertexId low = kNobody;
  VertexId high = kNobody;

  friend bool operator==(const Neighbours&, const Neighbours&) = default;
};

bool Before(Vertex a, Vertex b) { return a.x < b.x || (a.x == b.x && a.y < b.y); }

class Cutter {
 public:
  explicit Cutter(std::size_t vertices) : table_(vertices) {}

  void Add(Ring& ring) {
    std::vector<VertexId> ids = table_.IdsOf(ring);
    if (ids.size() < 3) return;
    neighbours_.resize(table_.size());
    isNode_.resize(table_.size());
    for (std::size_t i = 0; i < ids.size(); ++i) {
      Meet(ids[i], ids[(i + ids.size() - 1) % ids.size()], ids[(i + 1) % ids.size()]);
    }
    rings_.emplace_back(&ring, std::move(ids));
  }

  Arcs Cut() {
    for (auto& [ring, ids] : rings_) {
      result_.rings.push_back({ring, {}});
      CutRing(ids);
    }
    return std::move(result_);
  }

 private:
  // A vertex that has other neighbours the second time is where borders branch.
  void Meet(VertexId at, VertexId last, VertexId next) {
    const Neighbours now{std::min(last, next), std::max(last, next)};
    if (neighbours_[at] == Neighbours{}) neighbours_[at] = now;
    if (neighbours_[at] != now || last == next) isNode_[at] = true;
  }

  void CutRing(std::vector<VertexId>& ids) {
    auto first = std::find_if(ids.begin(), ids.end(), [&](VertexId id) { return isNode_[id]; });
    if (first == ids.end()) {
      first = std::min_element(ids.begin(), ids.end(), [&](VertexId a, VertexId b) {
        return Before(table_[a], table_[b]);
      });
    }
    std::rotate(ids.begin(), first, ids.end());
    ids.push_back(ids.front());
    for (std::size_t start = 0; start + 1 < ids.size();) {
      std::size_t end = start + 1;
      while (end + 1 < ids.size() && !isNode_[ids[end]]) ++end;
      Use(std::span(ids).subspan(start, end - start + 1));
      start = end;
    }
  }

  void Use(std::span<const VertexId> ids) {
    const bool backwards = IsBackwards(ids);
    const VertexId first = backwards ? ids.back() : ids.front();
    const VertexId second = backwards ? ids[ids.size() - 2] : ids[1];
    const std::uint64_t key = std::uint64_t{first} << 32 | second;
    const auto [known, isNew] = arcOf_.try_emplace(key, result_.arcs.size());
    if (isNew) {
      Arc& arc = result_.arcs.emplace_back();
      arc.reserve(ids.size());
      for (const VertexId id : ids) arc.push_back(table_[id]);
      if (backwards) std::reverse(arc.begin(), arc.end());
    }
    result_.rings.back().uses.push_back({known->second, backwards});
  }

  bool IsBackwards(std::span<const VertexId> ids) const {
    if (ids.front() != ids.back()) return Before(table_[ids.back()], table_[ids.front()]);
    return Before(table_[ids[ids.size() - 2]], table_[ids[1]]);
  }

  VertexTable table_;
  std::vector<Neighbours> neighbours_;
  std::vector<bool> isNode_;
  std::vector<std::pair<Ring*, std::vector<VertexId>>> rings_;
  std::unordered_map<std::uint64_t, std::size_t> arcOf_;
  Arcs result_;
};

}  // namespace

Arcs CutToArcs(std::span<Shape> shapes) {
  std::size_t vertices = 0;
  for (const Shape& shape : shapes) {
    for (const Ring& ring : shape) vertices += ring.vertices.size();
  }
  Cutter cutter(vertices);
  for (Shape& shape : shapes) {
    for (Ring& ring : shape) cutter.Add(ring);
  }
  return cutter.Cut();
}

}  // namespace vexel::import
