#include "loose_form.h"

#include <cstdint>

namespace vexel::import {

namespace {

// Base letters of U+00C0 to U+017F, "." where there is none; ligatures lose their second letter.
constexpr std::string_view kBaseLetters =
    "aaaaaaaceeeeiiiidnooooo.ouuuuyts"   // U+00C0
    "aaaaaaaceeeeiiiidnooooo.ouuuuyty"   // U+00E0
    "aaaaaaccccccccddddeeeeeeeeeegggg"   // U+0100
    "gggghhhhiiiiiiiiiiiijjkkklllllll"   // U+0120
    "lllnnnnnnnnnoooooooorrrrrrssssss"   // U+0140
    "ssttttttuuuuuuuuuuuuwwyyyzzzzzzs";  // U+0160
constexpr std::uint32_t kFirstAccented = 0xC0;

bool IsContinued(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

// The code point of two bytes of UTF-8, as which all of Latin's accented letters come; 0 for
// others.
std::uint32_t TwoBytes(std::string_view text) {
  const auto first = static_cast<unsigned char>(text[0]);
  if (text.size() < 2 || (first & 0xE0U) != 0xC0U || !IsContinued(text[1])) return 0;
  return (first & 0x1FU) << 6U | (static_cast<unsigned char>(text[1]) & 0x3FU);
}

}  // namespace

std::string_view WithoutZeros(std::string_view text) {
  const std::size_t first = text.find_first_not_of('0');
  if (first == std::string_view::npos) return text.substr(text.empty() ? 0 : text.size() - 1);
  return text.substr(first);
}

std::string LooseForm(std::string_view text) {
  std::string form;
  while (!text.empty()) {
    const char c = text.front();
    const std::uint32_t point = TwoBytes(text);
    if (static_cast<unsigned char>(c) < 0x80U) {
      if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9')) form += c;
      if (c >= 'A' && c <= 'Z') form += static_cast<char>(c - 'A' + 'a');
      text.remove_prefix(1);
    } else if (point != 0) {
      const bool isAccented =
          point >= kFirstAccented && point < kFirstAccented + kBaseLetters.size();
      constexpr std::uint32_t kFirstMark = 0x300;  // combining marks
      constexpr std::uint32_t kBehindMarks = 0x370;
      if (isAccented) {
        const char base = kBaseLetters[point - kFirstAccented];
        if (base != '.') form += base;
      } else if (point >= kBehindMarks || (point > kFirstAccented && point < kFirstMark)) {
        form.append(text.substr(0, 2));
      }
      text.remove_prefix(2);
    } else {
      constexpr std::string_view kPunctuation = "\xE2\x80";  // U+2000 to U+203F
      std::size_t length = 1;
      while (length < text.size() && IsContinued(text[length])) ++length;
      if (!text.starts_with(kPunctuation)) form.append(text.substr(0, length));
      text.remove_prefix(length);
    }
  }
  return std::string(WithoutZeros(form));
}

}  // namespace vexel::import
