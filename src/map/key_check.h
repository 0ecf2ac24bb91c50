// What is odd about the keys of a map that has been read.

#ifndef VEXEL_MAP_KEY_CHECK_H_
#define VEXEL_MAP_KEY_CHECK_H_

#include <span>
#include <string_view>

class CMapOb;

namespace vexel {

// Tells the host of keys that are missing, that do not fit the place of their area in the tree, and
// that several areas have. Looks at the children of `root` from one on and at all below them;
// `lines` holds the line of each of these areas in pre-order. A tree whose groups hold their areas
// in order of their keys is walked once and nothing is allocated.
void RemarkOnKeys(const CMapOb& root, int firstChild, std::span<const int> lines,
                  std::string_view file);

}  // namespace vexel

#endif  // VEXEL_MAP_KEY_CHECK_H_
