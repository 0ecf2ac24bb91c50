#include "kit/request/query.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <system_error>
#include <utility>

#include "kit/request/error.h"
#include "kit/request/hints.h"
#include "kit/request/parameters.h"

namespace vexel {

namespace {

constexpr bool IsUnreserved(char c) {
  const bool isAlphanumeric =
      (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
  return isAlphanumeric || c == '-' || c == '.' || c == '_' || c == '~';
}

// The key of an area, or what may be one, keeps its commas, which are no list's.
std::string Encoded(const Parameter& parameter, const std::string& value) {
  const bool isKey = parameter.kind == ParameterKind::key || IsRepeated(parameter.kind);
  return PercentEncoded(value, isKey ? "," : "");
}

void Append(std::string& query, const Parameter& parameter, const std::string& value) {
  query += query.empty() ? "" : "&";
  query.append(parameter.name).append("=").append(value);
}

// The values of a parameter as they stand in a query, decoded.
std::vector<std::string> ValuesIn(const Parameter& parameter,
                                  const std::vector<std::string_view>& texts) {
  std::vector<std::string> values;
  if (IsRepeated(parameter.kind)) {
    for (const std::string_view text : texts) values.push_back(PercentDecoded(text));
  } else if (parameter.kind == ParameterKind::list) {
    for (const std::string_view part : Split(texts.back(), ',')) {
      values.push_back(PercentDecoded(part));
    }
  } else {
    values.push_back(PercentDecoded(texts.back()));
  }
  return values;
}

void Set(Request& request, const std::string& name, const std::vector<std::string_view>& texts) {
  const Parameter& parameter = ParameterNamed(name);
  if (parameter.isFile) throw WrongRequest(name + ": a file cannot be named in an address");
  const std::vector<std::string> values = ValuesIn(parameter, texts);
  const std::vector<std::string_view> views(values.begin(), values.end());
  SetParameter(request, parameter, views, name);
}

}  // namespace

std::string QueryText(const Request& request) {
  std::string query;
  for (const Parameter& parameter : AllParameters()) {
    if (parameter.isFile) continue;
    const std::vector<std::string> values = parameter.get(request);
    if (parameter.kind != ParameterKind::list) {
      for (const std::string& value : values) Append(query, parameter, Encoded(parameter, value));
      continue;
    }
    std::string list;
    for (const std::string& value : values) {
      list += (&value == values.data() ? "" : ",") + Encoded(parameter, value);
    }
    if (!values.empty()) Append(query, parameter, list);
  }
  return query;
}

void ReadQuery(Request& request, std::string_view query, std::vector<std::string>* problems) {
  if (query.starts_with('?')) query.remove_prefix(1);
  std::vector<std::pair<std::string, std::vector<std::string_view>>> said;
  for (const std::string_view part : Split(query, '&')) {
    if (part.empty()) continue;
    const std::size_t equals = std::min(part.find('='), part.size());
    const std::string name = PercentDecoded(part.substr(0, equals));
    const std::string_view value = part.substr(std::min(equals + 1, part.size()));
    const auto found = std::find_if(said.begin(), said.end(),
                                    [&](const auto& each) { return each.first == name; });
    if (found == said.end()) {
      said.push_back({name, {value}});
    } else {
      found->second.push_back(value);
    }
  }
  const auto place = [](const auto& each) {
    const auto all = AllParameters();
    return std::find_if(all.begin(), all.end(),
                        [&](const Parameter& known) { return known.name == each.first; });
  };
  std::stable_sort(said.begin(), said.end(),
                   [=](const auto& a, const auto& b) { return place(a) < place(b); });
  for (const auto& [name, texts] : said) {
    try {
      Set(request, name, texts);
    } catch (const Error& error) {
      if (problems == nullptr) throw;
      problems->push_back(error.what());
    }
  }
}

std::string PercentEncoded(std::string_view text, std::string_view kept) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string encoded;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (IsUnreserved(c) || kept.find(c) != std::string_view::npos) {
      encoded += c;
    } else {
      encoded += {'%', kDigits[byte >> 4U], kDigits[byte & 0xFU]};
    }
  }
  return encoded;
}

std::string PercentDecoded(std::string_view text) {
  constexpr int kHex = 16;
  std::string decoded;
  for (std::size_t i = 0; i < text.size(); ++i) {
    unsigned byte = 0;
    const char* const code = text.data() + i + 1;
    if (text[i] == '%' && i + 2 < text.size() &&
        std::from_chars(code, code + 2, byte, kHex).ptr == code + 2) {
      decoded += static_cast<char>(byte);
      i += 2;
    } else {
      decoded += text[i] == '+' ? ' ' : text[i];
    }
  }
  return decoded;
}

}  // namespace vexel
