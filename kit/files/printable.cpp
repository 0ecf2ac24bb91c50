#include "kit/files/printable.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace vexel {

namespace {

using namespace std::string_view_literals;

struct Range {
  std::string_view first;
  std::string_view last;
};

// All of one length have the order of their numbers. UTF-8 only: a byte of the upper half alone is
// none of its characters, and what stands for a control character in other sets goes too.
constexpr std::array kUpsetting{
    Range{"\x00"sv, "\x1F"sv}, Range{"\x7F"sv, "\x7F"sv}, Range{"\x80"sv, "\x9F"sv},
    Range{"\u0080", "\u009F"}, Range{"\u061C", "\u061C"}, Range{"\u200E", "\u200F"},
    Range{"\u2028", "\u202E"}, Range{"\u2066", "\u2069"},
};

// Bytes of the character of UTF-8 that the text begins with; 1 for what is none.
std::size_t LengthOfFirst(std::string_view text) noexcept {
  const auto lead = static_cast<unsigned char>(text.front());
  const std::size_t length = lead < 0xC2U   ? 1
                             : lead < 0xE0U ? 2
                             : lead < 0xF0U ? 3
                             : lead < 0xF5U ? 4
                                            : 1;
  const std::string_view rest = text.substr(1, length - 1);
  const bool isWhole =
      rest.size() == length - 1 && std::all_of(rest.begin(), rest.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
      });
  return isWhole ? length : 1;
}

bool UpsetsTerminal(std::string_view character) noexcept {
  return std::any_of(kUpsetting.begin(), kUpsetting.end(), [=](const Range& range) {
    return range.first.size() == character.size() && range.first <= character &&
           character <= range.last;
  });
}

template <typename Keeps>
char* Copy(std::string_view text, char* to, Keeps keeps) noexcept {
  while (!text.empty()) {
    const std::string_view character = text.substr(0, LengthOfFirst(text));
    if (UpsetsTerminal(character) && !keeps(character.front())) {
      *to++ = '?';
    } else {
      to = std::copy(character.begin(), character.end(), to);
    }
    text.remove_prefix(character.size());
  }
  return to;
}

}  // namespace

char* CopyPrintable(std::string_view text, char* to) noexcept {
  return Copy(text, to, [](char) { return false; });
}

std::string Printable(std::string_view text) {
  std::string line(text);
  line.resize(static_cast<std::size_t>(CopyPrintable(line, line.data()) - line.data()));
  return line;
}

std::string PrintableLines(std::string text) {
  const auto keeps = [](char c) { return c == '\n' || c == '\t'; };
  text.resize(static_cast<std::size_t>(Copy(text, text.data(), keeps) - text.data()));
  return text;
}

}  // namespace vexel
