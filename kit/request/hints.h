// Small pieces of the sentences that users read, and guesses at what a mistyped name was meant to
// be.

#ifndef VEXEL_KIT_REQUEST_HINTS_H_
#define VEXEL_KIT_REQUEST_HINTS_H_

#include <vexel/platform/export.h>

#include <concepts>
#include <span>
#include <string>
#include <string_view>

namespace vexel {

// The name that comes closest to a wrong one, without regard to letter case; empty when none is
// close enough to be meant. A name that begins with the wrong one is close.
VEXEL_API std::string_view Nearest(std::string_view wrong, std::span<const std::string_view> names);

// `; did you mean NAME?`, or nothing when no name is close.
VEXEL_API std::string Hint(std::string_view wrong, std::span<const std::string_view> names);

// The names in one line, as in "a, b, c".
VEXEL_API std::string Joined(std::span<const std::string_view> names);

// "1 area", "12 areas": for nouns that take an s.
std::string Counted(std::integral auto count, std::string_view noun) {
  return std::to_string(count).append(" ").append(noun).append(count == 1 ? "" : "s");
}

// The text in double quotes.
inline std::string Quoted(std::string_view text) { return '"' + std::string(text) + '"'; }

}  // namespace vexel

#endif  // VEXEL_KIT_REQUEST_HINTS_H_
