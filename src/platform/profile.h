// The machine's profile, asked of the host.

#ifndef VEXEL_PLATFORM_PROFILE_H_
#define VEXEL_PLATFORM_PROFILE_H_

#include "platform/export.h"

namespace vexel {

// The characters between groups of three digits and before the decimals; 0 stands for none.
struct NumberSeparators {
  char thousand = ',';
  char decimal = '.';
};

// The separators of section "intl" of the profile, keys "sThousand" and "sDecimal", with the
// defaults "," and ".". Of an entry the first character counts, a blank
// standing for what is no ASCII; an entry that exists without any
// text leaves what `whenEmpty` says.
VEXEL_API NumberSeparators MachineSeparators(NumberSeparators whenEmpty);

}  // namespace vexel

#endif  // VEXEL_PLATFORM_PROFILE_H_
