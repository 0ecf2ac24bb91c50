// The columns of a data set, as users name them.

#ifndef VEXEL_KIT_VIEW_COLUMNS_H_
#define VEXEL_KIT_VIEW_COLUMNS_H_

#include <vexel/data/dataset.h>

#include <string>
#include <string_view>

namespace vexel {

// The column that a name or a number means: the very name first, then the name in another letter
// case if there is but one, then the number, from 1. Several columns of the very name are none.
// Throws an Error of kind request that begins with `option`.
int ColumnOf(const CVELAData& data, const std::string& option, std::string_view text);

}  // namespace vexel

#endif  // VEXEL_KIT_VIEW_COLUMNS_H_
