// Where the parts of a map page stand. All measures are pixels unless said otherwise.

#ifndef VEXEL_RENDER_LAYOUT_H_
#define VEXEL_RENDER_LAYOUT_H_

#include "platform/geometry.h"

namespace vexel {

// Of the legend box: the layout measures what the drawing draws.
inline constexpr int kLegendRowHeight = 20;
inline constexpr int kSmallWidth = 6;  // a character of the font for legend and boxes

struct Size {
  int width = 0;
  int height = 0;
};

// Rectangles with y growing downward.
struct PageLayout {
  CRect title;  // top and bottom only
  CRect map;
  CRect legend;
};

// Lays out a page: the title band at the top, the map, and the legend below a wide map or beside a
// tall one. `extent` is the size, in any unit, of what is to fill the map; its proportions are
// kept. Where the legend does not fit, the map moves, and then shrinks. Sizes may be any ints:
// nothing overflows, but what comes out for a page smaller than its margins has no meaning.
PageLayout LayOut(const Size& page, const Size& extent, const Size& legend);

}  // namespace vexel

#endif  // VEXEL_RENDER_LAYOUT_H_
