#include "variables.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <set>
#include <utility>

#include "kit/request/error.h"
#include "kit/request/hints.h"
#include "kit/tables/csv_text.h"
#include "kit/tables/number_cell.h"
#include "kit/tables/numbers.h"
#include "kit/tables/table.h"

namespace vexel::import {

namespace {

// The columns asked for, or all that hold numbers but those of the join.
std::vector<int> ChosenColumns(const Table& table, const std::vector<int>& joined,
                               const Options& options, std::vector<std::string>& leftOut) {
  std::vector<int> columns;
  if (!options.columns.empty()) {
    for (const std::string& name : options.columns) {
      const int column = table.FindColumn(name);
      if (std::find(columns.begin(), columns.end(), column) == columns.end()) {
        columns.push_back(column);
      }
    }
    return columns;
  }
  const NumberOptions numbers{options.decimal, options.missing};
  for (int column = 0; column < table.ColumnCount(); ++column) {
    if (std::find(joined.begin(), joined.end(), column) != joined.end()) continue;
    if (LooksLikeNumbers(table, column, numbers)) {
      columns.push_back(column);
    } else {
      leftOut.push_back(table.Heading(column));
    }
  }
  if (columns.empty()) throw Failed(table.Name(), "has no column of numbers beside the join");
  return columns;
}

// Areas of a level that the table has no row for at all are not missed.
void ForgetOtherLevels(const DataAreas& areas, JoinResult& join) {
  std::set<std::size_t> levels;
  for (std::size_t area = 0; area < areas.codes.size(); ++area) {
    if (join.rowOfArea[area] != JoinResult::kNone) levels.insert(areas.codes[area].size());
  }
  if (levels.empty()) return;
  std::erase_if(join.unmatched, [&](const Unmatched& each) {
    return each.kind == Unmatched::Kind::area && !levels.contains(areas.codes[each.area].size());
  });
}

// The decimal mark of fields, of which some are texts: found as in a table that has them.
DecimalMark MarkOf(const Options& options, const std::vector<std::vector<std::string>>& texts,
                   Account& account) {
  if (options.decimal || texts.empty() || texts.front().empty()) {
    return options.decimal.value_or(DecimalMark::point);
  }
  std::string text = "number";
  std::vector<int> columns;
  for (const std::string& name : options.variables) {
    text += ',';
    AppendCsv(text, name);
    columns.push_back(static_cast<int>(columns.size()) + 1);
  }
  for (std::size_t area = 0; area < texts.front().size(); ++area) {
    text += '\n' + std::to_string(area + 1);
    for (const std::vector<std::string>& field : texts) {
      text += ',';
      AppendCsv(text, field[area]);
    }
  }
  const Table table = ParseTable(std::move(text), "the areas' fields", {Encoding::utf8, ','});
  const NumberFormat format = FindNumberFormat(table, columns, {{}, options.missing});
  account.notes.insert(account.notes.end(), format.notes.begin(), format.notes.end());
  return format.decimal;
}

std::string SeparatorName(char separator) {
  return separator == '\t' ? "tab" : std::string(1, separator);
}

}  // namespace

std::vector<DataColumn> TableColumns(const Options& options, const DataAreas& areas,
                                     std::vector<bool>& rows, Account& account) {
  const Table table = ReadTable(options.table, {options.encoding, options.separator});
  std::vector<int> joined;
  for (const JoinPair& pair : options.join) joined.push_back(table.FindColumn(pair.column));
  DataAccount& data = *account.data;
  const std::vector<int> columns = ChosenColumns(table, joined, options, data.leftOut);
  const NumberFormat format = FindNumberFormat(table, columns, {options.decimal, options.missing});
  JoinResult join =
      Join(table, joined, areas.identities, areas.names, {options.loose, areas.numbersAlone});
  if (join.matched == 0) {
    const Unmatched& first = join.unmatched.front();
    throw Failed(
        options.table,
        "no row finds an area, the first, row " + std::to_string(first.number) + ", looks for " +
            Quoted(first.text) +
            (first.kind == Unmatched::Kind::ambiguous
                 ? ", which names several: join by what is different for each"
             : !first.hint.empty()
                 ? ", which is near " + Quoted(first.hint) + ": --loose joins such rows"
             : areas.identities.empty()
                 ? ""
                 : " where areas are such as " +
                       Quoted(ReadableText(areas.identities.front().text)) + "; look at --join"));
  }
  ForgetOtherLevels(areas, join);

  data.table = options.table;
  data.encoding = NameOf(table.TextEncoding());
  data.separator = SeparatorName(table.Separator());
  data.decimal = format.decimal == DecimalMark::comma ? "comma" : "point";
  data.rows = static_cast<std::size_t>(table.RowCount());
  data.matched = join.matched;
  data.near = join.near;
  const auto tell = [&](const std::vector<std::string>& notes) {
    for (const std::string& note : notes) account.notes.push_back(options.table + ": " + note);
  };
  tell(table.Notes());
  tell(format.notes);

  std::vector<DataColumn> result;
  for (const int column : columns) {
    Variable variable = ReadVariable(table, column, format);
    tell(variable.notes);
    DataColumn& to = result.emplace_back();
    to.name = std::move(variable.name);
    for (const int row : join.rowOfArea) {
      to.values.push_back(row == JoinResult::kNone
                              ? ""
                              : std::move(variable.values[static_cast<std::size_t>(row)]));
    }
  }
  for (std::size_t area = 0; area < rows.size(); ++area) {
    if (join.rowOfArea[area] != JoinResult::kNone) rows[area] = true;
  }
  data.unmatched = std::move(join.unmatched);
  return result;
}

std::vector<DataColumn> FieldColumns(const Options& options, const DataAreas& areas,
                                     const std::vector<std::vector<std::string>>& texts,
                                     std::vector<bool>& rows, Account& account) {
  const DecimalMark decimal = MarkOf(options, texts, account);
  std::vector<DataColumn> result;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    DataColumn& to = result.emplace_back();
    to.name = options.variables[i];
    for (std::size_t area = 0; area < texts[i].size(); ++area) {
      const std::string& text = texts[i][area];
      std::string& value = to.values.emplace_back();
      if (IsMissing(text, options.missing)) continue;
      std::optional<NormalNumber> number = NormalNumberOf(BareNumberOf(text), decimal);
      if (!number) {
        throw Failed("area " + Quoted(areas.names[area]) + ", field " +
                     Quoted(options.variables[i]) + ": " + Quoted(text) +
                     " is no number; add it with --missing, or leave the field out");
      }
      value = std::move(number->text);
      rows[area] = true;
    }
  }
  return result;
}

}  // namespace vexel::import
