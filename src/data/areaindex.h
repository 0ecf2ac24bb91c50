// An index from area keys to the nodes or rows that carry them.

#ifndef VEXEL_DATA_AREAINDEX_H_
#define VEXEL_DATA_AREAINDEX_H_

#include <array>
#include <bit>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "brindle/areastruct.h"

namespace vexel {

// A flat hash table of pointers to items that have GetArea(). Of several items with one key the one
// added first is found, as a search from the front would. The items stay their owner's and must
// neither move nor change their keys while the index is in use.
template <typename Item>
class AreaIndex {
 public:
  static constexpr std::size_t kNoEntry = static_cast<std::size_t>(-1);

  // For at most so many items.
  explicit AreaIndex(std::size_t most)
      : slots_(std::bit_ceil(2 * most + 1)), seed_(std::bit_cast<std::uintptr_t>(slots_.data())) {
    entries_.reserve(most);
  }

  void Add(Item* item) {
    const CAreaStruct& key = item->GetArea();
    const std::uint64_t hash = Hash(key);
    Slot& slot = slots_[Probe(hash, key)];
    if (slot.entry != 0) return;
    assert(2 * entries_.size() + 1 < slots_.size());  // or a search would find no empty slot
    entries_.push_back({key.codes, item});
    slot = {UpperHalf(hash), static_cast<std::uint32_t>(entries_.size())};
  }

  Item* Find(const CAreaStruct& key) {
    const std::size_t entry = FindEntry(key);
    return entry == kNoEntry ? nullptr : entries_[entry].item;
  }

  // The number of the key, below GetCount(); kNoEntry when nothing has it. Mostly the areas are
  // looked up in the order in which they were added.
  std::size_t FindEntry(const CAreaStruct& key) {
    if (next_ >= entries_.size() || !AreSame(entries_[next_].codes, key.codes)) {
      const std::uint32_t entry = slots_[Probe(Hash(key), key)].entry;
      if (entry == 0) return kNoEntry;
      next_ = entry - 1;
    }
    return next_++;
  }
  Item* ItemOf(std::size_t entry) const { return entries_[entry].item; }
  std::size_t GetCount() const { return entries_.size(); }

 private:
  using Codes = std::array<std::int32_t, CAreaStruct::kNumCodes>;

  // Every key once, with the first item that has it, in the order of adding.
  struct Entry {
    Codes codes;
    Item* item;
  };
  struct Slot {
    std::uint32_t hash = 0;   // the upper half of it
    std::uint32_t entry = 0;  // counted from 1
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
    // The low bits, which find the slot, must hear of every bit of the last codes.
    hash *= kOdd;
    return hash ^ (hash >> 32U);
  }

  static std::uint32_t UpperHalf(std::uint64_t hash) noexcept {
    return static_cast<std::uint32_t>(hash >> 32U);
  }

  // Spelled out: the library's comparison is a call.
  static bool AreSame(const Codes& a, const Codes& b) noexcept {
    std::int32_t difference = 0;
    for (std::size_t i = 0; i < a.size(); ++i) difference |= a[i] ^ b[i];
    return difference == 0;
  }

  // The slot that holds the key, or the empty one where it belongs.
  std::size_t Probe(std::uint64_t hash, const CAreaStruct& key) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t at = hash & mask;
    while (slots_[at].entry != 0 && (slots_[at].hash != UpperHalf(hash) ||
                                     !AreSame(entries_[slots_[at].entry - 1].codes, key.codes))) {
      at = (at + 1) & mask;
    }
    return at;
  }

  std::vector<Slot> slots_;
  std::vector<Entry> entries_;
  std::size_t next_ = 0;  // behind the entry found last
  std::uint64_t seed_;
};

}  // namespace vexel

#endif  // VEXEL_DATA_AREAINDEX_H_
