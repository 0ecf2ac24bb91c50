#include "kit/request/fold.h"

#include <algorithm>

#include "kit/request/markup.h"

namespace vexel {

namespace {

// U+00C0 to U+017F by their plain letters; "." stands for what has none.
constexpr char32_t kFirstAccented = 0xC0;
constexpr std::string_view kPlain =
    "aaaaaa.ceeeeiiiidnooooo.ouuuuy.."
    "aaaaaa.ceeeeiiiidnooooo.ouuuuy.y"
    "aaaaaaccccccccddddeeeeeeeeeegggggggghhhhiiiiiiiiii..jjkkklllllll"
    "lllnnnnnnnnnoooooo..rrrrrrssssssssttttttuuuuuuuuuuuuwwyyyzzzzzzs";
static_assert(kPlain.size() == 0x180 - 0xC0);

bool IsBetween(char32_t character, char32_t first, char32_t last) {
  return character >= first && character <= last;
}

// The small letter of a capital of Latin, Greek or Cyrillic; any other character as it is.
char32_t Small(char32_t character) {
  constexpr char32_t kStep = 0x20;
  constexpr char32_t kFarStep = 0x50;
  constexpr char32_t kTimes = 0xD7;
  if (IsBetween(character, 0xC0, 0xDE) && character != kTimes) return character + kStep;
  if (character == 0x132 || character == 0x152) return character + 1;
  if (IsBetween(character, 0x391, 0x3A9) || IsBetween(character, 0x410, 0x42F)) {
    return character + kStep;
  }
  return IsBetween(character, 0x400, 0x40F) ? character + kFarStep : character;
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

std::string Folded(std::string_view text) {
  std::string folded;
  folded.reserve(text.size());
  while (!text.empty()) {
    const char first = text.front();
    if (first >= 0) {
      folded += first >= 'A' && first <= 'Z' ? static_cast<char>(first - 'A' + 'a') : first;
      text.remove_prefix(1);
      continue;
    }
    const char32_t character = NextCharacter(text);
    const bool isLatin = IsBetween(character, kFirstAccented, kFirstAccented + kPlain.size() - 1);
    const char plain = isLatin ? kPlain[character - kFirstAccented] : '.';
    if (plain != '.') {
      folded += plain;
    } else {
      AppendUtf8(folded, Small(character));
    }
  }
  return folded;
}

std::string SortKey(std::string_view text) {
  const std::string folded = Folded(text);
  std::string key;
  key.reserve(folded.size());
  for (auto at = folded.begin(); at != folded.end();) {
    const auto end = std::find_if_not(at, folded.end(), IsDigit);
    if (at == end) {
      key += *at++;
      continue;
    }
    // The longer number is the greater one, once the zeros before it are gone.
    at = std::find_if(at, end - 1, [](char digit) { return digit != '0'; });
    constexpr std::ptrdiff_t kMostDigits = 9;
    key += static_cast<char>('0' + std::min(end - at, kMostDigits));
    key.append(at, end);
    at = end;
  }
  return key;
}

}  // namespace vexel
