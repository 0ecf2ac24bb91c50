#include "platform/array.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace vexel::test {
namespace {

template <typename T>
std::vector<int> CapacitiesWhileAdding(GrowArray<T>& array, int count) {
  std::vector<int> capacities;
  for (int i = 0; i < count; ++i) {
    array.Add(T());
    if (capacities.empty() || capacities.back() != array.GetCapacity()) {
      capacities.push_back(array.GetCapacity());
    }
  }
  return capacities;
}

TEST(GrowArray, CapacityFollowsTheGrowBy) {
  GrowArray<int> fixed(25);
  EXPECT_EQ(CapacitiesWhileAdding(fixed, 60), (std::vector<int>{25, 50, 75}));
  GrowArray<std::string> eighths;
  EXPECT_EQ(CapacitiesWhileAdding(eighths, 60),
            (std::vector<int>{1, 5, 9, 13, 17, 21, 25, 29, 33, 37, 41, 46, 51, 57, 64}));
  GrowArray<char> large;
  large.SetSize(20000);
  large.Add('x');
  EXPECT_EQ(large.GetCapacity(), 21024);
  large.SetSize(30000);
  EXPECT_EQ(large.GetCapacity(), 30000);
  large.SetSize(7);
  EXPECT_EQ(large.GetCapacity(), 30000);
  large.SetSize(0);
  EXPECT_EQ(large.GetCapacity(), 0);
}

TEST(GrowArray, ExtendingEndsAsAddingOneByOneDoes) {
  for (const auto& [growBy, before, more] : {std::array{25, 24, 27}, {0, 26, 1000}}) {
    GrowArray<int> extended(growBy);
    GrowArray<int> added(growBy);
    for (int i = 0; i < before; ++i) extended.Add(7);
    std::fill_n(extended.Extend(more), more, 7);
    for (int i = 0; i < before + more; ++i) added.Add(7);
    EXPECT_EQ(extended.GetCapacity(), added.GetCapacity());
    EXPECT_TRUE(std::ranges::equal(extended, added));
  }
}

TEST(GrowArray, WhatIsTakenOutIsDestroyed) {
  const auto counted = std::make_shared<int>(0);
  GrowArray<std::shared_ptr<int>> array(25);
  for (int i = 0; i < 10; ++i) array.Add(counted);
  array.RemoveAt(3);
  array.RemoveAt(8);
  EXPECT_EQ(counted.use_count(), 9);
  array.SetSize(4);
  EXPECT_EQ(counted.use_count(), 5);
  GrowArray<std::shared_ptr<int>> other;
  other.Add(counted);
  other = std::move(array);
  EXPECT_EQ(counted.use_count(), 5);
  other.RemoveAll();
  other.Add(nullptr);
  EXPECT_EQ(counted.use_count(), 1);
  EXPECT_EQ(other.GetCapacity(), 25);  // the grow-by has come along
}

TEST(GrowArray, ElementsThatOwnSurviveEveryMove) {
  GrowArray<std::unique_ptr<std::string>> array;
  for (int i = 0; i < 100; ++i) {
    array.InsertAt(i / 2, std::make_unique<std::string>(std::to_string(i)));
  }
  array.RemoveAt(0);
  array.RemoveAt(98);
  array.InsertAt(99, std::make_unique<std::string>("last"));
  EXPECT_EQ(array.GetSize(), 100);
  EXPECT_EQ(array[98], nullptr);
  EXPECT_EQ(*array[99], "last");
  EXPECT_EQ(*array[0], "3");
  GrowArray<std::unique_ptr<std::string>> taken(std::move(array));
  EXPECT_EQ(*taken[48], "99");
  taken.SetSize(1);
  EXPECT_EQ(*taken[0], "3");
}

TEST(GrowArray, NewElementsAreZeroAndIndexesTested) {
  GrowArray<double> array;
  array.Add(5);
  array.SetSize(1000);
  EXPECT_EQ(array[999], 0.0);
  EXPECT_THROW(array[1000], CInvalidArgException);
  EXPECT_THROW(array[-1], CInvalidArgException);
  EXPECT_THROW(array.SetSize(-1), CInvalidArgException);
  EXPECT_THROW(array.InsertAt(-1, 0), CInvalidArgException);
  EXPECT_THROW(array.RemoveAt(1000), CInvalidArgException);
  EXPECT_THROW(array.InsertAt(std::numeric_limits<int>::max(), 0), std::bad_alloc);
  EXPECT_THROW(array.Extend(std::numeric_limits<int>::max()), std::bad_alloc);
}

}  // namespace
}  // namespace vexel::test
