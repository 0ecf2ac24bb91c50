// The web page around a publication page.

#ifndef VEXEL_KIT_REPORT_MAP_PAGE_H_
#define VEXEL_KIT_REPORT_MAP_PAGE_H_

#include <string>

#include "kit/publish/drawing.h"
#include "kit/view/view.h"

namespace vexel {

// The whole page, for a picture that was made of the drawing. `picture` is the path from the page
// to it. Outlines and values stand in it once, in a compact form, and become elements when they are
// wanted.
VEXEL_API std::string MapPageText(View& view, const Drawing& drawing, const std::string& picture);

}  // namespace vexel

#endif  // VEXEL_KIT_REPORT_MAP_PAGE_H_
