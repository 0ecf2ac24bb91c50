#include "platform/string.h"

#include <algorithm>

#include "platform/exceptions.h"

char CString::GetAt(int index) const {
  if (index < 0 || index >= GetLength()) AfxThrowInvalidArgException();
  return text_[static_cast<std::size_t>(index)];
}

CString CString::Right(int count) const {
  const auto kept = std::min(text_.size(), static_cast<std::size_t>(std::max(count, 0)));
  return CString(View().substr(text_.size() - kept));
}

int CString::Find(char character) const noexcept {
  const std::size_t found = text_.find(character);
  return found == std::string::npos ? -1 : static_cast<int>(found);
}

CString& CString::MakeUpper() {
  std::transform(text_.begin(), text_.end(), text_.begin(), [](char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  });
  return *this;
}

int CString::CompareNoCase(const char* other) const noexcept {
  const std::string_view a = text_;
  const std::string_view b = other == nullptr ? "" : other;
  const auto shared = static_cast<std::ptrdiff_t>(std::min(a.size(), b.size()));
  const auto [inA, inB] = std::mismatch(
      a.begin(), a.begin() + shared, b.begin(),
      [](char x, char y) { return vexel::ToLowerAscii(x) == vexel::ToLowerAscii(y); });
  if (inA != a.begin() + shared) {
    const auto x = static_cast<unsigned char>(vexel::ToLowerAscii(*inA));
    const auto y = static_cast<unsigned char>(vexel::ToLowerAscii(*inB));
    return x < y ? -1 : 1;
  }
  return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

namespace vexel {

bool EqualNoCase(std::string_view a, std::string_view b) noexcept {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return ToLowerAscii(x) == ToLowerAscii(y); });
}

std::string_view TrimBlanks(std::string_view text) noexcept {
  constexpr std::string_view kBlanks = " \t";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

}  // namespace vexel
