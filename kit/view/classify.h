// The groups of a view: bounds, colours and names.

#ifndef VEXEL_KIT_VIEW_CLASSIFY_H_
#define VEXEL_KIT_VIEW_CLASSIFY_H_

#include "kit/view/view.h"

namespace vexel {

// Finds the groups by what the request says, and colours the areas on show. The engine's own ways
// are the engine's; all others end in bounds that are given to it, so that labels, counts and
// colours come from one place. Whatever a user might not expect of the result is noted.
void Classify(View& view);

// The column that a name or a number means: the very name first, then the name in another letter
// case if there is but one, then the number, from 1. Throws an Error of kind request that begins
// with `option`.
int ColumnOf(const CVELAData& data, const std::string& option, std::string_view text);

}  // namespace vexel

#endif  // VEXEL_KIT_VIEW_CLASSIFY_H_
