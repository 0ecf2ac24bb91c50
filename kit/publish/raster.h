// A publication page as pixels, all but its texts.

#ifndef VEXEL_KIT_PUBLISH_RASTER_H_
#define VEXEL_KIT_PUBLISH_RASTER_H_

#include <vexel/platform/export.h>

#include "kit/publish/drawing.h"
#include "kit/publish/pixels.h"

namespace vexel {

// Smooth edges, `scale` pixels for each of the page's; the sides are rounded to whole pixels, at
// least one. Where areas have a common border nothing shines through between them, so that areas
// without lines of a colour of their own need none. The same drawing gives the same pixels.
VEXEL_API Pixels RasterOf(const Drawing& drawing, double scale);

}  // namespace vexel

#endif  // VEXEL_KIT_PUBLISH_RASTER_H_
