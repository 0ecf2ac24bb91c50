#include "kit/tables/separator.h"

#include <vexel/platform/string.h>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace vexel {

namespace {

constexpr std::size_t kMostRows = 200;
constexpr std::size_t kMostBytes = std::size_t{256} * 1024;

// How many separators each of the first rows has outside of quotes; blank rows are left out. A
// quote counts at the beginning of a cell, as it does for the reader.
std::vector<std::size_t> CountInRows(std::string_view text, char separator) {
  std::vector<std::size_t> counts;
  bool isQuoted = false;
  bool isCellStart = true;
  bool isBlank = true;
  std::size_t count = 0;
  const auto endRow = [&] {
    if (!isBlank) counts.push_back(count);
    count = 0;
    isBlank = true;
    isCellStart = true;
  };
  for (const char c : text.substr(0, kMostBytes)) {
    if (isQuoted || (c == '"' && isCellStart)) {
      // The second of two quotes opens again what the first one closed.
      if (c == '"') isQuoted = !isQuoted;
      isCellStart = c == '"' && !isQuoted;
      isBlank = false;
    } else if (c == '\n' || c == '\r') {
      endRow();
      if (counts.size() == kMostRows) return counts;
    } else if (c == separator) {
      ++count;
      isCellStart = true;
    } else if (c != ' ') {
      isCellStart = false;
      isBlank = false;
    }
  }
  // A row that is cut says nothing, unless it is the only one.
  if (text.size() <= kMostBytes || counts.empty()) endRow();
  return counts;
}

struct Score {
  std::size_t likeHeading = 0;  // rows with as many cells as the first
  std::size_t columns = 0;

  // clang-tidy takes the zero of a defaulted comparison for a pointer.
  friend auto operator<=>(const Score&, const Score&) = default;  // NOLINT(modernize-use-nullptr)
};

Score ScoreOf(std::string_view text, char separator) {
  const std::vector<std::size_t> counts = CountInRows(text, separator);
  if (counts.empty() || counts.front() == 0) return {};
  const auto alike = std::count(counts.begin(), counts.end(), counts.front());
  return {static_cast<std::size_t>(alike), counts.front()};
}

}  // namespace

bool CanSeparate(char c) noexcept {
  constexpr std::string_view kMarks = "\t !#$%&'()*+,-./:;<=>?@[\\]^_`{|}~";
  return kMarks.find(c) != std::string_view::npos;
}

std::optional<char> TakeSeparatorLine(std::string_view& text) noexcept {
  const std::size_t length = kSeparatorLine.size() + 1;
  if (!EqualNoCase(text.substr(0, kSeparatorLine.size()), kSeparatorLine)) return {};
  const std::string_view rest = text.substr(std::min(length, text.size()));
  const bool isLine = rest.empty() || rest.front() == '\r' || rest.front() == '\n';
  if (text.size() < length || !isLine || !CanSeparate(text[length - 1])) return {};
  const char separator = text[length - 1];
  text = rest;
  if (text.starts_with("\r\n")) {
    text.remove_prefix(2);
  } else if (!text.empty()) {
    text.remove_prefix(1);
  }
  return separator;
}

std::optional<char> LikelySeparator(std::string_view text) {
  // In the order in which they win where all else is equal: commas occur in numbers and names.
  constexpr std::string_view kCandidates = ";\t|,";
  std::optional<char> likely;
  Score best;
  for (const char candidate : kCandidates) {
    const Score score = ScoreOf(text, candidate);
    if (score > best) {
      best = score;
      likely = candidate;
    }
  }
  return likely;
}

}  // namespace vexel
