#include "apps/serve/cache.h"

#include <iterator>
#include <utility>

namespace vexel::serve {

std::size_t Cache::WeightOf(const Entry& entry) {
  constexpr std::size_t kNodes = 128;  // of the list and of the table
  return entry.answer->Weight() + entry.key.size() + kNodes;
}

AnswerPtr Cache::Find(std::string_view key) {
  const auto found = places_.find(key);
  if (found == places_.end()) return nullptr;
  entries_.splice(entries_.begin(), entries_, found->second);
  return found->second->answer;
}

void Cache::Put(const std::string& key, AnswerPtr answer) {
  constexpr std::size_t kLeastPlaces = 8;
  if (const auto found = places_.find(key); found != places_.end()) Drop(found->second);
  Entry entry{key, std::move(answer)};
  const std::size_t weight = WeightOf(entry);
  if (weight > mostBytes_ / kLeastPlaces) return;
  while (bytes_ + weight > mostBytes_) Drop(std::prev(entries_.end()));
  entries_.push_front(std::move(entry));
  places_.emplace(entries_.front().key, entries_.begin());
  bytes_ += weight;
}

void Cache::Drop(std::list<Entry>::iterator entry) {
  bytes_ -= WeightOf(*entry);
  places_.erase(entry->key);
  entries_.erase(entry);
}

}  // namespace vexel::serve
