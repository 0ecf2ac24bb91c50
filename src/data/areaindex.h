// An index from area keys to the nodes or rows that carry them.

#ifndef VEXEL_DATA_AREAINDEX_H_
#define VEXEL_DATA_AREAINDEX_H_

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

#include "brindle/areastruct.h"

namespace vexel {

// Finds items that have GetArea() by their keys. Of several items with one key the one added first
// is found, as a search from the front would. The items stay their owner's and must neither move
// nor change their keys while the index is in use.
//
// Trees and tables are mostly in the order of their keys and asked for in that order. As long as
// the keys added ascend, the list of the items is all there is, and the place behind the last find
// is where to look; the first key that does not ascend makes a flat hash table. (Without it a map
// of a hundred thousand areas is indexed in a fifth of the time and a sixth of the memory.)
template <typename Item>
class AreaIndex {
 public:
  static constexpr std::size_t kNoEntry = static_cast<std::size_t>(-1);

  void Add(Item* item) {
    const CAreaStruct& key = item->GetArea();
    if (slots_.empty()) {
      if (items_.empty() || Compare(KeyOf(items_.size() - 1), key) < 0) {
        items_.push_back(item);
        return;
      }
      MakeTable();
    } else if (2 * items_.size() + 2 > slots_.size()) {
      MakeTable();
    }
    AddToTable(item);
  }

  Item* Find(const CAreaStruct& key) {
    const std::size_t entry = FindEntry(key);
    return entry == kNoEntry ? nullptr : items_[entry];
  }

  // The number of the key, below GetCount(); kNoEntry when nothing has it.
  std::size_t FindEntry(const CAreaStruct& key) {
    constexpr std::size_t kAhead = 8;
    if (next_ + kAhead < items_.size()) __builtin_prefetch(&KeyOf(next_ + kAhead));
    if (next_ < items_.size() && AreSame(KeyOf(next_), key)) return next_++;
    const std::size_t entry = slots_.empty() ? FindInOrder(key) : FindInTable(key);
    if (entry != kNoEntry) next_ = entry + 1;
    return entry;
  }
  Item* ItemOf(std::size_t entry) const { return items_[entry]; }
  std::size_t GetCount() const { return items_.size(); }

 private:
  struct Slot {
    std::uint32_t hash = 0;   // the upper half of it
    std::uint32_t entry = 0;  // counted from 1
  };

  const CAreaStruct& KeyOf(std::size_t entry) const { return items_[entry]->GetArea(); }

  // Any order does; this one is that of siblings, but for codes below the one for unset.
  static int Compare(const CAreaStruct& a, const CAreaStruct& b) noexcept {
    for (std::size_t i = 0; i < a.codes.size(); ++i) {
      if (a.codes[i] != b.codes[i]) return a.codes[i] < b.codes[i] ? -1 : 1;
    }
    return 0;
  }

  // A key that nothing has mostly belongs where the next one is looked for.
  std::size_t FindInOrder(const CAreaStruct& key) {
    const bool isBehind = next_ == 0 || Compare(KeyOf(next_ - 1), key) < 0;
    if (isBehind && (next_ >= items_.size() || Compare(key, KeyOf(next_)) < 0)) return kNoEntry;
    const auto at = std::partition_point(items_.begin(), items_.end(), [&](const Item* item) {
      return Compare(item->GetArea(), key) < 0;
    });
    next_ = static_cast<std::size_t>(at - items_.begin());
    return at != items_.end() && AreSame((*at)->GetArea(), key) ? next_ : kNoEntry;
  }

  std::size_t FindInTable(const CAreaStruct& key) const {
    const std::uint32_t entry = slots_[Probe(Hash(key), key)].entry;
    return entry == 0 ? kNoEntry : entry - 1;
  }

  // A new table for all items, with room for as many more; half of it stays empty.
  void MakeTable() {
    slots_.assign(std::bit_ceil(4 * items_.size() + 2), Slot{});
    seed_ = std::bit_cast<std::uintptr_t>(slots_.data());
    const std::vector<Item*> items = std::exchange(items_, {});
    items_.reserve(items.size() + 1);
    for (Item* item : items) AddToTable(item);
  }

  void AddToTable(Item* item) {
    const CAreaStruct& key = item->GetArea();
    const std::uint64_t hash = Hash(key);
    Slot& slot = slots_[Probe(hash, key)];
    if (slot.entry != 0) return;
    items_.push_back(item);
    slot = {UpperHalf(hash), static_cast<std::uint32_t>(items_.size())};
  }

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
  static bool AreSame(const CAreaStruct& a, const CAreaStruct& b) noexcept {
    std::int32_t difference = 0;
    for (std::size_t i = 0; i < a.codes.size(); ++i) difference |= a.codes[i] ^ b.codes[i];
    return difference == 0;
  }

  // The slot that holds the key, or the empty one where it belongs. At least half of them are.
  std::size_t Probe(std::uint64_t hash, const CAreaStruct& key) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t at = hash & mask;
    while (slots_[at].entry != 0 &&
           (slots_[at].hash != UpperHalf(hash) || !AreSame(KeyOf(slots_[at].entry - 1), key))) {
      at = (at + 1) & mask;
    }
    return at;
  }

  std::vector<Item*> items_;  // the first of each key, in the order of adding
  std::vector<Slot> slots_;   // empty while the keys ascend
  std::size_t next_ = 0;      // behind the item found last
  std::uint64_t seed_ = 0;
};

}  // namespace vexel

#endif  // VEXEL_DATA_AREAINDEX_H_
