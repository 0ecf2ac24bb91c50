#include "platform/string.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>

namespace {

constexpr std::string_view kWhiteSpace = " \t\n\v\f\r";

int PositionOf(std::size_t found) noexcept {
  return found == std::string_view::npos ? -1 : static_cast<int>(found);
}

std::size_t AtLeastZero(int number) noexcept {
  return static_cast<std::size_t>(std::max(number, 0));
}

}  // namespace

char CString::GetAt(int index) const {
  if (index < 0 || index >= GetLength()) AfxThrowInvalidArgException();
  return text_[static_cast<std::size_t>(index)];
}

CString CString::Left(int count) const { return CString(View().substr(0, AtLeastZero(count))); }

CString CString::Right(int count) const {
  return CString(View().substr(text_.size() - std::min(text_.size(), AtLeastZero(count))));
}

CString CString::Mid(int first) const { return Mid(first, GetLength()); }

CString CString::Mid(int first, int count) const {
  const std::size_t from = std::min(text_.size(), AtLeastZero(first));
  return CString(View().substr(from, AtLeastZero(count)));
}

int CString::Find(char character, int start) const noexcept {
  return start < 0 ? -1 : PositionOf(text_.find(character, AtLeastZero(start)));
}

int CString::Find(const char* part, int start) const noexcept {
  return start < 0 ? -1 : PositionOf(View().find(OrEmpty(part), AtLeastZero(start)));
}

int CString::ReverseFind(char character) const noexcept {
  return PositionOf(text_.rfind(character));
}

void CString::Format(const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  std::va_list again;
  va_copy(again, arguments);
  const int length = std::vsnprintf(nullptr, 0, format, arguments);
  va_end(arguments);
  std::string printed(AtLeastZero(length), '\0');
  if (length > 0) std::vsnprintf(printed.data(), printed.size() + 1, format, again);
  va_end(again);
  if (length < 0) AfxThrowInvalidArgException();
  text_ = std::move(printed);
}

CString& CString::MakeUpper() {
  std::transform(text_.begin(), text_.end(), text_.begin(), [](char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  });
  return *this;
}

CString& CString::MakeLower() {
  std::transform(text_.begin(), text_.end(), text_.begin(), vexel::ToLowerAscii);
  return *this;
}

CString& CString::TrimLeft() {
  text_.erase(0, text_.find_first_not_of(kWhiteSpace));
  return *this;
}

CString& CString::TrimRight() {
  text_.erase(text_.find_last_not_of(kWhiteSpace) + 1);
  return *this;
}

int CString::CompareNoCase(const char* other) const noexcept {
  const std::string_view a = text_;
  const std::string_view b = OrEmpty(other);
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
