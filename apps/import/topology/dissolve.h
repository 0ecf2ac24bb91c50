// The union of neighbours.

#ifndef VEXEL_APPS_IMPORT_TOPOLOGY_DISSOLVE_H_
#define VEXEL_APPS_IMPORT_TOPOLOGY_DISSOLVE_H_

#include <optional>
#include <span>

#include "shape.h"

namespace vexel::import {

// The union of parts that share their borders vertex for vertex. Rings may wind either way; those
// of the result pass no vertex twice, outlines run against the clock and holes with it. All
// vertices of its border stay. A part within another, without a shared border, vanishes. Nothing
// where borders cross, touch between their vertices, or parts on one side of a border lie upon each
// other: such parts take a general union. Linear in the number of vertices.
std::optional<Shape> Dissolve(std::span<const Shape* const> parts);

}  // namespace vexel::import

#endif  // VEXEL_APPS_IMPORT_TOPOLOGY_DISSOLVE_H_
