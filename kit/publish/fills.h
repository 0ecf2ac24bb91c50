// What the areas of a publication page are filled with.

#ifndef VEXEL_KIT_PUBLISH_FILLS_H_
#define VEXEL_KIT_PUBLISH_FILLS_H_

#include <vector>

#include "kit/publish/drawing.h"
#include "kit/view/view.h"

namespace vexel {

// The fill of every slot of the legend, by its number; those of groups not in use are white. The
// lines around their areas are not set.
VEXEL_API std::vector<FillStyle> FillsOf(const View& view);

// The slot of the legend that an area belongs to; that of missing values for one below all groups,
// too.
VEXEL_API int SlotOf(const View& view, const CMapOb& area);

}  // namespace vexel

#endif  // VEXEL_KIT_PUBLISH_FILLS_H_
