// What a page was made from, as JSON.

#ifndef VEXEL_KIT_REPORT_REPORT_H_
#define VEXEL_KIT_REPORT_REPORT_H_

#include <vexel/platform/geometry.h>
#include <vexel/render/mapgif.h>

#include <string>

#include "kit/view/view.h"

namespace vexel {

// Where a page has its parts: pixels, y downward; the extent is in the working space.
struct PageRects {
  CRect extent;
  CRect map;
  CRect legend;
};

// The whole text, for a page of that view which has been laid out.
VEXEL_API std::string ReportText(View& view, const PageRects& page);
VEXEL_API std::string ReportText(View& view, const CMapGif& page);

}  // namespace vexel

#endif  // VEXEL_KIT_REPORT_REPORT_H_
