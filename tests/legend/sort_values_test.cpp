#include "legend/sort_values.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <random>
#include <vector>

namespace vexel::test {
namespace {

struct Kind {
  const char* name;
  std::function<double(std::mt19937_64&)> make;
};

TEST(SortValuesTest, GivesTheOrderOfComparisonsBitForBit) {
  const auto uniform = [](double least, double most) {
    return [=](auto& random) { return std::uniform_real_distribution(least, most)(random); };
  };
  const std::vector<Kind> kinds{
      {"around 0", uniform(-1e3, 1e3)},
      {"rates", [=](auto& random) { return std::round(uniform(0, 30)(random) * 10) / 10; }},
      {"alike", [](auto&) { return -4.25; }},
      {"missing",
       [=](auto& random) {
         return random() % 3 == 0 ? std::numeric_limits<double>::lowest() : uniform(0, 9)(random);
       }},
      {"zeros of both signs", [](auto& random) { return random() % 2 == 0 ? 0.0 : -0.0; }},
      {"any bits", [](auto& random) {
         const auto value = std::bit_cast<double>(random());
         return value == value ? value : std::numeric_limits<double>::infinity();
       }}};
  std::mt19937_64 random(31);
  for (const auto& [name, make] : kinds) {
    for (const std::size_t size : {0U, 1U, 100U, 2047U, 2048U, 30'000U}) {
      std::vector<double> values(size);
      std::generate(values.begin(), values.end(), [&, draw = make] { return draw(random); });
      std::vector<double> expected = values;
      std::sort(expected.begin(), expected.end());
      SortValues(values);
      const auto isSame = [](double a, double b) {
        return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
      };
      EXPECT_TRUE(std::equal(values.begin(), values.end(), expected.begin(), isSame))
          << name << ", " << size;
    }
  }
}

}  // namespace
}  // namespace vexel::test
