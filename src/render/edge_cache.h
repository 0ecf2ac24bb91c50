// The edges of an outline that came lately.

#ifndef VEXEL_RENDER_EDGE_CACHE_H_
#define VEXEL_RENDER_EDGE_CACHE_H_

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/geometry.h"

namespace vexel {

// An outline of a million vertices mostly runs along the same pixels again and again, and what its
// edges paint need not be worked out each time. Each edge has one place here, which it may have to
// leave to another one: what is found was there before, what is not found may have been.
class EdgeCache {
 public:
  struct Entry {
    CPoint from;
    CPoint to;
    std::uint8_t times = 0;  // the owner's count, 0 for no edge

    bool Is(const CPoint& begin, const CPoint& end) const {
      return times != 0 && from == begin && to == end;
    }
  };

  EdgeCache() : entries_(kSize) {}

  Entry& PlaceOf(const CPoint& from, const CPoint& to) {
    std::uint64_t mixed = 0;
    for (const int part : {from.x, from.y, to.x, to.y}) {
      mixed = (mixed + static_cast<std::uint32_t>(part)) * kMixer;
    }
    return entries_[mixed >> (64U - kBits)];
  }

  std::vector<Entry>& Entries() { return entries_; }

 private:
  static constexpr unsigned kBits = 14;
  static constexpr std::size_t kSize = std::size_t{1} << kBits;
  static constexpr std::uint64_t kMixer = 0x9E3779B97F4A7C15U;

  std::vector<Entry> entries_;
};

}  // namespace vexel

#endif  // VEXEL_RENDER_EDGE_CACHE_H_
