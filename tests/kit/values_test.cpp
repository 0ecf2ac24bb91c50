// Values that a request refuses, each of them beside the nearest that it takes.

#include <gtest/gtest.h>

#include "kit/request/error.h"
#include "kit/request/query.h"

namespace vexel::test {
namespace {

TEST(Values, AreTakenUpToTheirBounds) {
  constexpr struct {
    const char* taken;
    const char* refused;
  } kPairs[] = {
      {"separators=%2C", "separators="},
      {"separators=.%2C", "separators=.."},
      {"separators=%27.", "separators=%27.%2C"},
      {"separators=%20.", "separators=%09."},
      {"separators=a.", "separators=5."},
      {"separators=_", "separators=-"},
      {"separators=*.", "separators=%2B."},
      {"size=1x65535", "size=1x65536"},
      {"size=65535x1", "size=0x1"},
      {"size=1x1", "size=1"},
      {"zoom=1,2,3,4,5,6,7,8", "zoom=1,2,3,4,5,6,7,8,9"},
      {"midpoint=-1e308", "midpoint=1e309"},
      {"midpoint=0.5", "midpoint=0.5x"},
      {"midpoint=0", "midpoint=inf"},
      {"bounds=1,2,3,4,5,6,7", "bounds=1,2,3,4,5,6,7,8"},
  };
  for (const auto& [taken, refused] : kPairs) {
    Request request;
    EXPECT_NO_THROW(ReadQuery(request, taken)) << taken;
    EXPECT_THROW(ReadQuery(request, refused), Error) << refused;
  }
}

}  // namespace
}  // namespace vexel::test
