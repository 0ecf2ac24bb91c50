#include "kit/tables/clipped.h"

#include <cstddef>

#include "kit/files/printable.h"

namespace vexel {

std::string Clipped(std::string_view text) {
  constexpr std::size_t kMost = 40;
  if (text.size() <= kMost) return Printable(text);
  std::size_t end = kMost;
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) --end;
  return Printable(text.substr(0, end)) + "\u2026";
}

}  // namespace vexel
