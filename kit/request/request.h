// What a page is to show, as one value.

#ifndef VEXEL_KIT_REQUEST_REQUEST_H_
#define VEXEL_KIT_REQUEST_REQUEST_H_

#include <vexel/brindle/areastruct.h>
#include <vexel/platform/profile.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "kit/request/values.h"

namespace vexel {

inline constexpr std::string_view kDefaultPalette = "blue";

// The words for bounds of one's own and for what holds without a word.
inline constexpr std::string_view kOwnBounds = "bounds";
inline constexpr std::string_view kDefaultIntervals = "counts";

inline constexpr std::uint32_t kWhite = 0xFFFFFF;

// What stands beside or in a labelled area.
enum class LabelText { name, value, both };

// What only the publication page takes (kit/publish/compose.h); a GIF page has no place for it.
struct VEXEL_API Publication {
  std::optional<std::string> title;  // nothing: the engine's own
  std::string subtitle;
  std::string note;
  std::string source;
  std::vector<std::string> labels;  // keys, names of levels, or kAllAreas
  LabelText labelText = LabelText::name;
  std::optional<std::uint32_t> background = kWhite;  // 0x00BBGGRR; nothing: transparent
  std::optional<std::uint32_t> lineColor;            // nothing: that of the background
  std::optional<double> lineWidth;                   // page pixels; nothing: by the areas' size
  double scale = 1.0;                                // picture pixels for each page pixel
};

// The word for a label on every area that is drawn.
inline constexpr std::string_view kAllAreas = "all";

// What the user has said, not yet what it means for a map: a variable may be a name or a number,
// and what is left open is open. Options, a query, a file of JSON and programs all fill one of
// these; kit/request/parameters.h has the table of its parameters by name.
struct VEXEL_API Request {
  std::string data;  // the map data file; "-" is standard input
  std::string map;   // empty: the one that the data file names

  std::string variable;  // by name or counted from 1; empty: the first
  std::string secondVariable;
  std::optional<int> calculation;  // as CVELAData::SetCalcSelected takes it
  std::optional<CAreaStruct> zoom;
  std::optional<int> level;

  std::optional<int> groups;
  std::string intervals;  // how bounds are found, by name; empty: by what else is said
  std::vector<double> bounds;
  std::vector<std::string> sameBounds;  // variables whose values count for the bounds as well
  bool zeroApart = false;
  std::optional<double> midpoint;
  std::string palette{kDefaultPalette};
  std::vector<std::uint32_t> colors;  // 0x00BBGGRR, in place of a palette
  bool reverse = false;
  std::vector<std::string> groupNames;
  bool legendCounts = false;
  bool openEnds = false;

  PageSize size;
  std::vector<CAreaStruct> outlines;
  std::vector<CAreaStruct> boxes;
  bool noTitle = false;
  bool noLegend = false;
  std::optional<NumberSeparators> separators;  // nothing: those of the host
  Publication publication;
};

// The number of groups and the way of finding their bounds that a request comes to. Throws an Error
// of kind request when what it says does not go together.
struct Grouping {
  int groups = 0;
  std::string_view intervals;
};
VEXEL_API Grouping GroupingOf(const Request& request);

// The number of groups where `groups` is left open: as many as there are bounds or names, else 5.
VEXEL_API int DefaultGroups(const Request& request);

}  // namespace vexel

#endif  // VEXEL_KIT_REQUEST_REQUEST_H_
