// The rows of the legend box, as its measures and its drawing both see them.

#ifndef VEXEL_RENDER_LEGEND_ROWS_H_
#define VEXEL_RENDER_LEGEND_ROWS_H_

#include <cstddef>
#include <cstdint>

#include "legend/legend.h"
#include "platform/exceptions.h"
#include "platform/number.h"

namespace vexel {

inline constexpr int kRowHeight = 20;  // pixels
inline constexpr int kSmallWidth = 6;  // pixels of a character of the font for legend and boxes

// One row for each group, and one more for the areas without data when there are any.
inline int NumLegendRows(const CLegend& legend) {
  return SaturateToInt(std::int64_t{legend.numGroups} + (legend.IsMissingData() != 0 ? 1 : 0));
}

// The group of a row. Throws CInvalidArgException for more rows than a legend has groups.
inline const LegendGroup& LegendRow(const CLegend& legend, int row) {
  const auto slot = static_cast<std::size_t>(row == legend.numGroups ? CLegend::kNoDataSlot : row);
  if (slot >= legend.groups.size()) AfxThrowInvalidArgException();
  return legend.groups[slot];
}

inline const CVELAString& LegendRowText(const CLegend& legend, const LegendGroup& group) {
  return legend.useGroupNames != 0 ? group.groupName : group.rangeLabel;
}

}  // namespace vexel

#endif  // VEXEL_RENDER_LEGEND_ROWS_H_
