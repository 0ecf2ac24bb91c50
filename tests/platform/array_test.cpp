#include "platform/array.h"

#include <gtest/gtest.h>

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
