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

std::string JsonNumber(double number) { return nlohmann::json(number).dump(); }

void JsonWriter::Name(std::string_view name) {
  Separate();
  AppendJson(text_, name);
  text_ += ": ";
  isNamed_ = true;
}

void JsonWriter::Value(std::string_view text) {
  Separate();
  AppendJson(text_, text);
}

void JsonWriter::Begin(char bracket) {
  Separate();
  text_ += bracket;
  ++depth_;
  isFirst_ = true;
}

void JsonWriter::End(char bracket) {
  --depth_;
  if (!isFirst_) BreakLine();
  text_ += bracket;
  isFirst_ = false;
}

void JsonWriter::Literal(std::string_view literal) {
  Separate();
  text_ += literal;
}

// A named value stands behind its name, any other on a line of its own.
void JsonWriter::Separate() {
  if (!std::exchange(isNamed_, false) && depth_ > 0) {
    if (!isFirst_) text_ += ',';
    BreakLine();
  }
  isFirst_ = false;
}

void JsonWriter::BreakLine() {
  text_ += '\n';
  text_.append(2 * static_cast<std::size_t>(depth_), ' ');
}

}  // namespace vexel
