// The parts of a path.

#ifndef VEXEL_PLATFORM_PATH_H_
#define VEXEL_PLATFORM_PATH_H_

#include <cstddef>
#include <string_view>

namespace vexel {

struct PathParts {
  std::string_view folder;     // drive and directory, with its closing separator; may be empty
  std::string_view name;       // without folder and extension
  std::string_view extension;  // from the last dot of the name on; may be empty
};

// Splits a path; the parts point into it. Both kinds of separators count, and the colon of a drive.
inline PathParts SplitPath(std::string_view path) noexcept {
  std::size_t folderEnd = path.find_last_of("/\\") + 1;  // 0 when there is none
  if (folderEnd == 0 && path.size() >= 2 && path[1] == ':') folderEnd = 2;
  const std::string_view file = path.substr(folderEnd);
  const std::string_view name = file.substr(0, file.rfind('.'));
  return {path.substr(0, folderEnd), name, file.substr(name.size())};
}

}  // namespace vexel

#endif  // VEXEL_PLATFORM_PATH_H_
