// Which row of a table belongs to which area.

#ifndef VEXEL_APPS_IMPORT_JOIN_H_
#define VEXEL_APPS_IMPORT_JOIN_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "kit/tables/table.h"

namespace vexel::import {

// An area under one of the texts by which rows may mean it.
struct Identity {
  std::string text;  // of several columns joined by JoinText
  std::size_t area;
};

// The text for several values.
std::string JoinText(const std::vector<std::string_view>& values);

// The same as users read it: "51, 610".
std::string ReadableText(std::string_view joined);

struct JoinRules {
  bool loose = false;    // letter case, accents, punctuation and zeros in front do not matter
  bool numbers = false;  // zeros in front do not matter
};

// A row without an area, an area without a row, or a row for an area that has one.
struct Unmatched {
  enum class Kind { row, area, duplicate, ambiguous };

  Kind kind;
  int number = 0;        // of the row in the table, as a spreadsheet shows it; 0 for an area
  std::size_t area = 0;  // of an area and of a duplicate: its index
  std::string text;      // by which it was looked for
  std::string name;      // of the area
  std::string hint;      // what is nearly the same on the other side
};

struct JoinResult {
  static constexpr int kNone = -1;

  std::vector<int> rowOfArea;  // kNone where there is none
  std::size_t matched = 0;     // rows
  std::size_t near = 0;        // of those, rows that did not match to the letter
  std::vector<Unmatched> unmatched;
};

// Finds the area of each row by its cells in `columns`. The first of several rows for one area
// counts. Each of `names` is that of an area; areas without an identity are not looked for.
JoinResult Join(const Table& table, const std::vector<int>& columns,
                const std::vector<Identity>& identities, const std::vector<std::string>& names,
                const JoinRules& rules);

// All that did not match, as a table with commas.
std::string UnmatchedText(const std::vector<Unmatched>& unmatched);

}  // namespace vexel::import

#endif  // VEXEL_APPS_IMPORT_JOIN_H_
