#include "kit/request/json_text.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "kit/request/values.h"

namespace vexel {

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
  to += number ? NumberText(*number) : "null";
}

void AppendJson(std::string& to, const CAreaStruct& key) { to += '[' + KeyText(key) + ']'; }

}  // namespace vexel
