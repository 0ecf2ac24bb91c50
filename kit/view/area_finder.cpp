#include "kit/view/area_finder.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <span>

#include "kit/view/page.h"

namespace vexel {

namespace {

constexpr CRect kNowhere{std::numeric_limits<int>::max(), std::numeric_limits<int>::max(),
                         std::numeric_limits<int>::min(), std::numeric_limits<int>::min()};

bool IsEmpty(const CRect& box) { return box.right < box.left; }

bool Holds(const CRect& box, CPoint pixel) {
  return pixel.x >= box.left && pixel.x <= box.right && pixel.y >= box.top && pixel.y <= box.bottom;
}

CRect Widened(CRect box, CPoint point) {
  return {std::min(box.left, point.x), std::min(box.top, point.y), std::max(box.right, point.x),
          std::max(box.bottom, point.y)};
}

CRect BoxAround(std::span<const CPoint> points) {
  CRect box = kNowhere;
  for (const CPoint& point : points) box = Widened(box, point);
  return box;
}

struct Middle {
  double x = 0.0;
  double y = 0.0;
};

Middle MiddleOf(const CRect& box) {
  return {std::midpoint<double>(box.left, box.right), std::midpoint<double>(box.top, box.bottom)};
}

}  // namespace

// A prepared page on which polygons are painted one at a time, to see which pixels they take: what
// a pixel belongs to and what a picture shows there cannot differ.
class AreaFinder::Canvas : public GifPage {
 public:
  explicit Canvas(View& view) : GifPage(view, ""), angle_(view.map.GetDrawRoot()->GetAngle()) {}

  // The box of a polygon with points.
  CRect BoxOf(const CPolygon& polygon) {
    if (angle_ != 0.0F) return BoxAround(VerticesOf(polygon));
    // Columns and rows keep their order on the page, so that corners come to corners.
    const CRect box = BoxAround(polygon.GetPoints());
    corners_.RemoveAllPoints();
    corners_.AddPoint(box.left, box.top);
    corners_.AddPoint(box.right, box.bottom);
    return BoxAround(VerticesOf(corners_));
  }

  // In pixels; good until the next question.
  std::span<const CPoint> VerticesOf(const CPolygon& polygon) {
    if (angle_ == 0.0F) {
      SetPolygon(&polygon);
    } else {
      RotatePolygon(&polygon, &turned_, angle_);
      SetPolygon(&turned_);
    }
    return GetVertices();
  }

  // True when painting the polygon, inside and outline, touches the pixel.
  bool Paints(const CPolygon& polygon, CPoint pixel) {
    VerticesOf(polygon);
    SetPixel(pixel.x, pixel.y, kUntouched);
    FillPolygon(kTouched);
    DrawOutlinePolygon(kTouched);
    return GetPixel(pixel.x, pixel.y) == GetRGB(kTouched);
  }

  // Whether the uppermost polygon of an area at a pixel is no hole.
  bool IsIn(const CMapOb& area, CPoint pixel) {
    for (int i = area.GetNumPolygons() - 1; i >= 0; --i) {
      const CPolygon& polygon = *area.GetPoly(i);
      if (polygon.GetSize() > 0 && Paints(polygon, pixel)) return polygon.IsHole() == 0;
    }
    return false;
  }

 private:
  static constexpr unsigned long kUntouched = 0xFFFFFF;
  static constexpr unsigned long kTouched = 0x000000;

  float angle_;
  CPolygon turned_;
  CPolygon corners_;
};

AreaFinder::AreaFinder(View& view)
    : canvas_(std::make_unique<Canvas>(view)), size_(view.request.size) {
  painted_.reserve(view.areas.size() + view.outlines.size());
  for (const auto* areas : {&view.areas, &view.outlines}) {
    for (const CMapOb* area : *areas) {
      CRect box = kNowhere;
      for (int i = 0; i < area->GetNumPolygons(); ++i) {
        const CPolygon& polygon = *area->GetPoly(i);
        if (polygon.GetSize() == 0) continue;
        const CRect part = canvas_->BoxOf(polygon);
        box = Widened(Widened(box, {part.left, part.top}), {part.right, part.bottom});
      }
      painted_.push_back({area, box});
    }
  }
}

AreaFinder::~AreaFinder() = default;

const CMapOb* AreaFinder::At(CPoint pixel) {
  if (!Holds({0, 0, size_.width - 1, size_.height - 1}, pixel)) return nullptr;
  const auto found = std::find_if(painted_.rbegin(), painted_.rend(), [&](const Place& place) {
    return Holds(place.box, pixel) && canvas_->IsIn(*place.area, pixel);
  });
  return found == painted_.rend() ? nullptr : found->area;
}

CRect AreaFinder::BoxOf(const CMapOb& area) const {
  const auto found = std::find_if(painted_.begin(), painted_.end(),
                                  [&](const Place& place) { return place.area == &area; });
  return found == painted_.end() ? kNowhere : found->box;
}

std::string AreaFinder::OutlineOf(const CMapOb& area) {
  std::string path;
  for (int i = 0; i < area.GetNumPolygons(); ++i) {
    const CPolygon& polygon = *area.GetPoly(i);
    if (polygon.GetSize() == 0) continue;
    char command = 'M';
    for (const CPoint& vertex : canvas_->VerticesOf(polygon)) {
      constexpr std::string_view kHalf = ".5";
      path += command;
      path.append(std::to_string(vertex.x)).append(kHalf).append(" ");
      path.append(std::to_string(vertex.y)).append(kHalf);
      command = 'L';
    }
    path += 'z';
  }
  return path;
}

const CMapOb& AreaFinder::NeighbourOf(const CMapOb& area, int right, int down) const {
  const CRect own = BoxOf(area);
  const Middle from = MiddleOf(own);
  const CMapOb* best = &area;
  double least = std::numeric_limits<double>::infinity();
  for (const auto& [other, box] : painted_) {
    if (IsEmpty(box) || IsEmpty(own) || other == &area) continue;
    const Middle to = MiddleOf(box);
    const double along = (to.x - from.x) * right + (to.y - from.y) * down;
    const double across = std::abs((to.x - from.x) * down + (to.y - from.y) * right);
    if (along <= 0) continue;
    constexpr double kAside = 1e9;  // more than any page is across
    const double distance = std::hypot(along, across) + (across > along ? kAside : 0.0);
    if (distance < least) {
      least = distance;
      best = other;
    }
  }
  return *best;
}

const CMapOb* AreaAt(View& view, CPoint pixel) { return AreaFinder(view).At(pixel); }

}  // namespace vexel
