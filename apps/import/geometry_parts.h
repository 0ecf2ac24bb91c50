// Work with geometries of the library.

#ifndef VEXEL_APPS_IMPORT_GEOMETRY_PARTS_H_
#define VEXEL_APPS_IMPORT_GEOMETRY_PARTS_H_

#include <cpl_error.h>
#include <ogr_geometry.h>

#include <memory>
#include <vector>

namespace vexel::import {

// Has the library keep to itself what it would print.
class QuietLibrary {
 public:
  QuietLibrary() { CPLPushErrorHandler(CPLQuietErrorHandler); }
  QuietLibrary(const QuietLibrary&) = delete;
  QuietLibrary& operator=(const QuietLibrary&) = delete;
  ~QuietLibrary() { CPLPopErrorHandler(); }
};

// The members of a collection, which is empty afterwards.
inline std::vector<std::unique_ptr<OGRGeometry>> TakeParts(OGRGeometryCollection& collection) {
  std::vector<std::unique_ptr<OGRGeometry>> parts;
  parts.reserve(static_cast<std::size_t>(collection.getNumGeometries()));
  for (OGRGeometry* part : collection) parts.emplace_back(part);
  collection.removeGeometry(-1, FALSE);
  return parts;
}

// Moves all polygons in a geometry to `to`; false when there was something else in it.
inline bool TakePolygons(std::unique_ptr<OGRGeometry> geometry, OGRMultiPolygon& to) {
  const OGRwkbGeometryType type = wkbFlatten(geometry->getGeometryType());
  if (type == wkbPolygon || type == wkbTriangle) {
    to.addGeometryDirectly(geometry.release());
    return true;
  }
  if (geometry->hasCurveGeometry() != FALSE) {
    std::unique_ptr<OGRGeometry> straight(geometry->getLinearGeometry());
    return straight != nullptr && TakePolygons(std::move(straight), to);
  }
  if (OGR_GT_IsSubClassOf(type, wkbGeometryCollection) == FALSE) return false;
  bool isAll = true;
  for (std::unique_ptr<OGRGeometry>& part : TakeParts(*geometry->toGeometryCollection())) {
    isAll = TakePolygons(std::move(part), to) && isAll;
  }
  return isAll;
}

}  // namespace vexel::import

#endif  // VEXEL_APPS_IMPORT_GEOMETRY_PARTS_H_
