// Reading the files of areas of an import into one tree.

#ifndef VEXEL_APPS_IMPORT_SOURCES_H_
#define VEXEL_APPS_IMPORT_SOURCES_H_

#include <functional>
#include <string>
#include <vector>

#include "account.h"
#include "areas.h"
#include "join.h"
#include "options.h"

namespace vexel::import {

// Called with how much of the reading is done, from 0 to 100.
using Progress = std::function<void(int percent)>;

// What the files have come to.
struct SourceAreas {
  AreaTree tree;
  std::vector<std::string> levels;
  std::vector<KeyRow> earlierKeys;  // of the keys file that was read
  bool inDegrees = false;
  std::vector<Identity> identities;                 // by the fields of the join
  std::vector<std::vector<std::string>> variables;  // for each of the options, a text for each area
};

// Reads all files, and adds to the account what was found. Throws an Error.
SourceAreas ReadSources(const Options& options, Account& account, const Progress& progress);

}  // namespace vexel::import

#endif  // VEXEL_APPS_IMPORT_SOURCES_H_
