#include "kit/classes/classes.h"

#include <algorithm>

namespace vexel {

const ClassMethod* FindClassMethod(std::string_view name) noexcept {
  const auto found = std::find_if(kClassMethods.begin(), kClassMethods.end(),
                                  [=](const ClassMethod& method) { return method.name == name; });
  return found == kClassMethods.end() ? nullptr : &*found;
}

}  // namespace vexel
