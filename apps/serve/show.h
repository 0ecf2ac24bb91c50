// What the viewer shows, as an address says it: "/us-counties/48?var=4&level=2&sort=value".

#ifndef VEXEL_APPS_SERVE_SHOW_H_
#define VEXEL_APPS_SERVE_SHOW_H_

#include <vexel/brindle/areastruct.h>
#include <vexel/platform/geometry.h>

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "kit/request/request.h"

namespace vexel::serve {

// What the table can be sorted by.
inline constexpr std::array<std::string_view, 3> kSorts{"name", "value", "parent"};

// One state of the page of a data set. Files are never part of it: `request.data` is empty until
// the server knows the set.
struct Show {
  std::string set;   // the name of the data set, decoded
  Request request;   // with the area of the path as its zoom
  std::string with;  // a second variable to compare, by name or number; empty: none

  // The table.
  std::string sort;                 // one of kSorts; empty: the order of the map
  bool down = false;                // from the greatest to the least
  std::string find;                 // text within names
  std::optional<int> in;            // only areas of this slot of the legend
  int rows = 1;                     // page of the table
  std::optional<CAreaStruct> area;  // that the reader keeps; its row decides on the page

  // What the address says that cannot be: sentences for the reader.
  std::vector<std::string> problems;
};

// What of a state is asked for.
enum class Part { page, gif, svg, png, pdf, csv, report, outlines, at, go };

enum class Way { left, right, up, down };

struct Target {
  Show show;
  Part part = Part::page;

  // Of `at` and `go`: a pixel of the picture, or an area, or the neighbour of an area that way.
  std::optional<CPoint> pixel;
  std::optional<CAreaStruct> key;
  std::optional<Way> way;
};

// Reads the path and the query of an address below the base path; any bytes will do. A value that
// cannot be is passed over and told in `problems`. Nothing for a path that no state can have: one
// without a data set, with a part that there is none of, or an area of more codes than there are
// levels.
std::optional<Target> ReadTarget(std::string_view target);

// The normal form, below the base path: what holds anyway is left out, and equal states give equal
// text. A part leaves out what it does not depend on; the page reads back as the same state.
std::string AddressOf(const Show& show, Part part = Part::page);

}  // namespace vexel::serve

#endif  // VEXEL_APPS_SERVE_SHOW_H_
