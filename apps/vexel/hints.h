// Guesses at what a mistyped name was meant to be.

#ifndef VEXEL_APPS_VEXEL_HINTS_H_
#define VEXEL_APPS_VEXEL_HINTS_H_

#include <span>
#include <string>
#include <string_view>

namespace vexel::cli {

// The name that comes closest to a wrong one, without regard to letter case; empty when none is
// close enough to be meant. A name that begins with the wrong one is close.
std::string_view Nearest(std::string_view wrong, std::span<const std::string_view> names);

// `; did you mean NAME?`, or nothing when no name is close.
std::string Hint(std::string_view wrong, std::span<const std::string_view> names);

// The names in one line, as in "a, b, c".
std::string Joined(std::span<const std::string_view> names);

}  // namespace vexel::cli

#endif  // VEXEL_APPS_VEXEL_HINTS_H_
