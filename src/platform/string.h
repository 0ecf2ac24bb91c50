// 8-bit text. The bytes are UTF-8 by the custom of the library, but nothing here looks at that:
// lengths and positions count bytes, and letter case means that of ASCII.

#ifndef VEXEL_PLATFORM_STRING_H_
#define VEXEL_PLATFORM_STRING_H_

#include <string>
#include <string_view>
#include <utility>

#include "platform/export.h"

class VEXEL_API CString {
 public:
  CString() = default;
  CString(const char* text) : text_(text == nullptr ? "" : text) {}  // NOLINT: implicit by custom
  explicit CString(std::string_view text) : text_(text) {}
  explicit CString(std::string&& text) noexcept : text_(std::move(text)) {}

  int GetLength() const noexcept { return static_cast<int>(text_.size()); }
  bool IsEmpty() const noexcept { return text_.empty(); }

  // The text with a closing 0. Valid until the string is changed.
  const char* GetString() const noexcept { return text_.c_str(); }
  std::string_view View() const noexcept { return text_; }

  // The character at a position; throws CInvalidArgException outside the text.
  char GetAt(int index) const;

  // The last characters, as many as there are.
  CString Right(int count) const;

  // Position of the first occurrence, -1 when there is none.
  int Find(char character) const noexcept;

  CString& MakeUpper();

  // 0 when equal without regard to letter case, below or above 0 otherwise.
  int CompareNoCase(const char* other) const noexcept;

  // Replaces the text and keeps the storage, so that a string reused for line after line
  // allocates nothing once it has reached its length.
  void Assign(std::string_view text) { text_.assign(text); }

  CString& operator+=(const CString& other) {
    text_ += other.text_;
    return *this;
  }
  CString& operator+=(char character) {
    text_ += character;
    return *this;
  }

  friend CString operator+(const CString& a, const CString& b) {
    std::string sum;
    sum.reserve(a.text_.size() + b.text_.size());
    return CString(std::move(sum.append(a.text_).append(b.text_)));
  }
  friend bool operator==(const CString& a, const CString& b) noexcept { return a.text_ == b.text_; }
  friend bool operator==(const CString& a, const char* b) noexcept {
    return a.View() == std::string_view(b == nullptr ? "" : b);
  }
  friend bool operator<(const CString& a, const CString& b) noexcept { return a.text_ < b.text_; }

 protected:
  std::string text_;
};

namespace vexel {

// Letter case of ASCII, whatever the process's locale is.
constexpr char ToLowerAscii(char c) noexcept {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

VEXEL_API bool EqualNoCase(std::string_view a, std::string_view b) noexcept;

// The text without blanks and tabs at its ends.
VEXEL_API std::string_view TrimBlanks(std::string_view text) noexcept;

}  // namespace vexel

#endif  // VEXEL_PLATFORM_STRING_H_
