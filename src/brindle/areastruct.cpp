#include "brindle/areastruct.h"

#include <algorithm>
#include <string>

#include "platform/archive.h"

namespace {

// An unset code comes before every other number.
bool CodeLess(std::int32_t a, std::int32_t b) {
  if (a == b || b == CAreaStruct::kUnset) return false;
  return a == CAreaStruct::kUnset || a < b;
}

}  // namespace

int CAreaStruct::GetLevel() const noexcept {
  const auto deepest =
      std::find_if(codes.rbegin(), codes.rend(), [](std::int32_t code) { return code != kUnset; });
  return static_cast<int>(codes.rend() - deepest);
}

int CAreaStruct::GetLevelWithLeadingZeros() const noexcept { return std::max(1, GetLevel()); }

CVELAString CAreaStruct::GetAreasStr() const {
  std::string text;
  for (int i = 0; i < GetLevel(); ++i) {
    if (i > 0) text += ", ";
    text += std::to_string(codes[static_cast<std::size_t>(i)]);
  }
  return CVELAString(text);
}

CVELAString CAreaStruct::GetURL() const {
  std::string text;
  for (int i = 0; i < GetLevel(); ++i) {
    if (i > 0) text += '&';
    text.append("A").append(std::to_string(i)).append("=");
    text += std::to_string(codes[static_cast<std::size_t>(i)]);
  }
  return CVELAString(text);
}

void CAreaStruct::Serialize(CArchive& ar) {
  if (ar.IsLoading()) {
    ar >> codes;
  } else {
    for (const std::int32_t code : codes) ar << code;
  }
}

bool operator<(const CAreaStruct& a, const CAreaStruct& b) noexcept {
  return std::lexicographical_compare(a.codes.begin(), a.codes.end(), b.codes.begin(),
                                      b.codes.end(), CodeLess);
}
