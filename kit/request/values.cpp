#include "kit/request/values.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "kit/request/error.h"
#include "kit/request/hints.h"

namespace vexel {

std::optional<int> ParseInt(std::string_view text) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

int ParseIntBetween(std::string_view text, int least, int most) {
  const std::optional<int> number = ParseInt(text);
  if (number && *number >= least && *number <= most) return *number;
  throw WrongRequest(Quoted(text) + " is not a whole number from " + std::to_string(least) +
                     " to " + std::to_string(most));
}

double ParseNumber(std::string_view text) {
  double number = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error == std::errc() && end == text.data() + text.size() && std::isfinite(number)) {
    return number;
  }
  throw WrongRequest(Quoted(text) + " is not a number such as 12.5");
}

PageSize ParseSize(std::string_view text) {
  const std::size_t cross = text.find('x');
  const auto side = [](std::string_view part) {
    const std::optional<int> number = ParseInt(part);
    return number && *number >= 1 && *number <= kMostPixels ? *number : 0;
  };
  const PageSize size{side(text.substr(0, cross)),
                      cross == std::string_view::npos ? 0 : side(text.substr(cross + 1))};
  if (size.width != 0 && size.height != 0) return size;
  throw WrongRequest(Quoted(text) + " is not a size such as 800x600, sides from 1 to " +
                     std::to_string(kMostPixels));
}

CAreaStruct ParseKey(std::string_view text) {
  CAreaStruct key;
  const std::vector<std::string_view> parts = Split(text, ',');
  if (parts.size() > key.codes.size()) throw WrongRequest(Quoted(text) + " has more than 8 codes");
  auto code = key.codes.begin();
  for (const std::string_view part : parts) {
    const std::optional<int> number = ParseInt(TrimBlanks(part));
    if (!number) throw WrongRequest(Quoted(text) + " is no area key such as 12,3");
    *code++ = *number;
  }
  return key;
}

NumberSeparators ParseSeparators(std::string_view text) {
  const auto isSeparator = [](char c) {
    return c > '\0' && (c < '0' || c > '9') && c != '-' && c != '+' && c != '\n' && c != '\t';
  };
  const bool good = (text.size() == 1 || text.size() == 2) &&
                    std::all_of(text.begin(), text.end(), isSeparator) &&
                    text.front() != (text.size() == 2 ? text.back() : '\0');
  if (!good) {
    throw WrongRequest(Quoted(text) +
                       " is neither two different characters, first between thousands, then before"
                       " decimals, nor the latter alone");
  }
  return {text.size() == 2 ? text.front() : '\0', text.back()};
}

std::string NumberText(double number) {
  constexpr std::size_t kLongest = 32;
  std::array<char, kLongest> text;
  const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
  return {text.data(), end};
}

std::string SizeText(const PageSize& size) {
  return std::to_string(size.width) + 'x' + std::to_string(size.height);
}

std::string KeyText(const CAreaStruct& key, std::string_view between) {
  std::string text;
  const auto level = static_cast<std::size_t>(key.GetLevel());
  for (std::size_t i = 0; i < level; ++i) {
    if (i > 0) text += between;
    text += std::to_string(key.codes[i]);
  }
  return text;
}

std::string SeparatorsText(const NumberSeparators& separators) {
  std::string text;
  if (separators.thousand != '\0') text += separators.thousand;
  return text + separators.decimal;
}

std::vector<std::string_view> Split(std::string_view text, char mark) {
  std::vector<std::string_view> parts;
  for (;;) {
    const std::size_t at = text.find(mark);
    parts.push_back(text.substr(0, at));
    if (at == std::string_view::npos) return parts;
    text.remove_prefix(at + 1);
  }
}

}  // namespace vexel
