// The files that an import makes, as texts.

#ifndef VEXEL_APPS_IMPORT_TEXTS_H_
#define VEXEL_APPS_IMPORT_TEXTS_H_

#include <cstddef>
#include <string>
#include <vector>

#include "areas.h"

namespace vexel::import {

// A text map. Coordinates have the digits that it takes to read the same floats again.
std::string MapText(const AreaTree& tree, const std::string& name,
                    const std::vector<std::string>& levels, bool inDegrees);

struct DataColumn {
  std::string name;
  std::vector<std::string> values;  // with a point before decimals; empty where there is none
};

struct DataRow {
  std::vector<int> codes;
  std::size_t index = 0;  // of its values in the columns
};

// A data file for the map of that name.
std::string DataText(const std::string& mapFile, const std::vector<std::string>& levels,
                     const std::vector<DataRow>& rows, const std::vector<DataColumn>& columns);

}  // namespace vexel::import

#endif  // VEXEL_APPS_IMPORT_TEXTS_H_
