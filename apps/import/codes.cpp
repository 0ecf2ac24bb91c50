#include "codes.h"

#include <vexel/brindle/areastruct.h>

#include <algorithm>
#include <charconv>
#include <optional>

#include "kit/request/error.h"
#include "kit/request/hints.h"
#include "kit/request/values.h"
#include "kit/tables/csv_text.h"
#include "kit/tables/table.h"
#include "loose_form.h"

namespace vexel::import {

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Numbers beyond are texts, so that there is room for codes behind the largest.
constexpr int kLargestNumber = 999'999'999;

// The number that a value of nothing but digits says, as far as it can be a code.
std::optional<int> NumberOf(std::string_view value) {
  if (!std::all_of(value.begin(), value.end(), IsDigit)) return std::nullopt;
  const std::optional<int> number = ParseInt(WithoutZeros(value));
  return number && *number <= kLargestNumber ? number : std::nullopt;
}

}  // namespace

bool LevelCodes::Take(const std::string& value, int code) {
  if (!values_.emplace(code, value).second) return false;
  codes_.emplace(value, code);
  return true;
}

void LevelCodes::Keep(const std::string& value, int code) {
  const auto known = codes_.find(value);
  if (known != codes_.end() && known->second == code) return;
  if (known != codes_.end()) {
    throw Failed(Quoted(value) + " has two codes, " + std::to_string(known->second) + " and " +
                 std::to_string(code));
  }
  if (!Take(value, code)) {
    throw Failed("the code " + std::to_string(code) + " belongs to both " +
                 Quoted(values_.at(code)) + " and " + Quoted(value));
  }
}

// A value of an earlier import that comes with other zeros in front now keeps its code.
void LevelCodes::FollowZeros(const std::set<std::string>& values) {
  std::map<int, std::string> gone;  // by the number that they say
  for (const auto& [value, code] : codes_) {
    const std::optional<int> number = NumberOf(value);
    if (number && !values.contains(value)) gone.emplace(*number, value);
  }
  for (const std::string& value : values) {
    const std::optional<int> number = NumberOf(value);
    if (!number || codes_.contains(value)) continue;
    const auto before = gone.find(*number);
    if (before == gone.end()) continue;
    const int code = codes_.at(before->second);
    codes_.erase(before->second);
    codes_.emplace(value, code);
    values_[code] = value;
    gone.erase(before);
  }
}

void LevelCodes::Assign(const std::set<std::string>& values) {
  FollowZeros(values);
  std::vector<std::string> texts;
  std::vector<std::string> padded;
  const auto take = [&](const std::string& value) {
    const std::optional<int> number = NumberOf(value);
    if (Take(value, *number)) return;
    const std::string& other = values_.at(*number);
    if (NumberOf(other) == number) {
      alike_.push_back(Quoted(other) + " and " + Quoted(value));
    } else {
      displaced_.push_back(value);
    }
    texts.push_back(value);
  };
  for (const std::string& value : values) {
    if (codes_.contains(value)) continue;
    if (!NumberOf(value)) {
      texts.push_back(value);
    } else if (WithoutZeros(value).size() < value.size()) {
      padded.push_back(value);
    } else {
      take(value);
    }
  }
  for (const std::string& value : padded) take(value);

  std::sort(texts.begin(), texts.end());
  int next = 1;
  if (!values_.empty() && values_.rbegin()->first <= kLargestNumber) {
    next = std::max(values_.rbegin()->first, 0) + 1;
  }
  for (const std::string& text : texts) {
    while (!Take(text, next)) ++next;
    ++next;
  }
}

std::string KeysText(const std::vector<KeyRow>& rows) {
  std::string text = "level,key,value,code,name\n";
  for (const KeyRow& row : rows) {
    std::string key;
    for (const int code : row.key) key.append(key.empty() ? "" : ",").append(std::to_string(code));
    text.append(std::to_string(row.key.size())).append(",");
    AppendCsv(text, key);
    text += ',';
    AppendCsv(text, row.value);
    text.append(",").append(std::to_string(row.key.back())).append(",");
    AppendCsv(text, row.name);
    text += '\n';
  }
  return text;
}

std::vector<KeyRow> ReadKeys(const std::string& path) {
  TableOptions options;
  options.encoding = Encoding::utf8;
  options.separator = ',';
  const Table table = ReadTable(path, options);
  const auto column = [&](std::string_view name) {
    try {
      return table.FindColumn(name);
    } catch (const Error& error) {
      throw Failed(path, "is no keys file of an import: no column " + Quoted(name));
    }
  };
  const int keyColumn = column("key");
  const int valueColumn = column("value");
  const int nameColumn = column("name");
  std::vector<KeyRow> rows;
  for (int i = 0; i < table.RowCount(); ++i) {
    KeyRow& row = rows.emplace_back();
    for (const std::string_view code : Split(table.Cell(i, keyColumn), ',')) {
      const std::optional<int> number = ParseInt(code);
      if (!number || *number == CAreaStruct::kUnset || row.key.size() >= CAreaStruct::kNumCodes) {
        throw Failed(path, "row " + std::to_string(table.RowNumber(i)) + ": " +
                               Quoted(table.Cell(i, keyColumn)) + " is no key such as 12,3");
      }
      row.key.push_back(*number);
    }
    row.value = table.Cell(i, valueColumn);
    row.name = table.Cell(i, nameColumn);
  }
  return rows;
}

std::vector<LevelCodes> CodesOf(const std::vector<KeyRow>& rows, std::size_t levels,
                                const std::string& path) {
  std::vector<LevelCodes> codes(levels);
  for (const KeyRow& row : rows) {
    if (row.key.size() > levels) {
      throw Failed(path, "has keys of " + std::to_string(row.key.size()) + " levels, and --key " +
                             std::to_string(levels));
    }
    try {
      codes[row.key.size() - 1].Keep(row.value, row.key.back());
    } catch (const Error& error) {
      throw Failed(path, error.what());
    }
  }
  return codes;
}

}  // namespace vexel::import
