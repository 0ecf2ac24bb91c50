#include "brindle/areastruct.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace vexel::test {
namespace {

TEST(AreaKey, KnowTheirLevelTextsAndOrder) {
  const auto key = [](std::initializer_list<std::int32_t> codes) {
    CAreaStruct made;
    std::copy(codes.begin(), codes.end(), made.codes.begin());
    return made;
  };
  constexpr std::int32_t kUnset = CAreaStruct::kUnset;
  EXPECT_EQ(key({}).GetLevel(), 0);
  EXPECT_EQ(key({}).GetLevelWithLeadingZeros(), 1);
  EXPECT_EQ(key({}).GetAreasStr(), "");
  EXPECT_EQ(key({12, kUnset, 3}).GetLevel(), 3);
  EXPECT_EQ(key({12, kUnset, 3}).GetAreasStr(), "12, -99999999, 3");
  EXPECT_EQ(key({12, 0}).GetURL(), "A0=12&A1=0");
  const std::vector<CAreaStruct> ascending{key({}),      key({-200000000}), key({1}),
                                           key({1, -5}), key({1, 2}),       key({2})};
  for (std::size_t i = 0; i < ascending.size(); ++i) {
    for (std::size_t j = 0; j < ascending.size(); ++j) {
      EXPECT_EQ(ascending[i] < ascending[j], i < j) << i << ' ' << j;
      EXPECT_EQ(ascending[i] == ascending[j], i == j);
    }
  }
}

}  // namespace
}  // namespace vexel::test
