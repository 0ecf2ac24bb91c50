#include "kit/request/arguments.h"

#include <algorithm>

#include "kit/request/parameters.h"

namespace vexel {

namespace {

// A value that begins like an option goes into the same word as its own.
void AppendOption(std::vector<std::string>& words, const Parameter& parameter,
                  const std::string& value) {
  const std::string name = "--" + std::string(parameter.name);
  if (value.starts_with('-') || value.empty()) {
    words.push_back(name + '=' + value);
  } else {
    words.insert(words.end(), {name, value});
  }
}

bool IsPlain(char c) {
  constexpr std::string_view kPlain = "-_./,:=+@%";
  const bool isAlphanumeric =
      (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
  return isAlphanumeric || kPlain.find(c) != std::string_view::npos;
}

std::string Quoted(const std::string& word) {
  if (!word.empty() && std::all_of(word.begin(), word.end(), IsPlain)) return word;
  std::string quoted = "'";
  for (const char c : word) {
    if (c == '\'') {
      quoted += R"('\'')";
    } else {
      quoted += c;
    }
  }
  return quoted + '\'';
}

}  // namespace

std::vector<std::string> ArgumentsFor(const Request& request) {
  std::vector<std::string> words;
  if (!request.data.empty()) {
    const bool isLikeOption = request.data.starts_with('-') && request.data != "-";
    words.push_back((isLikeOption ? "./" : "") + request.data);
  }
  for (const Parameter& parameter : AllParameters()) {
    if (parameter.group == ParameterGroup::source) continue;
    const std::vector<std::string> values = parameter.get(request);
    if (values.empty()) continue;
    if (parameter.kind == ParameterKind::flag) {
      words.push_back("--" + std::string(parameter.name));
    } else if (parameter.kind == ParameterKind::list) {
      std::string list = values.front();
      std::for_each(values.begin() + 1, values.end(),
                    [&](const std::string& value) { list.append(",").append(value); });
      AppendOption(words, parameter, list);
    } else {
      for (const std::string& value : values) AppendOption(words, parameter, value);
    }
  }
  return words;
}

std::string ShellText(std::span<const std::string> words) {
  std::string text;
  for (const std::string& word : words) text.append(text.empty() ? "" : " ").append(Quoted(word));
  return text;
}

}  // namespace vexel
