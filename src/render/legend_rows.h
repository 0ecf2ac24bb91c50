// Measures of the legend box, which the layout and the drawing share.

#ifndef VEXEL_RENDER_LEGEND_ROWS_H_
#define VEXEL_RENDER_LEGEND_ROWS_H_

namespace vexel {

inline constexpr int kLegendRowHeight = 20;  // pixels
inline constexpr int kSmallWidth = 6;  // pixels of a character of the font for legend and boxes

}  // namespace vexel

#endif  // VEXEL_RENDER_LEGEND_ROWS_H_
