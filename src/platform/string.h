// 8-bit text. The bytes are UTF-8 by the custom of the library, but nothing here looks at that:
// lengths and positions count bytes, and letter case means that of ASCII.

#ifndef VEXEL_PLATFORM_STRING_H_
#define VEXEL_PLATFORM_STRING_H_

#include <compare>
#include <concepts>
#include <string>
#include <string_view>
#include <utility>

#include "platform/exceptions.h"
#include "platform/export.h"

// Text of a length of its own. It converts to `const char*`, so that it goes wherever C text does;
// what it converts to is good until the string is changed or gone. Null stands for the empty text
// wherever a `const char*` is taken. Parts that reach beyond the text are cut to it.
class VEXEL_API CString {
 public:
  CString() = default;
  CString(const char* text) : text_(OrEmpty(text)) {}  // NOLINT: implicit by custom
  explicit CString(std::string_view text) : text_(text) {}
  explicit CString(std::string&& text) noexcept : text_(std::move(text)) {}

  int GetLength() const noexcept { return static_cast<int>(text_.size()); }
  bool IsEmpty() const noexcept { return text_.empty(); }
  void Empty() noexcept { text_.clear(); }

  // The text with a closing 0. Valid until the string is changed.
  const char* GetString() const noexcept { return text_.c_str(); }
  operator const char*() const noexcept { return text_.c_str(); }  // NOLINT: implicit by custom
  std::string_view View() const noexcept { return text_; }

  // As a pointer it would always be true. IsEmpty tells.
  explicit operator bool() const = delete;

  // The character at a position; throws CInvalidArgException outside the text. The subscript also
  // takes the position behind the last character and gives 0 there.
  char GetAt(int index) const;
  template <std::integral Index>
  char operator[](Index index) const {
    if (std::cmp_less(index, 0) || std::cmp_greater(index, text_.size())) {
      AfxThrowInvalidArgException();
    }
    return text_.c_str()[index];
  }

  // The first and last characters, as many as there are, and those from a position on.
  CString Left(int count) const;
  CString Right(int count) const;
  CString Mid(int first) const;
  CString Mid(int first, int count) const;

  // Position of the first occurrence at or behind `start`, -1 when there is none. The empty text
  // occurs everywhere within the text and at its end.
  int Find(char character, int start = 0) const noexcept;
  int Find(const char* part, int start = 0) const noexcept;

  // Position of the last occurrence, -1 when there is none.
  int ReverseFind(char character) const noexcept;

  // Replaces the text by what printf would print in the locale of the process. An argument may come
  // from this string. Throws CInvalidArgException for a format that cannot be printed, and leaves
  // the text.
  void Format(const char* format, ...) __attribute__((format(printf, 2, 3)));

  CString& MakeUpper();
  CString& MakeLower();

  // Without the white space of ASCII (blanks, tabs, line ends) at its ends.
  CString& TrimLeft();
  CString& TrimRight();
  CString& Trim() { return TrimRight().TrimLeft(); }

  // 0 when equal, below or above 0 otherwise, by the values of the bytes; the second without regard
  // to letter case.
  int Compare(const char* other) const noexcept { return View().compare(OrEmpty(other)); }
  int CompareNoCase(const char* other) const noexcept;

  // Replaces the text and keeps the storage, so that a string reused for line after line
  // allocates nothing once it has reached its length.
  void Assign(std::string_view text) { text_.assign(text); }

  CString& operator+=(const CString& other) { return Append(other.text_); }
  CString& operator+=(const char* text) { return Append(OrEmpty(text)); }
  CString& operator+=(char character) { return Append({&character, 1}); }

  friend CString operator+(const CString& a, const CString& b) { return Sum(a.text_, b.text_); }
  friend CString operator+(const CString& a, const char* b) { return Sum(a.text_, OrEmpty(b)); }
  friend CString operator+(const char* a, const CString& b) { return Sum(OrEmpty(a), b.text_); }
  friend CString operator+(const CString& a, char b) { return Sum(a.text_, {&b, 1}); }
  friend CString operator+(char a, const CString& b) { return Sum({&a, 1}, b.text_); }
  // A number would be added to the pointer that the string converts to.
  template <std::integral Number>
  friend CString operator+(const CString& a, Number b) = delete;
  template <std::integral Number>
  friend CString operator+(Number a, const CString& b) = delete;

  friend bool operator==(const CString& a, const CString& b) noexcept { return a.text_ == b.text_; }
  friend bool operator==(const CString& a, const char* b) noexcept {
    return a.View() == OrEmpty(b);
  }
  friend auto operator<=>(const CString& a, const CString& b) noexcept {
    return a.View() <=> b.View();
  }
  friend auto operator<=>(const CString& a, const char* b) noexcept {
    return a.View() <=> OrEmpty(b);
  }

 protected:
  std::string text_;

 private:
  static constexpr std::string_view OrEmpty(const char* text) noexcept {
    return text == nullptr ? std::string_view() : std::string_view(text);
  }
  static CString Sum(std::string_view a, std::string_view b) {
    std::string sum;
    sum.reserve(a.size() + b.size());
    return CString(std::move(sum.append(a).append(b)));
  }
  CString& Append(std::string_view text) {
    text_ += text;
    return *this;
  }
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
