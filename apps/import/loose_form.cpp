#include "loose_form.h"

#include "kit/request/fold.h"
#include "kit/request/markup.h"

namespace vexel::import {

namespace {

// What is left out beyond ASCII: signs of Latin-1, combining marks, and general punctuation.
bool IsDecoration(char32_t character) {
  const auto isBetween = [=](char32_t first, char32_t last) {
    return character >= first && character <= last;
  };
  return isBetween(0x80, 0xBF) || isBetween(0x300, 0x36F) || isBetween(0x2000, 0x203F);
}

bool IsPlain(char32_t character) {
  return (character >= 'a' && character <= 'z') || (character >= '0' && character <= '9');
}

}  // namespace

std::string_view WithoutZeros(std::string_view text) {
  const std::size_t first = text.find_first_not_of('0');
  if (first == std::string_view::npos) return text.substr(text.empty() ? 0 : text.size() - 1);
  return text.substr(first);
}

std::string LooseForm(std::string_view text) {
  constexpr char32_t kBehindAscii = 0x80;
  const std::string folded = Folded(text);
  std::string form;
  for (std::string_view rest = folded; !rest.empty();) {
    const char32_t character = NextCharacter(rest);
    const bool counts = character < kBehindAscii ? IsPlain(character) : !IsDecoration(character);
    if (counts) AppendUtf8(form, character);
  }
  return std::string(WithoutZeros(form));
}

}  // namespace vexel::import
