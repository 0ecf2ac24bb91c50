// Loading maps and data files, with a clear line for everything that can be wrong with them.

#ifndef VEXEL_KIT_VIEW_LOAD_H_
#define VEXEL_KIT_VIEW_LOAD_H_

#include <vexel/data/dataset.h>
#include <vexel/map/map.h>

#include <string>
#include <string_view>
#include <vector>

#include "kit/view/listener.h"

namespace vexel {

// True when the library takes a file of that name for a compiled map.
VEXEL_API bool IsCompiledName(std::string_view path);

// The files of which the newer is the map that a data file names; none when it names none.
VEXEL_API std::vector<std::string> MapFilesOf(const std::string& path);

// Loads a text or compiled map; `loadFloats` also reads the map units of a compiled one. The
// listener must be the current host. Throws an Error of kind failure.
VEXEL_API void LoadMap(CVELAMap& map, const std::string& path, int loadFloats, Listener& host);

// Loads a data file, or what standard input holds, and its map: the one given, or else the one
// that the data file names. Standard input names its map from the working folder. The set must be
// linked to the map, whose areas know their rows afterwards.
VEXEL_API void LoadData(CVELAData& data, const std::string& path, const std::string& mapPath,
                        Listener& host);

}  // namespace vexel

#endif  // VEXEL_KIT_VIEW_LOAD_H_
