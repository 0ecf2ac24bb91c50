// The form by which a reader chooses what to see.

#ifndef VEXEL_APPS_SERVE_PAGES_FORM_H_
#define VEXEL_APPS_SERVE_PAGES_FORM_H_

#include <optional>
#include <string>

#include "apps/serve/show.h"
#include "kit/view/view.h"

namespace vexel::serve {

// A form that asks for `action`, with what is on show chosen in its fields and all else that the
// state says in hidden ones. `compared` is the column to compare.
std::string FormMarkup(View& view, const Show& show, const std::string& action,
                       std::optional<int> compared);

}  // namespace vexel::serve

#endif  // VEXEL_APPS_SERVE_PAGES_FORM_H_
