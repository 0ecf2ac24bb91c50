#include "kit/request/markup.h"

#include <vexel/brindle/text.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace vexel {

namespace {

constexpr std::string_view kReplacementText = "\uFFFD";

// The length of the character that a text begins with; 0 when it begins with none.
std::size_t CharacterLength(std::string_view text) {
  constexpr std::size_t kLongest = 4;
  if (static_cast<unsigned char>(text.front()) < 0x80) return 1;
  for (std::size_t length = 2; length <= std::min(kLongest, text.size()); ++length) {
    if (IsUtf8(text.substr(0, length))) return length;
  }
  return 0;
}

// What XML 1.0 has among its characters.
constexpr bool IsXml(char32_t character) {
  return character >= 0x20 && character != 0xFFFE && character != 0xFFFF;
}

void AppendEntities(std::string& to, std::string_view text) {
  constexpr std::array<std::pair<char, std::string_view>, 5> kEntities{
      {{'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'"', "&quot;"}, {'\'', "&#39;"}}};
  for (;;) {
    const std::size_t plain = std::min(text.find_first_of("&<>\"'"), text.size());
    to.append(text.substr(0, plain));
    if (plain == text.size()) return;
    const auto isOf = [&](const auto& entity) { return entity.first == text[plain]; };
    to += std::find_if(kEntities.begin(), kEntities.end(), isOf)->second;
    text.remove_prefix(plain + 1);
  }
}

// The text with U+FFFD for each byte that is part of no character.
std::string AsUtf8(std::string_view text) {
  std::string whole;
  while (!text.empty()) {
    const std::size_t length = CharacterLength(text);
    whole += length > 0 ? text.substr(0, length) : kReplacementText;
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return whole;
}

}  // namespace

char32_t NextCharacter(std::string_view& text) {
  const std::size_t length = CharacterLength(text);
  const auto byte = [&](std::size_t index) {
    return static_cast<char32_t>(static_cast<unsigned char>(text[index]));
  };
  char32_t character = kReplacement;
  if (length == 1) {
    character = byte(0);
  } else if (length > 1) {
    // The first byte has as many high bits as the character bytes, and a clear one behind them.
    character = byte(0) & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) character = character << 6U | (byte(i) & 0x3FU);
  }
  text.remove_prefix(std::max<std::size_t>(length, 1));
  return character;
}

void AppendUtf8(std::string& to, char32_t character) {
  const auto tail = [](char32_t bits) { return static_cast<char>(0x80U | (bits & 0x3FU)); };
  if (character < 0x80U) {
    to += static_cast<char>(character);
  } else if (character < 0x800U) {
    to += static_cast<char>(0xC0U | (character >> 6U));
    to += tail(character);
  } else if (character < 0x10000U) {
    to += static_cast<char>(0xE0U | (character >> 12U));
    to += tail(character >> 6U);
    to += tail(character);
  } else {
    to += static_cast<char>(0xF0U | (character >> 18U));
    to += tail(character >> 12U);
    to += tail(character >> 6U);
    to += tail(character);
  }
}

void AppendMarkup(std::string& to, std::string_view text) {
  if (IsUtf8(text)) {
    AppendEntities(to, text);
  } else {
    AppendEntities(to, AsUtf8(text));
  }
}

std::string MarkupText(std::string_view text) {
  std::string markup;
  AppendMarkup(markup, text);
  return markup;
}

std::string XmlText(std::string_view text) {
  const auto isPlain = [](char c) { return c >= 0x20 && c < 0x7F; };
  if (std::all_of(text.begin(), text.end(), isPlain)) return std::string(text);
  std::string printable;
  printable.reserve(text.size());
  while (!text.empty()) {
    const std::string_view before = text;
    const char32_t character = NextCharacter(text);
    if (character == '\t' || character == '\n' || character == '\r') {
      printable += ' ';
    } else if (IsXml(character) && character != kReplacement) {
      printable += before.substr(0, before.size() - text.size());
    } else {
      printable += kReplacementText;
    }
  }
  return printable;
}

}  // namespace vexel
