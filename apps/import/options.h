// What the command line of an import asks for.

#ifndef VEXEL_APPS_IMPORT_OPTIONS_H_
#define VEXEL_APPS_IMPORT_OPTIONS_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "kit/tables/encoding.h"
#include "kit/tables/numbers.h"

namespace vexel::import {

// One level's part of a key: a field, or its first characters.
struct KeyPart {
  std::string field;
  std::size_t length = 0;  // 0 for all of it
};

// A column of a table and the field that holds the same.
struct JoinPair {
  std::string column;
  std::string field;
};

struct Options {
  std::vector<std::string> sources;
  std::vector<std::string> layers;                           // one for each source, or none
  std::vector<std::vector<KeyPart>> keys;                    // likewise; one counts for all
  std::vector<std::string> nameFields;                       // likewise
  std::vector<std::string> levels;                           // names
  std::vector<std::pair<std::string, std::string>> namesOf;  // of a level: the field
  std::string mapName;
  std::string keysFile;
  bool dissolve = true;

  std::string sourceCrs;
  std::string crs;
  double tolerance = 0.0;

  std::string table;
  std::vector<JoinPair> join;
  bool loose = false;
  std::vector<std::string> columns;    // of the table; none for all that hold numbers
  std::vector<std::string> variables;  // fields
  std::optional<Encoding> encoding;
  std::optional<char> separator;
  std::optional<DecimalMark> decimal;
  std::vector<std::string> missing;

  std::string map;     // one that is there
  std::string output;  // the path of the files without their extensions
  bool compile = false;
  bool force = false;
  bool strict = false;
  bool json = false;
  bool quiet = false;
};

// Reads the command line, whose first argument is the program. False when help was asked for, which
// has been printed then. Throws an Error of kind request.
bool ReadOptions(Options& options, int argc, const char* const* argv);

// "STATE,COUNTY" or "geoid:2,geoid".
std::vector<KeyPart> ParseKeyParts(std::string_view text);

// "fips=id,year=year"; a name alone stands for both.
std::vector<JoinPair> ParseJoin(std::string_view text);

}  // namespace vexel::import

#endif  // VEXEL_APPS_IMPORT_OPTIONS_H_
