#include "platform/string.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <cwchar>
#include <string_view>

#include "platform/exceptions.h"

namespace vexel::test {
namespace {

TEST(String, ComparesWithoutCaseByUnsignedBytesAndThenByLength) {
  struct Case {
    const char *a, *b;
    int sign;
  };
  for (const Case& c :
       {Case{"", "", 0}, Case{"MiXed", "mIxED", 0}, Case{"a", "B", -1}, Case{"b", "A", 1},
        Case{"ab", "abc", -1}, Case{"abc", "AB", 1}, Case{"\u00E9", "z", 1}, Case{"[", "a", -1},
        Case{"\u00E9", "\u00C9", 1}, Case{"a", nullptr, 1}}) {
    const int result = CString(c.a).CompareNoCase(c.b);
    EXPECT_EQ((result > 0) - (result < 0), c.sign) << c.a;
  }
}

TEST(String, PartsStayWithinTheText) {
  CString text("\u00E9t{e.mpc");
  EXPECT_EQ(text.Right(3), "mpc");
  EXPECT_EQ(text.Right(99), text);
  EXPECT_EQ(text.Right(-1), "");
  EXPECT_EQ(text.GetAt(8), 'c');
  EXPECT_THROW(text.GetAt(9), CInvalidArgException);
  EXPECT_THROW(text.GetAt(-1), CInvalidArgException);
  EXPECT_EQ(text[9], '\0');
  EXPECT_THROW(text[10], CInvalidArgException);
  EXPECT_THROW(text[-1L], CInvalidArgException);
  EXPECT_THROW(text[~std::size_t{0}], CInvalidArgException);
  struct Case {
    int first, count;
    const char *left, *mid, *fromFirst;
  };
  const CString word("abc");
  for (const Case& c :
       {Case{0, 2, "ab", "ab", "abc"}, Case{-1, 1, "a", "a", "abc"}, Case{2, 9, "abc", "c", "c"},
        Case{3, 1, "a", "", ""}, Case{99, -1, "", "", ""}, Case{1, INT_MAX, "abc", "bc", "bc"}}) {
    EXPECT_EQ(word.Left(c.count), c.left);
    EXPECT_EQ(word.Mid(c.first, c.count), c.mid) << c.first;
    EXPECT_EQ(word.Mid(c.first), c.fromFirst) << c.first;
  }
  EXPECT_EQ(text.MakeUpper(), "\u00E9T{E.MPC");
  EXPECT_EQ(text.MakeLower(), "\u00E9t{e.mpc");
  EXPECT_EQ(TrimBlanks(" \t a b\t "), "a b");
  EXPECT_EQ(TrimBlanks(" \t"), "");
}

TEST(String, FindsFromAPositionOn) {
  const CString text("a.b.");
  struct Case {
    const char* part;
    int start, position;
  };
  for (const Case& c :
       {Case{".", 0, 1}, Case{".", 2, 3}, Case{".", 4, -1}, Case{".", -1, -1}, Case{"b.", 0, 2},
        Case{"b.a", 0, -1}, Case{"", 4, 4}, Case{nullptr, 1, 1}, Case{"", 5, -1}}) {
    EXPECT_EQ(text.Find(c.part, c.start), c.position) << c.start;
    if (c.part != nullptr && *c.part == '.') {
      EXPECT_EQ(text.Find('.', c.start), c.position) << c.start;
    }
  }
  EXPECT_EQ(text.ReverseFind('.'), 3);
  EXPECT_EQ(text.ReverseFind('x'), -1);
}

TEST(String, TrimsAndPrintsInPlace) {
  CString text(" \t\r\n\u00A0x \v\f");
  EXPECT_EQ(text.TrimRight(), " \t\r\n\u00A0x");
  EXPECT_EQ(text.TrimLeft(), "\u00A0x");
  EXPECT_EQ(CString(" \n ").Trim(), "");
  text.Format("%s|%s", text.GetString(), text.GetString());
  EXPECT_EQ(text, "\u00A0x|\u00A0x");
  constexpr wint_t kNoCharacter = 0xD800;
  EXPECT_THROW(text.Format("%lc", kNoCharacter), CInvalidArgException);
  EXPECT_EQ(text.GetLength(), 7);
}

TEST(String, WithAZeroInItIsAddedAndComparedWhole) {
  using namespace std::string_view_literals;
  const CString text("a\0b"sv);
  EXPECT_EQ((text + "x" + 'y' + text).View(), "a\0bxya\0b"sv);
  EXPECT_NE(text, "a");
  EXPECT_GT(text, CString("a"));
  EXPECT_LT("z", CString("\u00E9"));
}

}  // namespace
}  // namespace vexel::test
