#include "data/areaindex.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <random>

#include "data/areadata.h"

namespace vexel::test {
namespace {

CAreaStruct Key(int first, int second) {
  CAreaStruct key;
  key.codes[0] = first;
  if (second != 0) key.codes[1] = second;
  return key;
}

class AreaIndexTest : public testing::Test {
 protected:
  void Add(const CAreaStruct& key) {
    rows_.emplace_back(key);
    index_.Add(&rows_.back());
  }

  // What a search from the front finds.
  void ExpectFound(const CAreaStruct& key) {
    const auto first = std::find_if(rows_.begin(), rows_.end(),
                                    [&](const CAreaData& row) { return row.area == key; });
    ASSERT_EQ(index_.Find(key), first == rows_.end() ? nullptr : &*first)
        << key.GetAreasStr().GetString() << " of " << rows_.size();
  }

  std::deque<CAreaData> rows_;
  AreaIndex<CAreaData> index_;
};

TEST_F(AreaIndexTest, FindsTheFirstOfEachKeyWhateverTheirOrder) {
  std::mt19937 random(7);
  const auto any = [&](int most) { return std::uniform_int_distribution<int>(-3, most)(random); };
  for (int round = 0; round < 300; ++round) {
    rows_.clear();
    index_ = {};
    std::vector<CAreaStruct> keys;
    const int most = 1 + round % 40;
    for (int i = 0; i < round; ++i) keys.push_back(Key(any(most), any(most)));
    std::sort(keys.begin(), keys.end());
    if (round % 3 != 0) keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
    if (round % 3 == 2 && keys.size() > 1) std::swap(keys.back(), keys[keys.size() / 2]);
    for (const CAreaStruct& key : keys) Add(key);
    for (const CAreaStruct& key : keys) ExpectFound(key);
    for (int i = 0; i < 100; ++i) ExpectFound(Key(any(most + 1), any(most + 1)));
    std::sort(keys.begin(), keys.end());
    for (const CAreaStruct& key : keys) {
      ExpectFound(key);
      ExpectFound(Key(key.codes[0], key.codes[1] + 1));
    }
  }
}

TEST_F(AreaIndexTest, NumbersKeysInTheOrderOfAddingOnceEach) {
  for (const int code : {1, 2, 2, 5, 3, 1}) Add(Key(code, 0));
  EXPECT_EQ(index_.GetCount(), 4U);
  EXPECT_EQ(index_.FindEntry(Key(3, 0)), 3U);
  EXPECT_EQ(index_.FindEntry(Key(2, 0)), 1U);
  EXPECT_EQ(index_.FindEntry(Key(4, 0)), index_.kNoEntry);
}

}  // namespace
}  // namespace vexel::test
