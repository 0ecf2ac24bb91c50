// Loading maps and data files, with a clear line for everything that can be wrong with them.

#ifndef VEXEL_APPS_VEXEL_LOAD_H_
#define VEXEL_APPS_VEXEL_LOAD_H_

#include <string>
#include <string_view>

#include "data/dataset.h"
#include "host.h"
#include "map/map.h"

namespace vexel::cli {

// True when the library takes a file of that name for a compiled map.
bool IsCompiledName(std::string_view path);

// Loads a text or compiled map; `loadFloats` also reads the map units of a compiled one.
void LoadMap(CVELAMap& map, const std::string& path, int loadFloats, CliHost& host);

// Loads a data file, or what standard input holds, and its map: the one given, or else the one
// that the data file names. Standard input names its map from the working folder. The set must be
// linked to the map, whose areas know their rows afterwards.
void LoadData(CVELAData& data, const std::string& path, const std::string& mapPath, CliHost& host);

}  // namespace vexel::cli

#endif  // VEXEL_APPS_VEXEL_LOAD_H_
