// Where the links of a page about a view lead. The pieces of such a page are the same in a server,
// which has an address for every state, and among files, which have some.

#ifndef VEXEL_KIT_SITE_LINKS_H_
#define VEXEL_KIT_SITE_LINKS_H_

#include <vexel/map/map.h>

#include <optional>
#include <string>
#include <string_view>

namespace vexel {

// Each gives an address as it stands in an attribute before escaping; an empty one where there is
// no such page, so that plain text takes the place of the link.
class Links {
 public:
  Links() = default;
  Links(const Links&) = delete;
  Links& operator=(const Links&) = delete;
  virtual ~Links() = default;

  // What is below an area, or below the map for null.
  virtual std::string ToPlace(const CMapOb* area) const = 0;

  // This page with an area that the reader keeps.
  virtual std::string ToRow(const CMapOb& area) const = 0;

  // This page with its table sorted, turned to a page counted from 1, or cut down to a slot of the
  // legend.
  virtual std::string ToSorted(std::string_view sort, bool down) const = 0;
  virtual std::string ToRows(int page) const = 0;
  virtual std::string ToSlot(std::optional<int> slot) const = 0;
};

}  // namespace vexel

#endif  // VEXEL_KIT_SITE_LINKS_H_
