// Finished answers, as many of those asked for last as fit.

#ifndef VEXEL_APPS_SERVE_CACHE_H_
#define VEXEL_APPS_SERVE_CACHE_H_

#include <cstddef>
#include <list>
#include <string>
#include <string_view>
#include <unordered_map>

#include "apps/serve/answer.h"

namespace vexel::serve {

// For one thread.
class Cache {
 public:
  explicit Cache(std::size_t mostBytes) : mostBytes_(mostBytes) {}

  // Null when it is not there.
  AnswerPtr Find(std::string_view key);

  // Makes room by letting go what was not asked for longest. An answer that takes more than an
  // eighth of all is not kept.
  void Put(const std::string& key, AnswerPtr answer);

  std::size_t Bytes() const { return bytes_; }
  std::size_t Count() const { return entries_.size(); }

 private:
  struct Entry {
    std::string key;
    AnswerPtr answer;
  };

  static std::size_t WeightOf(const Entry& entry);
  void Drop(std::list<Entry>::iterator entry);

  std::size_t mostBytes_;
  std::size_t bytes_ = 0;
  std::list<Entry> entries_;  // the one asked for last in front
  std::unordered_map<std::string_view, std::list<Entry>::iterator> places_;
};

}  // namespace vexel::serve

#endif  // VEXEL_APPS_SERVE_CACHE_H_
