// What an import tells of itself.

#ifndef VEXEL_APPS_IMPORT_ACCOUNT_H_
#define VEXEL_APPS_IMPORT_ACCOUNT_H_

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "flaws.h"
#include "join.h"

namespace vexel::import {

struct SourceAccount {
  std::string file;
  std::string format;
  std::string layer;
  std::size_t features = 0;
};

struct LevelAccount {
  std::string name;
  std::size_t areas = 0;
};

// The map, unless only a data file is made.
struct MapAccount {
  std::string file;
  bool inDegrees = false;
  std::vector<LevelAccount> levels;
  std::size_t rings = 0;
  std::size_t vertices = 0;
  std::size_t verticesBefore = 0;  // before they were simplified; the same when they were not
  std::size_t dissolved = 0;
  std::size_t hidden = 0;              // areas in holes that a GIF page paints over
  std::vector<std::string> bare;       // areas without an outline
  std::vector<std::string> alike;      // values that differ in zeros in front
  std::vector<std::string> displaced;  // numbers that got another code
  Flaws flaws;
};

struct DataAccount {
  std::string file;
  std::string table;
  std::string unmatchedFile;
  std::string encoding;
  std::string separator;
  std::string decimal;
  std::size_t rows = 0;
  std::size_t matched = 0;
  std::size_t near = 0;   // of those, rows that did not match to the letter
  std::size_t areas = 0;  // that have a row
  std::vector<std::string> variables;
  std::vector<std::string> leftOut;  // columns that hold no numbers
  std::vector<Unmatched> unmatched;

  std::size_t Count(Unmatched::Kind kind) const;
};

struct Account {
  std::vector<SourceAccount> sources;
  std::optional<MapAccount> map;
  std::optional<DataAccount> data;
  std::vector<std::string> notes;  // what was assumed
  std::vector<std::string> files;  // that were written

  // Whether anything was lost, repaired or did not match.
  bool HasLoss() const;
};

// The account as lines for a person.
std::vector<std::string> AccountLines(const Account& account);

// The whole account as JSON.
std::string AccountJson(const Account& account);

}  // namespace vexel::import

#endif  // VEXEL_APPS_IMPORT_ACCOUNT_H_
