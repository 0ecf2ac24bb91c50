// What the script of a page knows of the areas on show.

#ifndef VEXEL_KIT_REPORT_MAP_DATA_H_
#define VEXEL_KIT_REPORT_MAP_DATA_H_

#include <string>

#include "kit/publish/drawing.h"
#include "kit/report/area_parents.h"
#include "kit/view/view.h"

namespace vexel {

// Appends members of a JSON object: lists with an entry for each area, which takes less than a list
// of objects. It may stand in a script element.
VEXEL_API void AppendMapData(std::string& to, const View& view, const Drawing& drawing,
                             const AreaParents& parents);

}  // namespace vexel

#endif  // VEXEL_KIT_REPORT_MAP_DATA_H_
