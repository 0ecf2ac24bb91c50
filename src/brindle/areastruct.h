// The key of an area.

#ifndef VEXEL_BRINDLE_AREASTRUCT_H_
#define VEXEL_BRINDLE_AREASTRUCT_H_

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>

#include "brindle/text.h"
#include "platform/export.h"
#include "platform/object.h"

// Eight codes, one per tree level from the top down. Callers read and write them directly. A code
// may be unset; a default-constructed key has all eight unset.
class VEXEL_API CAreaStruct : public CObject {
 public:
  static constexpr std::int32_t kUnset = -99999999;
  static constexpr int kNumCodes = 8;

  CAreaStruct() { codes.fill(kUnset); }

  // The codes up to the deepest set one, joined by ", "; an unset code in between stands as
  // -99999999, and a blank key gives the empty text.
  CVELAString GetAreasStr() const;

  // The codes up to the deepest set one as a query string, "A0=12&A1=3"; empty for a blank key.
  CVELAString GetURL() const;

  // The tree level of the key's area: the number of codes up to the deepest set one, 1 for a child
  // of the root and 0 for a blank key.
  int GetLevel() const noexcept;

  // The same, but at least 1.
  int GetLevelWithLeadingZeros() const noexcept;

  // The key's bytes in a compiled map: the eight codes as 32-bit numbers.
  void Serialize(CArchive& ar) override;

  friend bool operator==(const CAreaStruct& a, const CAreaStruct& b) noexcept {
    return a.codes == b.codes;
  }
  // Orders siblings: code by code from the top, an unset code before any set one.
  friend VEXEL_API bool operator<(const CAreaStruct& a, const CAreaStruct& b) noexcept;

  std::array<std::int32_t, kNumCodes> codes;
};

#endif  // VEXEL_BRINDLE_AREASTRUCT_H_
