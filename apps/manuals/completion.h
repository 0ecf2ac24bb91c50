// What three shells need to complete the commands and their options.

#ifndef VEXEL_APPS_MANUALS_COMPLETION_H_
#define VEXEL_APPS_MANUALS_COMPLETION_H_

#include <span>
#include <string>

#include "description.h"

namespace vexel::manuals {

std::string BashCompletion(std::span<const Command> commands);
std::string ZshCompletion(std::span<const Command> commands);
std::string FishCompletion(std::span<const Command> commands);

}  // namespace vexel::manuals

#endif  // VEXEL_APPS_MANUALS_COMPLETION_H_
