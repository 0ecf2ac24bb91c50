#include "kit/classes/classes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <sstream>

namespace vexel::test {
namespace {

using Values = std::vector<double>;

constexpr double kMost = std::numeric_limits<double>::max();

// How many values each class holds.
std::vector<int> CountsOf(const Values& values, const Values& lower) {
  std::vector<int> counts(lower.size());
  for (const double value : values) {
    const auto above = std::upper_bound(lower.begin(), lower.end(), value);
    if (above != lower.begin()) ++counts[static_cast<std::size_t>(above - lower.begin()) - 1];
  }
  return counts;
}

// What makes bounds usable, whoever found them.
void ExpectLawful(const ClassBounds& bounds, const Values& values, int count) {
  const Values& lower = bounds.lower;
  ASSERT_EQ(lower.empty(), values.empty());
  EXPECT_LE(lower.size(), static_cast<std::size_t>(kMostClasses));
  EXPECT_TRUE(std::all_of(lower.begin(), lower.end(), [](double b) { return std::isfinite(b); }));
  EXPECT_EQ(std::adjacent_find(lower.begin(), lower.end(), std::greater_equal<>()), lower.end());
  if (values.empty()) return;
  EXPECT_LE(lower.front(), values.front());
  EXPECT_TRUE(lower.size() == static_cast<std::size_t>(count) || !bounds.note.empty());
}

double SumOfSquares(const Values& values, std::size_t from, std::size_t to) {
  long double sum = 0;
  for (std::size_t i = from; i < to; ++i) sum += values[i];
  const long double mean = sum / static_cast<long double>(to - from);
  long double squares = 0;
  for (std::size_t i = from; i < to; ++i) squares += (values[i] - mean) * (values[i] - mean);
  return static_cast<double>(squares);
}

double SumOfSquares(const Values& values, const Values& lower) {
  double total = 0.0;
  std::size_t from = 0;
  for (const int count : CountsOf(values, lower)) {
    const std::size_t to = from + static_cast<std::size_t>(count);
    if (to > from) total += SumOfSquares(values, from, to);
    from = to;
  }
  return total;
}

// The least sum of squares of all ways to cut, by trying each cut.
double LeastSumOfSquares(const Values& values, int count) {
  const std::size_t size = values.size();
  std::vector<Values> from(size, Values(size + 1));
  for (std::size_t i = 0; i < size; ++i) {
    for (std::size_t j = i + 1; j <= size; ++j) from[i][j] = SumOfSquares(values, i, j);
  }
  Values best = from[0];
  for (int classes = 2; classes <= count; ++classes) {
    for (std::size_t j = size; j > 0; --j) {
      for (std::size_t i = 1; i < j; ++i) best[j] = std::min(best[j], best[i] + from[i][j]);
    }
  }
  return best[size];
}

class Random {
 public:
  explicit Random(unsigned seed) : engine_(seed) {}

  int Below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(engine_); }

  // Sorted, with ties; at times far from 0, at times with values of another order.
  Values Sample(int most) {
    const int different = 1 + Below(30);
    const double offset = Below(3) == 0 ? 1e6 * Below(1000) : -different / 2;
    const double unit = std::pow(10.0, Below(7) - 3);
    Values values(static_cast<std::size_t>(1 + Below(most)));
    for (double& value : values) {
      value = (offset + Below(different)) * unit;
      if (Below(40) == 0) value *= 1e4;
    }
    std::sort(values.begin(), values.end());
    return values;
  }

 private:
  std::mt19937 engine_;
};

TEST(NaturalClasses, AreTheOptimum) {
  constexpr unsigned kSeed = 7;
  SCOPED_TRACE(testing::Message() << "seed " << kSeed);
  Random random(kSeed);
  for (int i = 0; i < 2000 && !testing::Test::HasFailure(); ++i) {
    const Values values = random.Sample(40);
    const int count = 1 + random.Below(kMostClasses);
    const double least = LeastSumOfSquares(values, count);
    const double found = SumOfSquares(values, NaturalClasses(values, count).lower);
    EXPECT_NEAR(found, least, 1e-9 * least) << i << ": " << testing::PrintToString(values);
  }
}

TEST(NaturalClasses, KeepTheirSenseAtAnyDistanceAndSize) {
  for (const auto& [values, lower] : std::vector<std::pair<Values, Values>>{
           // By far the largest, on either side, hides nothing of the small ones.
           {{1, 2, 3, 11, 12, 13, 1e12}, {1, 11, 1e12}},
           {{-1e12, 1, 2, 3, 11, 12, 13}, {-1e12, 1, 11}},
           {{0, 0, 0, 1e9, 1e9 + 1, 1e9 + 8, 1e9 + 9}, {0, 1e9, 1e9 + 8}},
           {{-kMost, -kMost, 0, 1, kMost}, {-kMost, 0, kMost}},
           // Of equal optima the one with the lowest bounds.
           {{0, 3, 4, 6, 7}, {0, 4}},
           {{1, 2, 3, 4}, {1, 2, 3}},
           {{0, 1, 2, 3, 4, 5, 6}, {0, 2, 4}}}) {
    EXPECT_EQ(NaturalClasses(values, static_cast<int>(lower.size())).lower, lower)
        << testing::PrintToString(values);
  }
}

TEST(Classes, OfSmallCasesWorkedOutByHand) {
  struct Case {
    std::string_view method;
    Values values;
    int count;
    Values lower;
    std::string_view note = "";
  };
  for (const Case& c : {
           Case{"counts",
                {1, 1, 1, 1, 1, 1, 2, 3},
                4,
                {1, 2},
                "2 groups instead of 4: there are only 3 different values"},
           Case{"counts", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, 3, {1, 4, 7}},
           Case{"widths", {0, 10}, 4, {0, 2.5, 5, 7.5}},
           Case{"widths", {-kMost, kMost}, 2, {-kMost, 0}},
           Case{"widths", {-kMost, kMost}, 1, {-kMost}},
           Case{"natural", {5, 5, 5}, 3, {5}, "1 group instead of 3: all values are equal"},
           Case{"natural", {}, 3, {}, "0 groups instead of 3: there are no values"},
           Case{"natural", {-0.0, 0.0, 1}, 2, {0, 1}},
           // Mean 5, deviation 2.
           Case{"deviation", {2, 4, 4, 4, 5, 5, 7, 9}, 2, {2, 5}},
           Case{"deviation", {2, 4, 4, 4, 5, 5, 7, 9}, 3, {2, 4, 6}},
           Case{"deviation", {2, 4, 4, 4, 5, 5, 7, 9}, 4, {1, 3, 5, 7}},
           Case{"deviation", {2, 4, 4, 4, 5, 5, 7, 9}, 7, {-2, 0, 2, 4, 6, 8, 10}, ""},
           // 1 of 2 values is above the mean, then 2 of 5; 2 of 10 and 1 of 2.
           Case{"head-tail",
                {1, 2},
                5,
                {1, 2},
                "2 groups instead of 5: there are only 2 different values"},
           Case{"head-tail", {1, 1, 1, 4, 5}, 3, {1, 4, 5}},
           Case{"head-tail",
                {1, 1, 1, 1, 1, 1, 1, 2, 30, 50},
                7,
                {1, 30, 50},
                "3 groups instead of 7: there are only 4 different values"},
           Case{"head-tail",
                {1, 2, 3, 4, 5, 6, 7, 8, 9, 10},
                3,
                {1, 6},
                "2 groups instead of 3: above the last bound there are no longer many small and "
                "few "
                "large values"},
           // The mean of neighbours rounds to the upper one.
           Case{"head-tail", {1 + 0x1p-52, 1 + 0x1p-51}, 2, {1 + 0x1p-52, 1 + 0x1p-51}},
           Case{"logarithm", {1, 5, 1000}, 3, {1, 10, 100}},
           Case{"logarithm", {0.01, 0.5, 100}, 4, {0.01, 0.1, 1, 10}},
           Case{"round", {0.3, 0.5, 0.9}, 7, {0.3, 0.4, 0.5, 0.6, 0.7, 0.8, 0.9}},
           Case{"round", {3, 60, 97}, 5, {0, 20, 40, 60, 80}},
           Case{"round", {3, 60, 97}, 4, {0, 25, 50, 75}},
           Case{"round",
                {-12, 60, 97},
                7,
                {-20, 0, 20, 40, 60, 80},
                "6 groups instead of 7: the bounds are 20 apart"},
           Case{"round",
                {0, 5, 12},
                6,
                {0, 2.5, 5, 7.5, 10},
                "5 groups instead of 6: the bounds are 2.5 apart"},
           Case{"round", {-kMost, 0, kMost}, 4, {-kMost, -1e308, 0, 1e308}},
       }) {
    const ClassMethod* method = FindClassMethod(c.method);
    ASSERT_NE(method, nullptr) << c.method;
    const ClassBounds bounds = method->find(c.values, c.count);
    EXPECT_EQ(bounds.lower, c.lower) << c.method << testing::PrintToString(c.values) << c.count;
    EXPECT_EQ(bounds.note, c.note) << c.method << testing::PrintToString(c.values) << c.count;
    EXPECT_FALSE(!bounds.lower.empty() && std::signbit(bounds.lower.front()) &&
                 bounds.lower.front() == 0.0);
  }
}

TEST(Classes, OfAnyValuesAndMethodAreLawful) {
  constexpr unsigned kSeed = 23;
  Random random(kSeed);
  std::vector<Values> samples = {{},
                                 {0},
                                 {-0.0, 0.0},
                                 {7, 7, 7},
                                 {1, std::nextafter(1.0, 2.0)},
                                 {1e15, 1e15 + 0.125},
                                 {5e-324, 1e-323},
                                 {-kMost, kMost},
                                 {-kMost, -1, 0, 0, 5e-324, 1, kMost},
                                 {1e-300, 1, 1e300}};
  for (int i = 0; i < 2000; ++i) samples.push_back(random.Sample(60));
  for (const ClassMethod& method : kClassMethods) {
    for (const Values& values : samples) {
      const int count = 1 + random.Below(kMostClasses);
      SCOPED_TRACE(testing::Message() << method.name << ' ' << count << " seed " << kSeed << ' '
                                      << testing::PrintToString(values));
      const double midpoint = values.empty() ? 0.0 : values[values.size() / 2];
      try {
        const ClassBounds bounds = method.find(values, count);
        ExpectLawful(bounds, values, count);
        const auto counts = CountsOf(values, bounds.lower);
        if (method.name == "round" && !values.empty()) {
          EXPECT_GT(std::min(counts.front(), counts.back()), 0);
        }
        ExpectLawful(ClassesWithZeroApart(values, count, method.find), values, count);
        const MidpointClasses around = ClassesAroundMidpoint(values, count, midpoint, method.find);
        ExpectLawful(around.bounds, values, count);
        EXPECT_TRUE(values.empty() || around.bounds.lower.at(around.firstAbove) == midpoint);
      } catch (const ClassError& error) {
        EXPECT_EQ(method.name, "logarithm") << error.what();
        EXPECT_LE(values.front(), 0.0);
      }
      if (testing::Test::HasFailure()) return;
    }
  }
}

TEST(Classes, RefuseWhatCannotBeDone) {
  const Values values = {-3, 1, 2};
  EXPECT_EQ(FindClassMethod("jenks"), nullptr);
  EXPECT_THROW(NaturalClasses(values, 0), ClassError);
  EXPECT_THROW(LogarithmClasses(Values{0, 5}, 2), ClassError);
  EXPECT_THROW(NaturalClasses(values, 8), ClassError);
  EXPECT_THROW(NaturalClasses(Values{2, 1}, 2), std::invalid_argument);
  EXPECT_THROW(NaturalClasses(Values{1, std::nan("")}, 2), std::invalid_argument);
  EXPECT_THROW(ClassesAroundMidpoint(values, 2, std::nan(""), NaturalClasses), ClassError);
  try {
    LogarithmClasses(values, 3);
    FAIL();
  } catch (const ClassError& error) {
    EXPECT_STREQ(error.what(),
                 "equal steps of the logarithm need values above 0; the least value is -3");
  }
}

TEST(ClassesWithZeroApart, GiveItAClassOfItsOwn) {
  struct Case {
    Values values;
    int count;
    Values lower;
    std::string_view note = "";
  };
  for (const Case& c : {
           Case{{0, 0, 0, 1, 2, 3, 4}, 3, {0, 1, 3}},
           Case{{-4, -3, -2, -1, 0, 1, 2}, 4, {-4, -2, 0, 1}},
           // One value below cannot use two classes.
           Case{{-1, -1, -1, -1, 0, 1, 2, 3}, 5, {-1, 0, 1, 2, 3}},
           Case{{-4, -3, -2, -1, 0, 1, 1, 1, 1}, 5, {-4, -3, -2, 0, 1}},
           Case{{-1, 0, 1}, 1, {-1, 0, 1}, "3 groups instead of 1"},
           Case{{-2, -1, 0}, 3, {-2, -1, 0}},
           Case{{1, 2, 3}, 3, {1, 2, 3}, "no group for 0: no value is 0"},
           Case{{0, 0}, 2, {0}, "1 group instead of 2: all values are equal"},
       }) {
    const ClassBounds bounds = ClassesWithZeroApart(c.values, c.count, EqualCountClasses);
    EXPECT_EQ(bounds.lower, c.lower) << testing::PrintToString(c.values);
    EXPECT_EQ(bounds.note, c.note) << testing::PrintToString(c.values);
  }
  // What is below 0 is no hindrance to a logarithm of what is above; round bounds leave it its
  // room.
  EXPECT_EQ(ClassesWithZeroApart(Values{0, 1, 5, 1000}, 4, LogarithmClasses).lower,
            (Values{0, 1, 10, 100}));
  EXPECT_EQ(ClassesWithZeroApart(Values{0, 3, 60, 97}, 6, RoundClasses).lower,
            (Values{0, 3, 20, 40, 60, 80}));
}

TEST(ClassesAroundMidpoint, TellWhereItFalls) {
  struct Case {
    Values values;
    int count;
    double midpoint;
    Values lower;
    std::size_t firstAbove;
    std::string_view note = "";
  };
  for (const Case& c : {
           Case{{1, 2, 3, 4, 5, 6, 7, 8}, 4, 5, {1, 3, 5, 7}, 2},
           Case{{1, 2, 3, 4, 5, 6, 7, 8}, 4, 6.5, {1, 3, 5, 6.5}, 3},
           Case{{1, 2, 3, 4}, 1, 2, {1, 2}, 1, "2 groups instead of 1"},
           Case{{1, 2, 3, 4}, 2, 0, {0, 3}, 0, "midpoint: no value is below it"},
           Case{{1, 2, 3, 4}, 2, 9, {1, 3}, 2, "midpoint: all values are below it"},
           Case{{}, 2, 9, {}, 0, "0 groups instead of 2: there are no values"},
       }) {
    const MidpointClasses found =
        ClassesAroundMidpoint(c.values, c.count, c.midpoint, EqualCountClasses);
    EXPECT_EQ(found.bounds.lower, c.lower) << c.midpoint;
    EXPECT_EQ(found.firstAbove, c.firstAbove) << c.midpoint;
    EXPECT_EQ(found.bounds.note, c.note) << c.midpoint;
  }
}

}  // namespace
}  // namespace vexel::test
