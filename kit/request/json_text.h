// JSON as text, piece by piece. A tree of it would be slower, and to take one down can fail where
// memory does.

#ifndef VEXEL_KIT_REQUEST_JSON_TEXT_H_
#define VEXEL_KIT_REQUEST_JSON_TEXT_H_

#include <vexel/brindle/areastruct.h>

#include <concepts>
#include <cstddef>
#include <optional>
#include <ranges>
#include <string>
#include <string_view>
#include <utility>

namespace vexel {

// Appends a string with its quotes. Bytes that are no UTF-8 become U+FFFD.
VEXEL_API void AppendJson(std::string& to, std::string_view text);

// Appends a number so that it reads back as the same double; null for nothing.
VEXEL_API void AppendJson(std::string& to, std::optional<double> number);

// Appends the codes of a key up to the deepest set one, as an array.
VEXEL_API void AppendJson(std::string& to, const CAreaStruct& key);

// A number that is not always whole: with a point or an exponent, "null" beyond the range of
// double.
VEXEL_API std::string JsonNumber(double number);

// Writes one text of JSON, a value or member to a line, each level two blanks further in.
class VEXEL_API JsonWriter {
 public:
  void BeginObject() { Begin('{'); }
  void EndObject() { End('}'); }
  void BeginArray() { Begin('['); }
  void EndArray() { End(']'); }

  // Within an object what comes next is the value of this member.
  void Name(std::string_view name);

  void Value(std::string_view text);
  void Value(const char* text) { Value(std::string_view(text)); }
  void Value(const std::string& text) { Value(std::string_view(text)); }
  void Value(double number) { Literal(JsonNumber(number)); }
  void Value(bool is) { Literal(is ? "true" : "false"); }
  void Value(std::integral auto number) { Literal(std::to_string(number)); }
  void Value(std::nullptr_t) { Literal("null"); }
  template <std::ranges::range Values>
  requires(!std::convertible_to<const Values&, std::string_view>) void Value(const Values& values) {
    BeginArray();
    for (const auto& value : values) Value(value);
    EndArray();
  }

  template <typename Any>
  void Member(std::string_view name, const Any& value) {
    Name(name);
    Value(value);
  }

  // What has been written; an object or array that has not ended is still open in it.
  std::string Take() && { return std::move(text_); }

 private:
  void Begin(char bracket);
  void End(char bracket);
  void Literal(std::string_view literal);
  void Separate();
  void BreakLine();

  std::string text_;
  int depth_ = 0;
  bool isFirst_ = true;  // of its object or array
  bool isNamed_ = false;
};

}  // namespace vexel

#endif  // VEXEL_KIT_REQUEST_JSON_TEXT_H_
