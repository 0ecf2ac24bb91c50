// Fisher's dynamic programme: the best c+1 classes of the first j values are the best c classes of
// the first i, and one class of the rest, for the best i. The best i rises with j (the sums of
// squares meet the quadrangle inequality), so that a row of the table is filled by halving: the
// best i of the middle bounds those of either side. That makes O(k n log n) sums of squares.
//
// Places count the different values in ascending order; a place also stands for all that is before
// it. Memory not touched before costs as much time as the work on it, so nothing is kept twice.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

#include "kit/classes/common.h"
#include "kit/classes/twofold.h"

namespace vexel {
namespace {

using Place = std::uint32_t;

struct Range {
  Place first;
  Place last;
};

// Sums over the values before a place, less those before the middle one; values are counted from
// the middle one, too. A class far from both ends of the values then does not drown in what lies
// there.
class Sums {
 public:
  // The part in doubles, side by side for the estimates.
  struct High {
    double sum = 0.0;
    double squares = 0.0;
  };

  explicit Sums(std::span<const double> values)
      : values_(values), scale_(std::ldexp(1.0, std::min(-ExponentOf(values), kMostScaling))) {
    firsts_.reserve(values.size() + 1);
    for (std::size_t i = 0; i < values.size(); ++i) {
      if (i == 0 || values[i] != values[i - 1]) firsts_.push_back(static_cast<Place>(i));
    }
    firsts_.push_back(static_cast<Place>(values.size()));
    highs_.resize(firsts_.size());
    lows_.resize(firsts_.size());
    origin_ = Value(End() / 2) * scale_;
    for (Place place = End() / 2; place < End(); ++place) Carry(place, place + 1, 1.0);
    for (Place place = End() / 2; place > 0; --place) Carry(place, place - 1, -1.0);
  }

  // The place behind all values.
  Place End() const { return static_cast<Place>(firsts_.size() - 1); }
  double Value(Place place) const { return values_[firsts_[place]]; }
  const High& HighAt(Place place) const { return highs_[place]; }
  // How many values there are from one place to before another.
  double Weight(Place from, Place to) const {
    return static_cast<double>(static_cast<std::int32_t>(firsts_[to] - firsts_[from]));
  }

  // Scaled, and counted from the middle one, as in the sums.
  Twofold Offset(Place place) const { return ExactSum(Value(place) * scale_, -origin_); }

  // The sum of squared deviations from their mean, for the values from one place to before another.
  // What cancels is computed in double the digits; the result has those of a double.
  double Deviations(Place from, Place to) const {
    const Twofold sum = Sum(to) - Sum(from);
    const double weight = Weight(from, to);
    const double mean = sum.high / weight;
    // The square of the sum over the weight is (sum + rest) * mean, but for the square of the rest,
    // which is what the rounding of the mean leaves.
    const Twofold rounded = ExactProduct(mean, weight);
    const double rest = (sum.high - rounded.high) + (sum.low - rounded.low);
    const Twofold product = ExactProduct(sum.high, mean);
    const Twofold squares = ExactSum(highs_[to].squares, -highs_[from].squares);
    const double low = squares.low + (lows_[to].squares - lows_[from].squares);
    return (squares.high - product.high) + (low - (product.low + (sum.low + rest) * mean));
  }

 private:
  // Values that need more are large enough after that.
  static constexpr int kMostScaling = 1000;

  struct Low {
    double sum = 0.0;
    double squares = 0.0;
  };

  Twofold Sum(Place place) const { return {highs_[place].sum, lows_[place].sum}; }
  Twofold Squares(Place place) const { return {highs_[place].squares, lows_[place].squares}; }

  // Sets the sums of the place next to one that has them.
  void Carry(Place from, Place to, double sign) {
    const Place place = std::min(from, to);
    const double weight = sign * Weight(place, place + 1);
    const Twofold offset = Offset(place);
    const Twofold part = offset * weight;
    const Twofold sum = Sum(from) + part;
    const Twofold squares = Squares(from) + part * offset;
    highs_[to] = {sum.high, squares.high};
    lows_[to] = {sum.low, squares.low};
  }

  std::span<const double> values_;
  // A power of two: the products are exact.
  double scale_;
  double origin_ = 0.0;
  // Where among all values each different one is first met.
  std::vector<Place> firsts_;
  std::vector<High> highs_;
  std::vector<Low> lows_;
};

class NaturalBreaks {
 public:
  explicit NaturalBreaks(std::span<const double> values)
      : sums_(values), end_(sums_.End()), best_(end_ + 1U), next_(end_ + 1U) {}

  // The values at which the classes start, for at most as many classes as there are different
  // values.
  std::vector<double> LowerBounds(int count) {
    std::vector<double> lower(static_cast<std::size_t>(count), sums_.Value(0));
    if (count == 1) return lower;
    for (Place place = 1; place <= end_; ++place) best_[place] = sums_.Deviations(0, place);
    const Place last = static_cast<Place>(count) - 1;
    for (Place row = 1; row < last; ++row) {
      starts_.emplace_back(end_ + 1U);
      Fill(row + 1, end_, {row, end_ - 1});
      best_.swap(next_);
    }
    Place place = FindStart(end_, {last, end_ - 1});
    lower[last] = sums_.Value(place);
    for (Place row = last - 1; row > 0; --row) {
      place = starts_[row - 1][place];
      lower[row] = sums_.Value(place);
    }
    return lower;
  }

 private:
  static constexpr Place kBlock = 512;

  // Fills first..last of the row, where the last class starts within the range.
  void Fill(Place first, Place last, Range starts) {
    const Place middle = first + (last - first) / 2;
    const Place start = FindStart(middle, {starts.first, std::min(starts.last, middle - 1)});
    starts_.back()[middle] = start;
    if (first < middle) Fill(first, middle - 1, {starts.first, start});
    if (middle < last) Fill(middle + 1, last, {start, starts.last});
  }

  // Where the last class starts in the optimum of the values before `end`; the lowest of equal
  // ones. Doubles sort out nearly all places, with the bound of their error; what they leave is
  // compared in double the digits.
  Place FindStart(Place end, Range starts) {
    if (starts.first == starts.last) {
      next_[end] = Total(starts.first, end);
      return starts.first;
    }
    const double error = ErrorOf(end, starts);
    // Equal optima may differ by roundings: of a sum of up to seven doubles, and of the longer
    // digits.
    const double tolerance = error * 0x1p-46;
    double least = std::numeric_limits<double>::infinity();
    Place found = end;
    for (Place first = starts.first; first <= starts.last; first += kBlock) {
      const Range block{first, std::min(starts.last, first + kBlock - 1)};
      least = std::min(least, Estimate(end, block));
      for (Place start = block.first; start <= block.last; ++start) {
        if (estimates_[start - first] > least + 2.0 * error) continue;
        const double total = Total(start, end);
        if (found != end && next_[end] - total <= tolerance + 0x1p-49 * total) continue;
        next_[end] = total;
        found = start;
      }
    }
    return found;
  }

  double Total(Place start, Place end) const { return best_[start] + sums_.Deviations(start, end); }

  // Sets the estimates of a block of places, and returns the least. This is where the time goes.
  double Estimate(Place end, Range block) {
    const Sums::High to = sums_.HighAt(end);
    double least = std::numeric_limits<double>::infinity();
    for (Place start = block.first; start <= block.last; ++start) {
      const Sums::High& from = sums_.HighAt(start);
      const double sum = to.sum - from.sum;
      const double squares = to.squares - from.squares;
      const double total = best_[start] + (squares - sum * sum / sums_.Weight(start, end));
      estimates_[start - block.first] = total;
      least = std::min(least, total);
    }
    return least;
  }

  // How far an estimate in the range may be off. Each of its terms takes part in nine roundings at
  // the most, of half a unit of the last digit. All terms are largest at an end of the range: they
  // rise towards the ends of the values, and the mean of a class is within its first and last
  // value.
  double ErrorOf(Place end, Range starts) const {
    const auto larger = [](double a, double b) { return std::max(std::abs(a), std::abs(b)); };
    const Sums::High& first = sums_.HighAt(starts.first);
    const Sums::High& last = sums_.HighAt(starts.last);
    const Sums::High& to = sums_.HighAt(end);
    const double mean = larger(sums_.Offset(starts.first).high, sums_.Offset(end - 1).high);
    const double squares = std::abs(to.squares) + larger(first.squares, last.squares);
    const double sums = std::abs(to.sum) + larger(first.sum, last.sum);
    return 0x1p-49 * (best_[starts.last] + squares + mean * sums);
  }

  Sums sums_;
  Place end_;
  // The least sums of squares of the values before each place, in as many classes as the row before
  // has, and the row in work.
  std::vector<double> best_;
  std::vector<double> next_;
  // Where the last class starts: a row for each number of classes from two on but the last.
  std::vector<std::vector<Place>> starts_;
  std::array<double, kBlock> estimates_{};
};

}  // namespace

ClassBounds NaturalClasses(std::span<const double> values, int count) {
  if (auto answer = WithoutChoice(values, count)) return *std::move(answer);
  const int classes = std::min(count, CountDifferent(values));
  return InOrder(values, NaturalBreaks(values).LowerBounds(classes), count, "");
}

}  // namespace vexel
