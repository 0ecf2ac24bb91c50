// Vertices of the working space as pixels.

#ifndef VEXEL_RENDER_PLACE_H_
#define VEXEL_RENDER_PLACE_H_

#include <span>

#include "platform/geometry.h"
#include "render/scale.h"

namespace vexel {

// Writes to `to`, for each vertex, what the two axes make of its coordinates.
void PlaceVertices(std::span<const CPoint> vertices, const Axis& column, const Axis& row,
                   CPoint* to) noexcept;

}  // namespace vexel

#endif  // VEXEL_RENDER_PLACE_H_
