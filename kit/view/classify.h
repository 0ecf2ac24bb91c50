// The groups of a view: bounds, colours and names.

#ifndef VEXEL_KIT_VIEW_CLASSIFY_H_
#define VEXEL_KIT_VIEW_CLASSIFY_H_

#include "kit/view/view.h"

namespace vexel {

// Finds the groups by what the request says, and colours the areas on show. The engine's own ways
// are the engine's; all others end in bounds that are given to it, so that labels, counts and
// colours come from one place. Whatever a user might not expect of the result is noted.
void Classify(View& view);

}  // namespace vexel

#endif  // VEXEL_KIT_VIEW_CLASSIFY_H_
