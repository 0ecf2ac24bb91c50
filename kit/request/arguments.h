// A request as what is typed to make its page.

#ifndef VEXEL_KIT_REQUEST_ARGUMENTS_H_
#define VEXEL_KIT_REQUEST_ARGUMENTS_H_

#include <span>
#include <string>
#include <vector>

#include "kit/request/request.h"

namespace vexel {

// The data file, then the options by which a command that draws makes the same request; what holds
// anyway is left out.
VEXEL_API std::vector<std::string> ArgumentsFor(const Request& request);

// A command as a POSIX shell takes it, words in quotes only where they must be. A word with control
// characters is good for a shell, but not for a terminal.
VEXEL_API std::string ShellText(std::span<const std::string> words);

}  // namespace vexel

#endif  // VEXEL_KIT_REQUEST_ARGUMENTS_H_
