// The numbers of a data file: columns of a table, and fields of the areas.

#ifndef VEXEL_APPS_IMPORT_VARIABLES_H_
#define VEXEL_APPS_IMPORT_VARIABLES_H_

#include <string>
#include <vector>

#include "account.h"
#include "join.h"
#include "options.h"
#include "texts.h"

namespace vexel::import {

// The areas that numbers are for, in the order of the map.
struct DataAreas {
  std::vector<std::vector<int>> codes;
  std::vector<std::string> names;
  std::vector<Identity> identities;  // by which rows find them
  bool numbersAlone = false;         // identities are codes, in which zeros in front mean nothing
};

// Reads the table and gives its columns with a value for each area. Adds to `rows` which areas have
// a row, and to the account what did not match and was assumed.
std::vector<DataColumn> TableColumns(const Options& options, const DataAreas& areas,
                                     std::vector<bool>& rows, Account& account);

// Fields of the areas as columns; `texts` has one for each variable and area.
std::vector<DataColumn> FieldColumns(const Options& options, const DataAreas& areas,
                                     const std::vector<std::vector<std::string>>& texts,
                                     std::vector<bool>& rows, Account& account);

}  // namespace vexel::import

#endif  // VEXEL_APPS_IMPORT_VARIABLES_H_
