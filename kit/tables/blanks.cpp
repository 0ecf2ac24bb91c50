#include "kit/tables/blanks.h"

#include <algorithm>
#include <array>

namespace vexel {

namespace {

// No-break, figure, thin and narrow no-break blank.
constexpr std::array<std::string_view, 4> kWideBlanks{"\u00A0", "\u2007", "\u2009", "\u202F"};

constexpr bool IsAsciiBlank(char c) { return c == ' ' || c == '\t'; }
constexpr bool IsAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }

template <typename Matches>
std::size_t WideBlank(Matches matches) noexcept {
  const auto* found = std::find_if(kWideBlanks.begin(), kWideBlanks.end(), matches);
  return found == kWideBlanks.end() ? 0 : found->size();
}

}  // namespace

std::size_t BlankAtStart(std::string_view text) noexcept {
  if (text.empty()) return 0;
  if (IsAscii(text.front())) return IsAsciiBlank(text.front()) ? 1 : 0;
  return WideBlank([=](std::string_view blank) { return text.starts_with(blank); });
}

std::size_t BlankAtEnd(std::string_view text) noexcept {
  if (text.empty()) return 0;
  if (IsAscii(text.back())) return IsAsciiBlank(text.back()) ? 1 : 0;
  return WideBlank([=](std::string_view blank) { return text.ends_with(blank); });
}

std::string_view TrimAllBlanks(std::string_view text) noexcept {
  while (const std::size_t length = BlankAtStart(text)) text.remove_prefix(length);
  while (const std::size_t length = BlankAtEnd(text)) text.remove_suffix(length);
  return text;
}

}  // namespace vexel
