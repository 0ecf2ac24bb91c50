// Which areas a page shows at pixels, for many questions about one page.

#ifndef VEXEL_KIT_VIEW_AREA_FINDER_H_
#define VEXEL_KIT_VIEW_AREA_FINDER_H_

#include <vexel/platform/geometry.h>

#include <memory>
#include <string>
#include <vector>

#include "kit/view/view.h"

namespace vexel {

// Knows where each area of a view's GIF page lies, so that an answer costs little more than to
// paint the areas that may be there. The view must outlive it, and not show anything else in the
// meantime. Pixels are counted from 0 at the top left.
class VEXEL_API AreaFinder {
 public:
  // Looks once at each vertex of the areas on show.
  explicit AreaFinder(View& view);
  AreaFinder(const AreaFinder&) = delete;
  AreaFinder& operator=(const AreaFinder&) = delete;
  ~AreaFinder();

  // The area whose paint lies uppermost at a pixel; null where there is none, or no page. A hole
  // shows the paint of the area around it, but is not a part of that area.
  const CMapOb* At(CPoint pixel);

  // The pixels that an area on show has on its sides. For one without an outline, or that is not on
  // show, right lies left of left.
  CRect BoxOf(const CMapOb& area) const;

  // The rings of an area as the `d` of a path, through the middles of pixels.
  std::string OutlineOf(const CMapOb& area);

  // The area whose box has its middle nearest in a direction, within 45 degrees of it where there
  // is one; the same area where there is none. One of `right` and `down` is 1 or -1, the other 0.
  const CMapOb& NeighbourOf(const CMapOb& area, int right, int down) const;

 private:
  class Canvas;
  struct Place {
    const CMapOb* area;
    CRect box;
  };

  std::unique_ptr<Canvas> canvas_;
  PageSize size_;
  std::vector<Place> painted_;  // in the order in which they are painted
};

// The same for one question. Costs a look at each vertex of the areas on show.
VEXEL_API const CMapOb* AreaAt(View& view, CPoint pixel);

}  // namespace vexel

#endif  // VEXEL_KIT_VIEW_AREA_FINDER_H_
