// From the geometry of a file to the outlines of an area.

#ifndef VEXEL_APPS_IMPORT_GEOMETRY_H_
#define VEXEL_APPS_IMPORT_GEOMETRY_H_

#include <memory>
#include <string>
#include <vector>

#include "flaws.h"
#include "shape.h"

class OGRCoordinateTransformation;
class OGRGeometry;

namespace vexel::import {

// The way of a layer's coordinates into the map.
struct Coordinates {
  bool inDegrees = false;                                   // in the file: longitude and latitude
  std::shared_ptr<OGRCoordinateTransformation> projection;  // null to leave them as they are
};

// Gives the outlines of one feature: repaired where they cross, cut at the 180th meridian where
// they are in degrees, projected. What was not as it should be is added to `flaws` under the name.
// Throws an Error of kind failure when a point cannot be projected.
Shape ShapeOf(std::unique_ptr<OGRGeometry> geometry, const Coordinates& coordinates,
              const std::string& name, Flaws& flaws);

// The union of shapes that overlap or do not quite touch; empty when that cannot be found.
Shape UnionOf(const std::vector<const Shape*>& shapes);

}  // namespace vexel::import

#endif  // VEXEL_APPS_IMPORT_GEOMETRY_H_
