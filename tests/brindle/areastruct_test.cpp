#include "brindle/areastruct.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "platform/archive.h"
#include "support/files.h"

namespace vexel::test {
namespace {

CAreaStruct SomeKey() {
  CAreaStruct key;
  key.codes = {1, CAreaStruct::kUnset, -3, 0x01020304, 0, 6, 7, 8};
  return key;
}

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

TEST(AreaKey, IsEightLittleEndianNumbersInACompiledMap) {
  const TempDir dir;
  CFile file;
  ASSERT_NE(file.Open(dir.Path("key").c_str(), CFile::modeCreate | CFile::modeWrite), 0);
  {
    CArchive ar(&file, CArchive::store);
    SomeKey().Serialize(ar);
  }
  ASSERT_NE(file.Close(), 0);
  const std::string bytes = dir.Read("key");
  EXPECT_EQ(bytes.size(), 32U);
  EXPECT_EQ(bytes.substr(0, 16), std::string("\1\0\0\0\1\x1F\x0A\xFA\xFD\xFF\xFF\xFF\4\3\2\1", 16));
  ASSERT_NE(file.Open(dir.Path("key").c_str(), CFile::modeRead), 0);
  CArchive ar(&file, CArchive::load);
  CAreaStruct again;
  again.Serialize(ar);
  EXPECT_EQ(again, SomeKey());
}

TEST(AreaKey, ComesBackFromItsText) {
  CVELAString text = SomeKey().GetAreasStr();
  CAreaStruct again;
  for (std::int32_t& code : again.codes) {
    code = static_cast<std::int32_t>(text.GetToken(" ,", nullptr, 0).Val());
  }
  EXPECT_EQ(again, SomeKey());
  EXPECT_TRUE(text.IsEmpty());
}

}  // namespace
}  // namespace vexel::test
