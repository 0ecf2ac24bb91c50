#include "render/mapgif.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "legend/legend.h"
#include "map/map.h"
#include "platform/number.h"
#include "platform/ref_or_throw.h"
#include "render/latin2.h"
#include "render/layout.h"
#include "render/scale.h"

namespace {

constexpr int kRoomAroundRows = 30;  // pixels, both ways: swatches beside, the heading above

// The size of a rectangle, whichever way its sides run.
vexel::Size SizeOf(const CRect& rect) {
  const auto size = [](int a, int b) {
    return vexel::SaturateToInt(std::abs(std::int64_t{vexel::Distance(a, b)}));
  };
  return {size(rect.left, rect.right), size(rect.top, rect.bottom)};
}

}  // namespace

CObject* CMapGif::CreateObject() { return new CMapGif; }

CRuntimeClass* CMapGif::GetThisClass() {
  static constinit CRuntimeClass record{"CMapGif", &CMapGif::CreateObject, &CGif::GetThisClass};
  return &record;
}

CRuntimeClass* CMapGif::GetRuntimeClass() const { return GetThisClass(); }

CMapGif::CMapGif(CVELAMap* pageMap, CLegend* pageLegend, CVELAData* pageData, const CString& file)
    : map(pageMap), legend(pageLegend), data(pageData) {
  extent = vexel::RefOrThrow(vexel::RefOrThrow(map).GetDrawRoot()).GetBoundRect();
  fileName = file;
}

int CMapGif::GetLegendWidth() const {
  std::size_t longest = 0;
  for (const LegendRow& row : vexel::RefOrThrow(legend).GetRows()) {
    longest = std::max(longest, vexel::DrawnText(row.text).size());
  }
  return vexel::SaturateToInt(static_cast<std::int64_t>(longest) * vexel::kSmallWidth +
                              kRoomAroundRows);
}

int CMapGif::GetLegendHeight() const {
  const auto rows = static_cast<int>(vexel::RefOrThrow(legend).GetRows().size());
  return rows * vexel::kLegendRowHeight + kRoomAroundRows;
}

void CMapGif::PrepareCoords(int pageWidth, int pageHeight) {
  width = pageWidth;
  height = pageHeight;
  const vexel::Size legendSize{GetLegendWidth(), GetLegendHeight()};
  if (RootAngle() != 0.0F) {
    const CMapOb* root = map->GetDrawRoot();
    CRectF turned;
    root->GetRotatedRect(root, &turned);
    extent = vexel::Truncated(turned);
  }
  const vexel::PageLayout layout = vexel::LayOut({width, height}, SizeOf(extent), legendSize);
  titleRect = layout.title;
  mapRect = layout.map;
  legendRect = layout.legend;
}

void CMapGif::ApplyCoords() { CreateImage(); }
