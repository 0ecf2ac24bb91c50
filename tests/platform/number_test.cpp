#include "platform/number.h"

#include <gtest/gtest.h>

#include <limits>

namespace vexel::test {
namespace {

TEST(Numbers, SaturateInsteadOfOverflowing) {
  constexpr int kMost = std::numeric_limits<int>::max();
  constexpr int kLeast = std::numeric_limits<int>::min();
  EXPECT_EQ(TruncateToInt(-1.999), -1);
  EXPECT_EQ(TruncateToInt(2147483647.5), kMost);
  EXPECT_EQ(TruncateToInt(-1e300), kLeast);
  EXPECT_EQ(TruncateToInt(std::numeric_limits<double>::quiet_NaN()), 0);
  EXPECT_EQ(NarrowToFloat(1e300), std::numeric_limits<float>::max());
  EXPECT_EQ(LowInt32(0x1'0000'0005), 5);
  EXPECT_EQ(LowInt32(0xFFFFFFFF), -1);
}

}  // namespace
}  // namespace vexel::test
