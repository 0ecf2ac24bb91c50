// Strings with the operations of the map files, and number text.

#ifndef VEXEL_BRINDLE_TEXT_H_
#define VEXEL_BRINDLE_TEXT_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "platform/export.h"
#include "platform/remark.h"
#include "platform/string.h"

class VEXEL_API CVELAString : public CString {
 public:
  CVELAString() = default;
  CVELAString(const CString& text) : CString(text) {}        // NOLINT: implicit by custom
  CVELAString(CString&& text) : CString(std::move(text)) {}  // NOLINT: implicit by custom
  CVELAString(const char* text) : CString(text) {}           // NOLINT: implicit by custom
  explicit CVELAString(std::string_view text) : CString(text) {}

  // For short texts; readers of whole files use vexel::TakeToken, which moves nothing.
  // Returns the next token and removes it, with what stands before it, from the front of the
  // string; empty when none is left. Runs of delimiters are skipped. The last two arguments are
  // not used.
  CVELAString GetToken(const char* delimiters, char* unused, int unusedToo);

  // Nonzero when the text is a whole number: an optional sign and digits, nothing else.
  int IsNumeric() const noexcept;

  // The whole number at the front of the text, after blanks; 0 for text without digits. A number
  // beyond 64 bits becomes the nearest that they hold.
  std::int64_t Val() const noexcept;

  // Replaces the text by the value in decimal. The width is -1 and the pad a blank: no padding.
  void Str(std::int64_t value, int width, char pad);

  // Shows the text in a modal box of the host and returns the answer.
  int MessageBoxA(int flags) const;
};

// The number as text: the correctly rounded decimal with that many decimals, digits grouped by
// three. A separator of code 0 is left out. A value that rounds to zero has no minus sign. The
// text stays good until the next call on the same thread; the last argument is 1.
VEXEL_API char* d2txt(double value, unsigned decimals, char thousand, char decimal, int);

// The reverse: thousands separators are passed over, and the longest number at the front of the
// text counts; 0 when there is none. The result is finite and lies strictly between the lowest and
// the largest double, which stand for other things in a data set.
VEXEL_API double txt2d(const char* text, char thousand, char decimal);

// The number at the front of the text with "." as decimal separator, after blanks; 0 when there is
// none. Numbers beyond the range of a double become the largest or lowest one. The second argument
// is 0.
VEXEL_API double atod(const char* text, unsigned);

// The next token of `text`, which is cut in place; null for `text` continues the same string. Runs
// of delimiters are skipped. Never null: the empty text means that none is left. The position is
// kept per thread. The last argument is not used.
VEXEL_API char* strtoken(char* text, const char* delimiters, char* unused);

namespace vexel {

// The cursors below do what the operations above do, without copies or hidden state, for readers
// that go through every line of a file.

// Takes the next token off the front of the text; empty when none is left.
VEXEL_API std::string_view TakeToken(std::string_view& text, std::string_view delimiters) noexcept;

// Takes a plain decimal off the front of the text, up to the first character that is part of none:
// an optional minus sign and up to 15 digits with at most one point among them, which is what files
// hold. False, with the text as it was, when none stands there; ToNumber knows all forms.
VEXEL_API bool TakePlainDecimal(std::string_view& text, double& value) noexcept;

// How much of a text is the number that it is read as. Blanks at its ends do not count.
enum class NumberFit {
  whole,        // all of it
  inPart,       // something else stands behind the number
  none,         // there is no number
  beyondRange,  // the number is none that can be held
  oddGrouping,  // thousands separators do not part groups of three
};

struct NumberReading {
  double value = 0.0;
  NumberFit fit = NumberFit::whole;
};

// What ToNumber gives, with the fit; and the fit of what CVELAString::Val gives, of which the low
// 32 bits are kept.
VEXEL_API NumberReading ReadNumber(std::string_view text) noexcept;
VEXEL_API NumberReading ReadNumber(std::string_view text, char thousand, char decimal);
VEXEL_API NumberFit FitOfInt32(std::string_view text) noexcept;

// The remark that a fit calls for, if it is not whole.
constexpr RemarkKind RemarkKindOf(NumberFit fit) noexcept {
  switch (fit) {
    case NumberFit::none:
      return RemarkKind::notANumber;
    case NumberFit::beyondRange:
      return RemarkKind::beyondRange;
    case NumberFit::oddGrouping:
      return RemarkKind::oddGrouping;
    default:
      return RemarkKind::numberInPart;
  }
}

VEXEL_API bool IsUtf8(std::string_view text) noexcept;

// Equal but for blanks and tabs, wherever they are, and letter case.
VEXEL_API bool EqualButForBlanks(std::string_view a, std::string_view b) noexcept;

VEXEL_API bool IsWholeNumber(std::string_view text) noexcept;
VEXEL_API std::int64_t ToWholeNumber(std::string_view text) noexcept;
VEXEL_API double ToNumber(std::string_view text) noexcept;
VEXEL_API double ToNumber(std::string_view text, char thousand, char decimal);

}  // namespace vexel

#endif  // VEXEL_BRINDLE_TEXT_H_
