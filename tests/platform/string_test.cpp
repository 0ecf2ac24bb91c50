#include "platform/string.h"

#include <gtest/gtest.h>

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
  EXPECT_EQ(text.Find('x'), -1);
  EXPECT_EQ(text.Find('.'), 5);
  EXPECT_EQ(text.GetAt(8), 'c');
  EXPECT_THROW(text.GetAt(9), CInvalidArgException);
  EXPECT_THROW(text.GetAt(-1), CInvalidArgException);
  EXPECT_EQ(text.MakeUpper(), "\u00E9T{E.MPC");
  EXPECT_EQ(TrimBlanks(" \t a b\t "), "a b");
  EXPECT_EQ(TrimBlanks(" \t"), "");
}

}  // namespace
}  // namespace vexel::test
