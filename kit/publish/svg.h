// A publication page as SVG.

#ifndef VEXEL_KIT_PUBLISH_SVG_H_
#define VEXEL_KIT_PUBLISH_SVG_H_

#include <string>

#include "kit/publish/drawing.h"

namespace vexel {

// The whole document, UTF-8: one <path> for each area, with its key, and a <title> of name and
// value; colours as classes of a style sheet, texts as texts. The same drawing gives the same
// bytes.
VEXEL_API std::string SvgText(const Drawing& drawing);

// What the `d` of a path holds for some of the rings, in steps of the drawing's grid.
VEXEL_API void AppendPath(std::string& to, const Drawing& drawing, const RingRange& range);

}  // namespace vexel

#endif  // VEXEL_KIT_PUBLISH_SVG_H_
