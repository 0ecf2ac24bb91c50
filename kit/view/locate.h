// Which area a page shows at a pixel.

#ifndef VEXEL_KIT_VIEW_LOCATE_H_
#define VEXEL_KIT_VIEW_LOCATE_H_

#include <vexel/platform/geometry.h>

#include "kit/view/view.h"

namespace vexel {

// The area whose paint lies uppermost at a pixel of the view's GIF page, counted from 0 at the top
// left; null where there is none, or no page. A hole shows the paint of the area around it, but is
// not a part of that area. Costs about as much as drawing the page.
VEXEL_API const CMapOb* AreaAt(View& view, CPoint pixel);

}  // namespace vexel

#endif  // VEXEL_KIT_VIEW_LOCATE_H_
