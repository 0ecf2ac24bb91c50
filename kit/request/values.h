// Values of a request as text, and back. What is no such value throws an Error of kind request that
// quotes the text.

#ifndef VEXEL_KIT_REQUEST_VALUES_H_
#define VEXEL_KIT_REQUEST_VALUES_H_

#include <vexel/brindle/areastruct.h>
#include <vexel/platform/profile.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vexel {

// A page's sides in pixels.
struct PageSize {
  int width = 800;
  int height = 600;

  friend bool operator==(const PageSize&, const PageSize&) = default;
};

inline constexpr int kMostPixels = 65535;  // of a side

// The whole text as a number; nothing when it is none.
VEXEL_API std::optional<int> ParseInt(std::string_view text);

VEXEL_API int ParseIntBetween(std::string_view text, int least, int most);

// A finite number with "." before its decimals.
VEXEL_API double ParseNumber(std::string_view text);

// "800x600", sides from 1 to 65535.
VEXEL_API PageSize ParseSize(std::string_view text);

// "12,3": up to eight codes.
VEXEL_API CAreaStruct ParseKey(std::string_view text);

// ".,": two different characters, first between thousands, then before decimals; or the latter
// alone.
VEXEL_API NumberSeparators ParseSeparators(std::string_view text);

// The ways back. A number comes with as few digits as read back as the same double.
VEXEL_API std::string NumberText(double number);
VEXEL_API std::string SizeText(const PageSize& size);
VEXEL_API std::string KeyText(const CAreaStruct& key, std::string_view between = ",");
VEXEL_API std::string SeparatorsText(const NumberSeparators& separators);

// The text cut at each mark; the parts point into it.
VEXEL_API std::vector<std::string_view> Split(std::string_view text, char mark);

}  // namespace vexel

#endif  // VEXEL_KIT_REQUEST_VALUES_H_
