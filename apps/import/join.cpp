#include "join.h"

#include <algorithm>
#include <array>
#include <functional>
#include <unordered_map>
#include <utility>

#include "kit/tables/csv_text.h"
#include "loose_form.h"

namespace vexel::import {

namespace {

constexpr char kBetween = '\x1F';

using Form = std::function<std::string(std::string_view)>;

// A form of each value of a joined text.
std::string EachForm(std::string_view joined, const Form& form) {
  std::string result;
  while (true) {
    const std::size_t end = joined.find(kBetween);
    result += form(joined.substr(0, end));
    if (end == std::string_view::npos) return result;
    result += kBetween;
    joined.remove_prefix(end + 1);
  }
}

// Areas by a form of their identities.
class Lookup {
 public:
  static constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);
  static constexpr std::size_t kAmbiguous = kNowhere - 1;

  Lookup(const std::vector<Identity>& identities, Form form) : form_(std::move(form)) {
    for (const Identity& identity : identities) {
      const auto [entry, isNew] = areas_.try_emplace(EachForm(identity.text, form_), identity.area);
      if (!isNew && entry->second != identity.area) entry->second = kAmbiguous;
    }
  }

  // The area of that text, kNowhere or kAmbiguous.
  std::size_t Find(std::string_view text) const {
    const auto found = areas_.find(EachForm(text, form_));
    return found == areas_.end() ? kNowhere : found->second;
  }

 private:
  Form form_;
  std::unordered_map<std::string, std::size_t> areas_;
};

std::string RowText(const Table& table, int row, const std::vector<int>& columns) {
  std::vector<std::string_view> cells;
  cells.reserve(columns.size());
  for (const int column : columns) cells.push_back(table.Cell(row, column));
  return JoinText(cells);
}

}  // namespace

std::string JoinText(const std::vector<std::string_view>& values) {
  std::string text;
  for (const std::string_view& value : values) {
    if (&value != values.data()) text += kBetween;
    text += value;
  }
  return text;
}

std::string ReadableText(std::string_view joined) {
  std::string text;
  for (const char c : joined) {
    if (c == kBetween) {
      text += ", ";
    } else {
      text += c;
    }
  }
  return text;
}

JoinResult Join(const Table& table, const std::vector<int>& columns,
                const std::vector<Identity>& identities, const std::vector<std::string>& names,
                const JoinRules& rules) {
  const Form zeros = [](std::string_view text) { return std::string(WithoutZeros(text)); };
  const Form same = [](std::string_view text) { return std::string(text); };
  const Lookup exact(identities, rules.numbers ? zeros : same);
  const Lookup loose(identities, LooseForm);
  JoinResult result;
  result.rowOfArea.assign(names.size(), JoinResult::kNone);
  std::vector<std::string> rowHints(names.size());  // rows that nearly mean an area
  for (int row = 0; row < table.RowCount(); ++row) {
    const std::string text = RowText(table, row, columns);
    std::size_t area = exact.Find(text);
    const std::size_t near = area == Lookup::kNowhere ? loose.Find(text) : Lookup::kNowhere;
    if (rules.loose && area == Lookup::kNowhere) area = near;
    Unmatched missed{Unmatched::Kind::row, table.RowNumber(row), 0, ReadableText(text), "", ""};
    if (area == Lookup::kAmbiguous) {
      missed.kind = Unmatched::Kind::ambiguous;
    } else if (area == Lookup::kNowhere) {
      if (near < names.size()) {
        missed.hint = names[near];
        rowHints[near] = missed.text;
      }
    } else if (result.rowOfArea[area] != JoinResult::kNone) {
      missed.kind = Unmatched::Kind::duplicate;
      missed.area = area;
      missed.name = names[area];
    } else {
      result.rowOfArea[area] = row;
      ++result.matched;
      continue;
    }
    result.unmatched.push_back(std::move(missed));
  }

  std::vector<const Identity*> identityOf(names.size(), nullptr);
  for (const Identity& identity : identities) {
    if (identityOf[identity.area] == nullptr) identityOf[identity.area] = &identity;
  }
  for (std::size_t area = 0; area < names.size(); ++area) {
    if (identityOf[area] == nullptr || result.rowOfArea[area] != JoinResult::kNone) continue;
    result.unmatched.push_back({Unmatched::Kind::area, 0, area,
                                ReadableText(identityOf[area]->text), names[area], rowHints[area]});
  }
  return result;
}

std::string UnmatchedText(const std::vector<Unmatched>& unmatched) {
  constexpr std::array<std::string_view, 4> kKinds{
      "row without area", "area without row", "further row of an area", "row for several areas"};
  std::string text = "what,row,value,area,near\n";
  for (const Unmatched& each : unmatched) {
    text.append(kKinds[static_cast<std::size_t>(each.kind)]).append(",");
    if (each.number != 0) text += std::to_string(each.number);
    for (const std::string* cell : {&each.text, &each.name, &each.hint}) {
      text += ',';
      AppendCsv(text, *cell);
    }
    text += '\n';
  }
  return text;
}

}  // namespace vexel::import
