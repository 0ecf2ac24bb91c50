#include <algorithm>
#include <span>
#include <vector>

#include "legend/legend.h"
#include "map/map.h"
#include "map/mapob.h"
#include "platform/ref_or_throw.h"
#include "render/mapgif.h"
#include "render/ring.h"
#include "render/scale.h"

namespace {

constexpr unsigned long kBlack = 0x000000;
constexpr unsigned long kRed = 0x0000FF;
constexpr unsigned long kYellow = 0x00FFFF;

}  // namespace

// A map's operation that stands among the drawing, since it reads a legend, which the map's own
// room does not know.
unsigned long CVELAMap::GetOutlineColor(const CLegend* legend) {
  using Palette = CLegend::Palette;
  switch (vexel::RefOrThrow(legend).palette) {
    case Palette::blue:
    case Palette::green:
    case Palette::red:
    case Palette::grey:
    case Palette::custom:
      return kYellow;
    case Palette::yellow:
      return kRed;
    default:
      return kBlack;
  }
}

// How the vertices of the page's areas come to their pixels: worked out once for all of them.
struct CMapGif::Placement {
  explicit Placement(const CMapGif& page)
      : isTurned(page.RootAngle() != 0.0F),
        turn(page.RootAngle()),
        column(page.ColumnAxis()),
        row(page.RowAxis(isTurned)),
        startRow(page.RowAxis(false)) {}

  bool isTurned;
  vexel::Turn turn;
  vexel::Axis column;
  vexel::Axis row;
  vexel::Axis startRow;
};

void CMapGif::SetPolygon(const CPolygon* polygon) {
  SetVertices(vexel::RefOrThrow(polygon).GetPoints(), Placement(*this));
}

void CMapGif::RotatePolygon(const CPolygon* source, CPolygon* target, float angle) {
  const auto ring = vexel::RefOrThrow(source).GetPoints();
  std::vector<CPoint> turned(ring.size());
  std::transform(ring.begin(), ring.end(), turned.begin(), vexel::Turn(angle));
  vexel::RefOrThrow(target).RemoveAllPoints();
  for (const CPoint& point : turned) target->AddPoint(point);
}

void CMapGif::DrawMap(CMapOb* node, const CVELAString& url) {
  DrawSubtree(vexel::RefOrThrow(node), url, Placement(*this));
}

void CMapGif::DrawSubtree(const CMapOb& area, const CVELAString& url, const Placement& placement) {
  if (area.IsDrawn() != 0) {
    ForEachPolygon(area, placement, [&](const vexel::Ring& ring) {
      FillIn(ring, GetRGB(area.GetColor()));
      OutlineIn(ring, black);
      PolygonToHtml(area.GetArea(), url);
    });
  }
  area.ForEachChild([&](const CMapOb& child) { DrawSubtree(child, url, placement); });
}

void CMapGif::DrawOutline(CMapOb* node) {
  const CMapOb& area = vexel::RefOrThrow(node);
  const unsigned long color = CVELAMap::GetOutlineColor(legend);
  ForEachPolygon(area, Placement(*this), [&](const vexel::Ring& ring) {
    FillIn(ring, GetRGB(area.GetColor()));
    OutlineIn(ring, GetRGB(color));
  });
}

// Makes each polygon of the node, turned with the draw root, the polygon at work.
template <typename Paint>
void CMapGif::ForEachPolygon(const CMapOb& node, const Placement& placement, Paint paint) {
  for (int i = 0; i < node.GetNumPolygons(); ++i) {
    std::span<const CPoint> ring = vexel::RefOrThrow(node.GetPoly(i)).GetPoints();
    if (placement.isTurned) {
      turned_.resize(ring.size());
      std::transform(ring.begin(), ring.end(), turned_.begin(), placement.turn);
      ring = turned_;
    }
    SetVertices(ring, placement);
    paint(GetDistinctRing());
  }
}

void CMapGif::SetVertices(std::span<const CPoint> vertices, const Placement& placement) {
  SetRing(vertices, placement.column, placement.row, placement.startRow);
}

vexel::Axis CMapGif::ColumnAxis() const {
  return {extent.left, extent.right, mapRect.left, vexel::Distance(mapRect.left, mapRect.right)};
}

// Where the draw root is turned, the extent has the largest y in `bottom`, else in `top`: it lands
// on the top of the map rectangle either way.
vexel::Axis CMapGif::RowAxis(bool turned) const {
  const int length = vexel::Distance(mapRect.top, mapRect.bottom);
  return turned ? vexel::Axis(extent.bottom, extent.top, mapRect.top, length)
                : vexel::Axis(extent.top, extent.bottom, mapRect.top, length);
}

float CMapGif::RootAngle() const {
  return vexel::RefOrThrow(vexel::RefOrThrow(map).GetDrawRoot()).GetAngle();
}
