#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "legend/legend.h"
#include "map/map.h"
#include "platform/number.h"
#include "platform/ref_or_throw.h"
#include "render/latin2.h"
#include "render/legend_rows.h"
#include "render/mapgif.h"
#include "render/scale.h"

namespace {

using vexel::Distance;
using vexel::MakeRect;
using vexel::Quotient;
using Wide = std::int64_t;  // sums of pixels, which an odd page size may carry beyond an int

// All in pixels.
constexpr int kMargin = 10;
constexpr int kTitleHeight = 20;
constexpr int kMapTop = kTitleHeight + kMargin;
constexpr int kRoomAroundRows = 30;  // both ways: swatches beside, the heading above
constexpr int kThousandths = 1000;

CRect Moved(const CRect& rect, Wide dx, Wide dy) {
  return MakeRect(rect.left + dx, rect.top + dy, rect.right + dx, rect.bottom + dy);
}

int Size(int a, int b) { return vexel::SaturateToInt(std::abs(Wide{Distance(a, b)})); }

// Where something begins that is to stand in the middle, but not before `least`.
Wide Centred(Wide space, Wide size, Wide least) { return std::max((space - size) / 2, least); }

}  // namespace

int CMapGif::GetLegendWidth() const {
  std::size_t longest = 0;
  for (const LegendRow& row : vexel::RefOrThrow(legend).GetRows()) {
    longest = std::max(longest, vexel::DrawnText(row.text).size());
  }
  return vexel::SaturateToInt(static_cast<Wide>(longest) * vexel::kSmallWidth + kRoomAroundRows);
}

int CMapGif::GetLegendHeight() const {
  const auto rows = static_cast<int>(vexel::RefOrThrow(legend).GetRows().size());
  return rows * vexel::kLegendRowHeight + kRoomAroundRows;
}

void CMapGif::PrepareCoords(int pageWidth, int pageHeight) {
  width = pageWidth;
  height = pageHeight;
  titleRect.top = 0;
  titleRect.bottom = kTitleHeight;
  const int legendWidth = GetLegendWidth();
  const int legendHeight = GetLegendHeight();
  if (RootAngle() != 0.0F) {
    const CMapOb* root = map->GetDrawRoot();
    CRectF turned;
    root->GetRotatedRect(root, &turned);
    extent = vexel::Truncated(turned);
  }
  const int extentWidth = Size(extent.left, extent.right);
  const int extentHeight = Size(extent.top, extent.bottom);
  const bool wide =
      extentWidth * (Wide{height} - kMargin) >= extentHeight * (Wide{width} - kMargin);
  if (wide) {
    LayOutWide(extentWidth, extentHeight, legendWidth, legendHeight);
  } else {
    LayOutTall(extentWidth, extentHeight, legendWidth, legendHeight);
  }
}

void CMapGif::ApplyCoords() { CreateImage(); }

// The legend below the map.
void CMapGif::LayOutWide(int extentWidth, int extentHeight, int legendWidth, int legendHeight) {
  const int mapHeight = Quotient(Wide{width} - 2 * Wide{kMargin}, extentHeight, extentWidth);
  const Wide mapTop = Centred(height, mapHeight, 0);
  mapRect = MakeRect(kMargin, mapTop, Wide{width} - kMargin, mapTop + mapHeight);
  const Wide legendTop = Wide{mapRect.bottom} + kMargin;
  const Wide legendLeft = Centred(width, legendWidth, kMargin);
  legendRect = MakeRect(legendLeft, legendTop, legendLeft + legendWidth, legendTop + legendHeight);
  const Wide over = Wide{legendRect.bottom} - height + kMargin;
  if (over <= 0) return;
  if (Wide{mapRect.top} - kMapTop >= over) {
    mapRect = Moved(mapRect, 0, -over);
    legendRect = Moved(legendRect, 0, -over);
  } else {
    ShrinkWide(over, legendHeight);
  }
}

void CMapGif::ShrinkWide(std::int64_t over, int legendHeight) {
  const int mapWidth = Distance(mapRect.left, mapRect.right);
  const int mapHeight = Distance(mapRect.top, mapRect.bottom);
  const Wide newHeight = mapHeight - (over + (Wide{kMapTop} - mapRect.top));
  const int part = Quotient(newHeight, kThousandths, mapHeight);
  const int newWidth = Quotient(part, mapWidth, kThousandths);
  const Wide left = Centred(width, newWidth, 0);
  mapRect = MakeRect(left, kMapTop, left + newWidth, newHeight + kMapTop);
  const Wide legendBottom = Wide{height} - kMargin;
  legendRect =
      MakeRect(legendRect.left, legendBottom - legendHeight, legendRect.right, legendBottom);
}

// The legend to the right of the map.
void CMapGif::LayOutTall(int extentWidth, int extentHeight, int legendWidth, int legendHeight) {
  const int mapWidth = Quotient(Wide{height} - kMapTop - kMargin, extentWidth, extentHeight);
  const Wide mapLeft = Centred(width, mapWidth, 0);
  mapRect = MakeRect(mapLeft, kMapTop, mapLeft + mapWidth, Wide{height} - kMargin);
  const Wide legendLeft = Wide{mapRect.right} + kMargin;
  const Wide legendBottom = Wide{height} - kMargin;
  legendRect =
      MakeRect(legendLeft, legendBottom - legendHeight, legendLeft + legendWidth, legendBottom);
  const Wide over = Wide{legendRect.right} - width + kMargin;
  if (over <= 0) return;
  if (Wide{mapRect.left} - kMargin >= over) {
    mapRect = Moved(mapRect, -over, 0);
    legendRect = Moved(legendRect, -over, 0);
  } else {
    ShrinkTall(over, legendWidth, legendHeight);
  }
}

void CMapGif::ShrinkTall(std::int64_t over, int legendWidth, int legendHeight) {
  const int mapWidth = Distance(mapRect.left, mapRect.right);
  const int mapHeight = Distance(mapRect.top, mapRect.bottom);
  const Wide newWidth = mapWidth - (over + (Wide{kMargin} - mapRect.left));
  const int part = Quotient(newWidth, kThousandths, mapWidth);
  const int newHeight = Quotient(part, mapHeight, kThousandths);
  const Wide used = Wide{legendHeight} + kTitleHeight + newHeight + 3 * Wide{kMargin};
  if (used > height) {
    const Wide bottom = Wide{newHeight} + kMapTop;
    mapRect = MakeRect(kMargin, kMapTop, newWidth + kMargin, bottom);
    legendRect = MakeRect(Wide{width} - kMargin - legendWidth, bottom - legendHeight,
                          Wide{width} - kMargin, bottom);
  } else {
    MoveLegendBelow(mapWidth, mapHeight, legendWidth, legendHeight);
  }
}

// The map takes what height the legend and the title leave.
void CMapGif::MoveLegendBelow(int mapWidth, int mapHeight, int legendWidth, int legendHeight) {
  const Wide newHeight = Wide{height} - 3 * Wide{kMargin} - legendHeight - kTitleHeight;
  const int newWidth = Quotient(mapWidth, newHeight, mapHeight);
  const Wide mapLeft = Centred(width, newWidth, kMargin);
  mapRect = MakeRect(mapLeft, kMapTop, mapLeft + newWidth, newHeight + kMapTop);
  const Wide legendLeft = Centred(width, legendWidth, 0);
  const Wide legendBottom = Wide{height} - kMargin;
  legendRect =
      MakeRect(legendLeft, legendBottom - legendHeight, legendLeft + legendWidth, legendBottom);
}
