#include "kit/request/json_request.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <nlohmann/json.hpp>
#include <vector>

#include "kit/request/error.h"
#include "kit/request/hints.h"
#include "kit/request/json_text.h"
#include "kit/request/parameters.h"

namespace vexel {

namespace {

using Json = nlohmann::json;

// Goes through a text and knows where it is, which the parser does not tell.
class LineCounter {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = const char&;

  LineCounter(const char* at, int* line) : at_(at), line_(line) {}
  const char& operator*() const { return *at_; }
  LineCounter& operator++() {
    if (*at_++ == '\n') ++*line_;
    return *this;
  }
  friend bool operator==(const LineCounter& a, const LineCounter& b) { return a.at_ == b.at_; }

 private:
  const char* at_;
  int* line_;
};

// What a value of JSON is called in a message.
enum class Shape { flag, number, text, array };

// Takes the members of one object as the parser meets them; whatever does not belong there ends it.
class RequestReader : public nlohmann::json_sax<Json> {
 public:
  RequestReader(Request& request, const int& line, std::string file)
      : request_(request), line_(line), file_(std::move(file)) {}

  bool null() override { Refuse("is null; leave it out"); }
  bool boolean(bool value) override { return Take(value ? "1" : "0", Shape::flag); }
  bool number_integer(number_integer_t value) override {
    return Take(std::to_string(value), Shape::number);
  }
  bool number_unsigned(number_unsigned_t value) override {
    return Take(std::to_string(value), Shape::number);
  }
  bool number_float(number_float_t value, const string_t& /*written*/) override {
    return Take(NumberText(value), Shape::number);
  }
  bool string(string_t& value) override { return Take(value, Shape::text); }
  bool binary(binary_t& /*value*/) override { Refuse("holds binary data"); }

  bool start_object(std::size_t /*size*/) override {
    if (isOpen_) Refuse("is an object where a value should be");
    isOpen_ = true;
    return true;
  }
  bool end_object() override {
    // In the order of the table, whatever that of the text is.
    std::stable_sort(members_.begin(), members_.end(),
                     [](const Member& a, const Member& b) { return a.parameter < b.parameter; });
    std::for_each(members_.begin(), members_.end(), [this](const Member& member) { Set(member); });
    return true;
  }

  bool key(string_t& name) override {
    name_ = name;
    try {
      parameter_ = &ParameterNamed(name);
    } catch (const Error& error) {
      throw Failed(Place(), error.what());
    }
    if (std::find(seen_.begin(), seen_.end(), parameter_) != seen_.end()) {
      throw Failed(Place(), Quoted(name_) + " stands there twice");
    }
    seen_.push_back(parameter_);
    return true;
  }

  bool start_array(std::size_t /*size*/) override {
    if (!isOpen_) Refuse("is no object of parameters");
    const bool isNested = depth_ == 1 && parameter_->kind == ParameterKind::repeated;
    if (!TakesArrays() || (depth_ > 0 && !isNested))
      Refuse("is an array where one value should be");
    if (depth_++ == 0) values_.clear();
    if (isNested) codes_.clear();
    return true;
  }

  bool end_array() override {
    if (--depth_ == 1) {
      values_.push_back(CodesText());
    } else if (parameter_->kind == ParameterKind::key) {
      values_.assign(1, CodesText());
      Finish();
    } else {
      Finish();
    }
    return true;
  }

  bool parse_error(std::size_t /*position*/, const std::string& /*token*/,
                   const nlohmann::detail::exception& error) override {
    // Of "[json.exception...] parse error at line 1, column 2: syntax error ..." what is behind the
    // library's name and its own place.
    std::string_view text = error.what();
    text.remove_prefix(std::min(text.find("] ") + 2, text.size()));
    if (text.starts_with("parse error at")) {
      text.remove_prefix(std::min(text.find(": ") + 2, text.size()));
    }
    throw Failed(Place(), "no JSON: " + std::string(text));
  }

 private:
  std::string Place() const { return file_ + ':' + std::to_string(line_); }

  [[noreturn]] void Refuse(const std::string& what) const {
    throw Failed(Place(),
                 (isOpen_ && parameter_ != nullptr ? Quoted(name_) : "the text") + ' ' + what);
  }

  bool TakesArrays() const {
    return parameter_->kind == ParameterKind::key || TakesSeveral(parameter_->kind);
  }

  // Codes of an area stand one level below the areas, or alone.
  bool TakesCodes() const {
    return depth_ == 2 || (depth_ == 1 && parameter_->kind == ParameterKind::key);
  }

  bool Take(const std::string& value, Shape shape) {
    if (!isOpen_) Refuse("is no object of parameters");
    CheckShape(shape);
    if (TakesCodes()) {
      codes_.push_back(value);
    } else if (depth_ > 0) {
      values_.push_back(value);
    } else {
      values_.assign(1, value);
      Finish();
    }
    return true;
  }

  void CheckShape(Shape shape) const {
    const bool isFlag = parameter_->kind == ParameterKind::flag;
    const bool isNumber = parameter_->kind == ParameterKind::number;
    if (isFlag != (shape == Shape::flag)) Refuse(isFlag ? "is true or false" : "is no truth value");
    if (isNumber && shape != Shape::number) Refuse("is a number, without quotes");
    if (parameter_->kind == ParameterKind::choice && shape != Shape::text) Refuse("is a text");
    if (TakesCodes() && shape != Shape::number) Refuse("has codes that are whole numbers");
  }

  std::string CodesText() {
    std::string text;
    for (const std::string& code : codes_) text += (text.empty() ? "" : ",") + code;
    codes_.clear();
    return text;
  }

  struct Member {
    const Parameter* parameter;
    std::vector<std::string> values;
    std::string place;
  };

  void Finish() { members_.push_back({parameter_, std::move(values_), Place()}); }

  void Set(const Member& member) {
    const std::vector<std::string_view> views(member.values.begin(), member.values.end());
    try {
      SetParameter(request_, *member.parameter, views, Quoted(member.parameter->name));
    } catch (const Error& error) {
      throw Failed(member.place, error.what());
    }
  }

  Request& request_;
  const int& line_;
  std::string file_;
  bool isOpen_ = false;
  int depth_ = 0;  // of arrays
  std::string name_;
  const Parameter* parameter_ = nullptr;
  std::vector<const Parameter*> seen_;
  std::vector<Member> members_;
  std::vector<std::string> values_;
  std::vector<std::string> codes_;
};

// One value as JSON has it.
std::string JsonValue(const Parameter& parameter, const std::string& value) {
  std::string text;
  const bool isNumber = [&] {
    if (parameter.kind == ParameterKind::number) return true;
    if (parameter.kind != ParameterKind::list) return false;
    const Json parsed = Json::parse(value, nullptr, false);
    return parsed.is_number() && NumberText(parsed.get<double>()) == value;
  }();
  switch (parameter.kind) {
    case ParameterKind::flag:
      return "true";
    case ParameterKind::key:
    case ParameterKind::repeated:
      return '[' + value + ']';
    default:
      if (isNumber) return value;
      AppendJson(text, std::string_view(value));
      return text;
  }
}

}  // namespace

std::string JsonText(const Request& request, std::string_view indent) {
  std::string text = "{";
  const char* between = "\n";
  for (const Parameter& parameter : AllParameters()) {
    const std::vector<std::string> values = parameter.get(request);
    if (values.empty()) continue;
    const bool isArray = TakesSeveral(parameter.kind);
    std::string all;
    for (const std::string& value : values) {
      all += (all.empty() ? "" : ", ") + JsonValue(parameter, value);
    }
    text.append(between).append(indent).append("  \"").append(parameter.name).append("\": ");
    text += isArray ? '[' + all + ']' : all;
    between = ",\n";
  }
  if (text.size() > 1) text.append("\n").append(indent);
  return text + '}';
}

void ReadJson(Request& request, std::string_view text, const std::string& file) {
  int line = 1;
  RequestReader reader(request, line, file);
  Json::sax_parse(LineCounter(text.data(), &line), LineCounter(text.data() + text.size(), &line),
                  &reader);
}

}  // namespace vexel
