#include "kit/view/locate.h"

#include <vexel/render/mapgif.h>

#include <algorithm>
#include <vector>

#include "kit/view/page.h"

namespace vexel {

namespace {

// A prepared page on which polygons are painted one at a time, to see which pixels they take: what
// a pixel belongs to and what a picture shows there cannot differ.
class Probe {
 public:
  explicit Probe(View& view) : page_(view, ""), angle_(view.map.GetDrawRoot()->GetAngle()) {}

  // True when painting the polygon, inside and outline, touches the pixel.
  bool Paints(const CPolygon& polygon, const CPoint& pixel) {
    if (polygon.GetSize() == 0) return false;
    if (angle_ == 0.0F) {
      page_.SetPolygon(&polygon);
    } else {
      CMapGif::RotatePolygon(&polygon, &turned_, angle_);
      page_.SetPolygon(&turned_);
    }
    page_.SetPixel(pixel.x, pixel.y, kUntouched);
    page_.FillPolygon(kTouched);
    page_.DrawOutlinePolygon(kTouched);
    return page_.GetPixel(pixel.x, pixel.y) == page_.GetRGB(kTouched);
  }

 private:
  static constexpr unsigned long kUntouched = 0xFFFFFF;
  static constexpr unsigned long kTouched = 0x000000;

  GifPage page_;
  float angle_;
  CPolygon turned_;
};

// What the uppermost polygon of an area at a pixel is.
enum class Hit { none, area, hole };

Hit HitOf(Probe& probe, const CMapOb& area, const CPoint& pixel) {
  for (int i = area.GetNumPolygons() - 1; i >= 0; --i) {
    const CPolygon& polygon = *area.GetPoly(i);
    if (probe.Paints(polygon, pixel)) return polygon.IsHole() != 0 ? Hit::hole : Hit::area;
  }
  return Hit::none;
}

}  // namespace

const CMapOb* AreaAt(View& view, CPoint pixel) {
  const auto [width, height] = view.request.size;
  if (pixel.x < 0 || pixel.y < 0 || pixel.x >= width || pixel.y >= height) return nullptr;
  Probe probe(view);
  std::vector<const CMapOb*> painted(view.areas.begin(), view.areas.end());
  painted.insert(painted.end(), view.outlines.begin(), view.outlines.end());
  const auto found = std::find_if(painted.rbegin(), painted.rend(), [&](const CMapOb* area) {
    return HitOf(probe, *area, pixel) == Hit::area;
  });
  return found == painted.rend() ? nullptr : *found;
}

}  // namespace vexel
