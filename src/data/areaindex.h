// An index from area keys to the nodes or rows that carry them.

#ifndef VEXEL_DATA_AREAINDEX_H_
#define VEXEL_DATA_AREAINDEX_H_

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

#include "brindle/areastruct.h"

namespace vexel {

// A flat hash table of pointers to items that have GetArea(). Of several items with one key the one
// added first is found, as a search from the front would. The items stay their owner's and must
// neither move nor change their keys while the index is in use.
template <typename Item>
class AreaIndex {
 public:
  explicit AreaIndex(std::size_t expected)
      : slots_(std::bit_ceil(2 * expected + 1)),
        seed_(std::bit_cast<std::uintptr_t>(slots_.data())) {}

  void Add(Item* item) {
    if (2 * (count_ + 1) > slots_.size()) Enlarge();
    const std::uint64_t hash = Hash(item->GetArea());
    Slot& slot = Probe(slots_, hash, item->GetArea());
    if (slot.item != nullptr) return;
    slot = {hash, item};
    ++count_;
  }

  Item* Find(const CAreaStruct& key) const { return Probe(slots_, Hash(key), key).item; }

 private:
  struct Slot {
    std::uint64_t hash = 0;
    Item* item = nullptr;
  };

  // Keys come from files: the seed, which differs from run to run, keeps a file from being written
  // so that all of its keys meet in one place.
  std::uint64_t Hash(const CAreaStruct& key) const noexcept {
    constexpr std::uint64_t kOdd = 0x9E3779B97F4A7C15U;
    std::uint64_t hash = seed_;
    for (std::size_t i = 0; i < key.codes.size(); i += 2) {
      std::uint64_t pair = 0;
      std::memcpy(&pair, key.codes.data() + i, sizeof(pair));
      hash = (std::rotl(hash, 23) ^ pair) * kOdd;
      hash ^= hash >> 29U;
    }
    return hash;
  }

  // The slot that holds the key, or the empty one where it belongs.
  template <typename Slots>
  static auto& Probe(Slots& slots, std::uint64_t hash, const CAreaStruct& key) {
    const std::size_t mask = slots.size() - 1;
    std::size_t at = hash & mask;
    while (slots[at].item != nullptr &&
           (slots[at].hash != hash || !(slots[at].item->GetArea() == key))) {
      at = (at + 1) & mask;
    }
    return slots[at];
  }

  void Enlarge() {
    std::vector<Slot> larger(2 * slots_.size());
    for (const Slot& slot : slots_) {
      if (slot.item != nullptr) Probe(larger, slot.hash, slot.item->GetArea()) = slot;
    }
    slots_ = std::move(larger);
  }

  std::vector<Slot> slots_;
  std::uint64_t seed_;
  std::size_t count_ = 0;
};

}  // namespace vexel

#endif  // VEXEL_DATA_AREAINDEX_H_
