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

namespace {

// One join under way. Rows that match exactly come first, so that a row that is merely near takes
// no area from them.
class Joiner {
 public:
  Joiner(const Table& table, const std::vector<int>& columns,
         const std::vector<Identity>& identities, const std::vector<std::string>& names,
         const JoinRules& rules)
      : table_(table),
        identities_(identities),
        names_(names),
        rules_(rules),
        exact_(identities, rules.numbers ? Form(&NumberForm) : Form(&SameForm)),
        near_(identities, LooseForm),
        rowHints_(names.size()) {
    result_.rowOfArea.assign(names.size(), JoinResult::kNone);
    for (int row = 0; row < table.RowCount(); ++row) texts_.push_back(RowText(table, row, columns));
  }

  JoinResult Run() && {
    std::vector<int> others;
    for (int row = 0; row < table_.RowCount(); ++row) {
      const std::size_t area = exact_.Find(TextOf(row));
      if (area == Lookup::kNowhere) {
        others.push_back(row);
      } else {
        Place(row, area);
      }
    }
    for (const int row : others) PlaceNear(row);
    std::stable_sort(result_.unmatched.begin(), result_.unmatched.end(),
                     [](const Unmatched& a, const Unmatched& b) { return a.number < b.number; });
    AddAreas();
    return std::move(result_);
  }

 private:
  static std::string NumberForm(std::string_view text) { return std::string(WithoutZeros(text)); }
  static std::string SameForm(std::string_view text) { return std::string(text); }

  const std::string& TextOf(int row) const { return texts_[static_cast<std::size_t>(row)]; }

  Unmatched Missed(int row, Unmatched::Kind kind) const {
    return {kind, table_.RowNumber(row), 0, ReadableText(TextOf(row)), "", ""};
  }

  void Place(int row, std::size_t area) {
    if (area == Lookup::kAmbiguous) {
      result_.unmatched.push_back(Missed(row, Unmatched::Kind::ambiguous));
    } else if (result_.rowOfArea[area] != JoinResult::kNone) {
      Unmatched& missed = result_.unmatched.emplace_back(Missed(row, Unmatched::Kind::duplicate));
      missed.area = area;
      missed.name = names_[area];
    } else {
      result_.rowOfArea[area] = row;
      ++result_.matched;
    }
  }

  void PlaceNear(int row) {
    const std::size_t area = near_.Find(TextOf(row));
    const bool isNear = area < names_.size();
    if (isNear && rules_.loose) {
      if (result_.rowOfArea[area] == JoinResult::kNone) ++result_.near;
      Place(row, area);
      return;
    }
    Unmatched& missed = result_.unmatched.emplace_back(Missed(row, Unmatched::Kind::row));
    if (!isNear) return;
    missed.hint = names_[area];
    rowHints_[area] = missed.text;
  }

  // Areas that no row has found.
  void AddAreas() {
    std::vector<const Identity*> identityOf(names_.size(), nullptr);
    for (const Identity& identity : identities_) {
      if (identityOf[identity.area] == nullptr) identityOf[identity.area] = &identity;
    }
    for (std::size_t area = 0; area < names_.size(); ++area) {
      if (identityOf[area] == nullptr || result_.rowOfArea[area] != JoinResult::kNone) continue;
      result_.unmatched.push_back({Unmatched::Kind::area, 0, area,
                                   ReadableText(identityOf[area]->text), names_[area],
                                   rowHints_[area]});
    }
  }

  const Table& table_;
  const std::vector<Identity>& identities_;
  const std::vector<std::string>& names_;
  JoinRules rules_;
  Lookup exact_;
  Lookup near_;
  std::vector<std::string> texts_;     // by which rows look for their areas
  std::vector<std::string> rowHints_;  // rows that nearly mean an area
  JoinResult result_;
};

}  // namespace

JoinResult Join(const Table& table, const std::vector<int>& columns,
                const std::vector<Identity>& identities, const std::vector<std::string>& names,
                const JoinRules& rules) {
  return Joiner(table, columns, identities, names, rules).Run();
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
