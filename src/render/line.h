// Lines on a palette image.

#ifndef VEXEL_RENDER_LINE_H_
#define VEXEL_RENDER_LINE_H_

#include "platform/geometry.h"
#include "render/ring.h"

struct gdImageStruct;

namespace vexel {

// Draws the line from one pixel to another, both included, in one palette entry. The pixels are
// those of gdImageLine; coordinates may be any ints.
void DrawLine(gdImageStruct& image, CPoint from, CPoint to, int paletteIndex);

// Draws the closed outline of a polygon, pixel for pixel what gdImagePolygon draws.
void DrawRing(gdImageStruct& image, const Ring& ring, int paletteIndex);

}  // namespace vexel

#endif  // VEXEL_RENDER_LINE_H_
