#include "map/polygon.h"

#include <algorithm>
#include <cmath>

#include "platform/number.h"
#include "platform/region.h"

CObject* CPolygon::CreateObject() { return new CPolygon; }

CRuntimeClass* CPolygon::GetThisClass() {
  static constinit CRuntimeClass record{"CPolygon", &CPolygon::CreateObject,
                                        &CObject::GetThisClass};
  return &record;
}

CRuntimeClass* CPolygon::GetRuntimeClass() const { return GetThisClass(); }

int CPolygon::HitTest(const CPoint& point, float angle) const {
  constexpr std::size_t kMostVertices = 64000;
  const auto ring = GetPoints().first(std::min(GetPoints().size(), kMostVertices));
  vexel::PolygonPointTest test(point);
  if (angle == 0.0F) {
    for (const CPoint& vertex : ring) test.AddVertex(vertex);
    return test.Contains() ? 1 : 0;
  }
  const double s = static_cast<float>(std::sin(static_cast<double>(angle)));
  const double c = static_cast<float>(std::cos(static_cast<double>(angle)));
  for (const CPoint& vertex : ring) {
    const auto x = static_cast<float>(vertex.x);
    const auto y = static_cast<float>(vertex.y);
    test.AddVertex({vexel::TruncateToInt(x * c - y * s), vexel::TruncateToInt(y * c + x * s)});
  }
  return test.Contains() ? 1 : 0;
}
