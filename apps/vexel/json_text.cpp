#include "json_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <nlohmann/json.hpp>

#include "view_options.h"

namespace vexel::cli {

namespace {

// Most names stand as they are.
bool IsPlain(std::string_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](char c) { return c >= ' ' && c < '\x7F' && c != '"' && c != '\\'; });
}

}  // namespace

void AppendJson(std::string& to, std::string_view text) {
  if (IsPlain(text)) {
    (to += '"').append(text) += '"';
    return;
  }
  to += nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

void AppendJson(std::string& to, std::optional<double> number) {
  constexpr std::size_t kLongest = 32;
  if (!number) {
    to += "null";
    return;
  }
  std::array<char, kLongest> text;
  const auto end = std::to_chars(text.data(), text.data() + text.size(), *number).ptr;
  to.append(text.data(), end);
}

void AppendJson(std::string& to, const CAreaStruct& key) { to += '[' + KeyText(key) + ']'; }

std::string ColorText(unsigned long color) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text = "#";
  for (int byte = 0; byte < 3; ++byte, color >>= 8U) {
    text += kDigits[(color >> 4U) & 0xFU];
    text += kDigits[color & 0xFU];
  }
  return text;
}

}  // namespace vexel::cli
