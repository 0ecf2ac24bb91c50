// Manual pages in the macros of man(7).

#ifndef VEXEL_APPS_MANUALS_MAN_PAGE_H_
#define VEXEL_APPS_MANUALS_MAN_PAGE_H_

#include <span>
#include <string>
#include <string_view>

#include "description.h"

namespace vexel::manuals {

// The page of a command, which stands under PageName.
std::string ManPage(const Command& command, std::string_view version);
std::string PageName(const Command& command);  // "vexel-render"

// The page of the program with all commands.
std::string Overview(std::span<const Command> commands, std::string_view version);

}  // namespace vexel::manuals

#endif  // VEXEL_APPS_MANUALS_MAN_PAGE_H_
