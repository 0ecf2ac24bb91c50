#include "kit/request/hints.h"

#include <vexel/platform/string.h>

#include <algorithm>
#include <numeric>
#include <utility>
#include <vector>

namespace vexel {

namespace {

// How many letters must be put in, left out or replaced to make one text of the other.
std::size_t EditDistance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < a.size(); ++i) {
    std::size_t diagonal = std::exchange(row[0], i + 1);
    for (std::size_t j = 0; j < b.size(); ++j) {
      const bool same = ToLowerAscii(a[i]) == ToLowerAscii(b[j]);
      const std::size_t replaced = diagonal + (same ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({replaced, diagonal + 1, row[j] + 1});
    }
  }
  return row.back();
}

// Beginnings shorter than this fit too many names.
constexpr std::size_t kShortestBeginning = 3;

bool IsBeginningOf(std::string_view beginning, std::string_view name) {
  return beginning.size() >= kShortestBeginning &&
         EqualNoCase(beginning, name.substr(0, beginning.size()));
}

}  // namespace

std::string_view Nearest(std::string_view wrong, std::span<const std::string_view> names) {
  std::string_view nearest;
  std::size_t least = std::max<std::size_t>(wrong.size() / 3, 2) + 1;
  for (const std::string_view name : names) {
    const std::size_t distance = IsBeginningOf(wrong, name) ? 1 : EditDistance(wrong, name);
    // A name of which nothing would be left is not meant.
    if (distance < least && distance < name.size()) {
      nearest = name;
      least = distance;
    }
  }
  return nearest;
}

std::string Hint(std::string_view wrong, std::span<const std::string_view> names) {
  const std::string_view nearest = Nearest(wrong, names);
  return nearest.empty() ? "" : "; did you mean " + std::string(nearest) + "?";
}

std::string Joined(std::span<const std::string_view> names) {
  std::string joined;
  for (const std::string_view name : names) {
    if (!joined.empty()) joined += ", ";
    joined += name;
  }
  return joined;
}

}  // namespace vexel
