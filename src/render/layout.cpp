#include "render/layout.h"

#include <algorithm>
#include <cstdint>

#include "render/scale.h"

namespace vexel {

namespace {

using Wide = std::int64_t;  // sums of pixels, which an odd page size may carry beyond an int

constexpr int kMargin = 10;
constexpr int kTitleHeight = 20;
constexpr int kMapTop = kTitleHeight + kMargin;
constexpr int kThousandths = 1000;

CRect Moved(const CRect& rect, Wide dx, Wide dy) {
  return MakeRect(rect.left + dx, rect.top + dy, rect.right + dx, rect.bottom + dy);
}

Size SizeOf(const CRect& rect) {
  return {Distance(rect.left, rect.right), Distance(rect.top, rect.bottom)};
}

// Where something begins that is to stand in the middle, but not before `least`.
Wide Centred(Wide space, Wide size, Wide least) { return std::max((space - size) / 2, least); }

// A legend that ends on the lower margin.
CRect LegendAtBottom(Wide left, const Size& page, const Size& legend) {
  const Wide bottom = Wide{page.height} - kMargin;
  return MakeRect(left, bottom - legend.height, left + legend.width, bottom);
}

// Makes the map so much smaller that a legend which runs `over` the page fits below it.
void ShrinkAbove(PageLayout& layout, Wide over, const Size& page, const Size& legend) {
  const Size map = SizeOf(layout.map);
  const Wide newHeight = map.height - (over + (Wide{kMapTop} - layout.map.top));
  const int part = Quotient(newHeight, kThousandths, map.height);
  const int newWidth = Quotient(part, map.width, kThousandths);
  const Wide left = Centred(page.width, newWidth, 0);
  layout.map = MakeRect(left, kMapTop, left + newWidth, newHeight + kMapTop);
  layout.legend = LegendAtBottom(layout.legend.left, page, legend);
}

// The legend below the map.
void LayOutWide(PageLayout& layout, const Size& page, const Size& extent, const Size& legend) {
  const int mapHeight = Quotient(Wide{page.width} - 2 * Wide{kMargin}, extent.height, extent.width);
  const Wide mapTop = Centred(page.height, mapHeight, 0);
  layout.map = MakeRect(kMargin, mapTop, Wide{page.width} - kMargin, mapTop + mapHeight);
  const Wide legendTop = Wide{layout.map.bottom} + kMargin;
  const Wide legendLeft = Centred(page.width, legend.width, kMargin);
  layout.legend =
      MakeRect(legendLeft, legendTop, legendLeft + legend.width, legendTop + legend.height);
  const Wide over = Wide{layout.legend.bottom} - page.height + kMargin;
  if (over <= 0) return;
  if (Wide{layout.map.top} - kMapTop >= over) {
    layout.map = Moved(layout.map, 0, -over);
    layout.legend = Moved(layout.legend, 0, -over);
  } else {
    ShrinkAbove(layout, over, page, legend);
  }
}

// The legend moves below a tall map, which takes what height the legend and the title leave.
void MoveLegendBelow(PageLayout& layout, const Size& page, const Size& legend) {
  const Size map = SizeOf(layout.map);
  const Wide newHeight = Wide{page.height} - 3 * Wide{kMargin} - legend.height - kTitleHeight;
  const int newWidth = Quotient(map.width, newHeight, map.height);
  const Wide mapLeft = Centred(page.width, newWidth, kMargin);
  layout.map = MakeRect(mapLeft, kMapTop, mapLeft + newWidth, newHeight + kMapTop);
  layout.legend = LegendAtBottom(Centred(page.width, legend.width, 0), page, legend);
}

// Makes the map so much smaller that a legend which runs `over` the page fits beside it. Where the
// small map leaves room below, the legend goes there instead.
void ShrinkBeside(PageLayout& layout, Wide over, const Size& page, const Size& legend) {
  const Size map = SizeOf(layout.map);
  const Wide newWidth = map.width - (over + (Wide{kMargin} - layout.map.left));
  const int part = Quotient(newWidth, kThousandths, map.width);
  const int newHeight = Quotient(part, map.height, kThousandths);
  const Wide used = Wide{legend.height} + kTitleHeight + newHeight + 3 * Wide{kMargin};
  if (used <= page.height) {
    MoveLegendBelow(layout, page, legend);
    return;
  }
  const Wide bottom = Wide{newHeight} + kMapTop;
  const Wide legendRight = Wide{page.width} - kMargin;
  layout.map = MakeRect(kMargin, kMapTop, newWidth + kMargin, bottom);
  layout.legend = MakeRect(legendRight - legend.width, bottom - legend.height, legendRight, bottom);
}

// The legend to the right of the map.
void LayOutTall(PageLayout& layout, const Size& page, const Size& extent, const Size& legend) {
  const int mapWidth = Quotient(Wide{page.height} - kMapTop - kMargin, extent.width, extent.height);
  const Wide mapLeft = Centred(page.width, mapWidth, 0);
  layout.map = MakeRect(mapLeft, kMapTop, mapLeft + mapWidth, Wide{page.height} - kMargin);
  layout.legend = LegendAtBottom(Wide{layout.map.right} + kMargin, page, legend);
  const Wide over = Wide{layout.legend.right} - page.width + kMargin;
  if (over <= 0) return;
  if (Wide{layout.map.left} - kMargin >= over) {
    layout.map = Moved(layout.map, -over, 0);
    layout.legend = Moved(layout.legend, -over, 0);
  } else {
    ShrinkBeside(layout, over, page, legend);
  }
}

}  // namespace

PageLayout LayOut(const Size& page, const Size& extent, const Size& legend) {
  PageLayout layout;
  layout.title.bottom = kTitleHeight;
  const bool isWide =
      extent.width * (Wide{page.height} - kMargin) >= extent.height * (Wide{page.width} - kMargin);
  if (isWide) {
    LayOutWide(layout, page, extent, legend);
  } else {
    LayOutTall(layout, page, extent, legend);
  }
  return layout;
}

}  // namespace vexel
