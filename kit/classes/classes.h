// Ways to find the bounds of classes, and what can be asked of any of them on top.
//
// A class is given by its lower bound alone: class i holds the values >= lower[i] and < lower[i+1],
// the last one is open above. Where the textbook form of a method closes its classes above, the
// lower bound of the next class is the smallest value above the break, so that no value changes its
// class.
//
// All functions are pure. They take finite values in ascending order, missing ones left out;
// several variables are classified together by pooling their values before. Values that are not
// finite or not in order throw std::invalid_argument.

#ifndef VEXEL_KIT_CLASSES_CLASSES_H_
#define VEXEL_KIT_CLASSES_CLASSES_H_

#include <vexel/platform/export.h>

#include <array>
#include <cstddef>
#include <functional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace vexel {

// More classes than this have no colours of their own.
inline constexpr int kMostClasses = 7;

// What cannot be done with these values or this request: the sentence for the user.
class VEXEL_API ClassError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct ClassBounds {
  // Strictly ascending and finite, at most kMostClasses, the first not above the least value. Empty
  // when there are no values.
  std::vector<double> lower;
  // For the user: in what the result differs from what was asked, and why. Empty when it does not.
  std::string note;
};

// From values and the number of classes asked to bounds. A number of classes outside
// 1..kMostClasses throws ClassError.
using ClassFinder = std::function<ClassBounds(std::span<const double> values, int count)>;

// Equal counts: class i of k starts at value i*n/k of n, truncated. Bounds that fall on equal
// values become one.
VEXEL_API ClassBounds EqualCountClasses(std::span<const double> values, int count);

// Equal widths: class i of k starts at least + (greatest - least) * i/k.
VEXEL_API ClassBounds EqualWidthClasses(std::span<const double> values, int count);

// Natural breaks: of all ways to cut the values into so many classes, that with the least sum of
// squared deviations from the class means (W. D. Fisher, "On grouping for maximum homogeneity",
// Journal of the American Statistical Association 53, 1958). The optimum is exact. Each class
// starts at a value; equal values stay together. Of equal optima, the one whose topmost bound is
// lowest is taken; if that leaves a choice, the one whose next bound is, and so on.
VEXEL_API ClassBounds NaturalClasses(std::span<const double> values, int count);

// Round bounds: multiples of 1, 2, 2.5 or 5 times a power of ten, one step apart. The first class
// starts at or below the least value; neither it nor the last is empty. The number of classes comes
// as close to what was asked as such steps allow, and rather below than above. When the first
// multiple is beyond the range of a double, the least value takes its place.
VEXEL_API ClassBounds RoundClasses(std::span<const double> values, int count);

// Standard deviations s about the mean m: the inner bounds are m + (i - k/2) s for i = 1..k-1, so
// an odd number of classes has one that straddles the mean, an even number a bound at it. The
// deviation is that of the population (divided by n): the values are all the areas there are, no
// sample of more. The number of classes stays as asked even when outer ones hold no value, so that
// the mean stays in the middle of the colours. The first class starts at the
// least value or at m - k/2 s, whichever is lower.
VEXEL_API ClassBounds DeviationClasses(std::span<const double> values, int count);

// In the practice of head/tail breaks a head up to this share is a minority.
inline constexpr double kHeadMinority = 0.4;

// Head/tail breaks (B. Jiang, "Head/tail breaks: a new classification scheme for data with a
// heavy-tailed distribution", The Professional Geographer 65, 2013): the values are cut at their
// mean; the head, which is the values above it, is cut in turn as long as it was no larger a share
// of what was cut than `minority`. The values decide how many classes that gives; `count` is the
// most.
VEXEL_API ClassBounds HeadTailClasses(std::span<const double> values, int count,
                                      double minority = kHeadMinority);

// Equal steps of the logarithm: class i of k starts at least * (greatest / least)^(i/k). Throws
// ClassError when a value is not above 0.
VEXEL_API ClassBounds LogarithmClasses(std::span<const double> values, int count);

struct ClassMethod {
  std::string_view name;
  std::string_view help;  // one line
  ClassBounds (*find)(std::span<const double> values, int count);
};

inline constexpr std::array kClassMethods{
    ClassMethod{"counts", "the same number of values in each class", EqualCountClasses},
    ClassMethod{"widths", "the same difference from bound to bound", EqualWidthClasses},
    ClassMethod{"natural", "least squared deviations within classes (natural breaks)",
                NaturalClasses},
    ClassMethod{"round", "bounds at round numbers, about as many classes as asked", RoundClasses},
    ClassMethod{"deviation", "steps of the standard deviation about the mean", DeviationClasses},
    ClassMethod{
        "head-tail", "cut at the mean, again and again, for many small and few large values",
        [](std::span<const double> values, int count) { return HeadTailClasses(values, count); }},
    ClassMethod{"logarithm", "the same ratio from bound to bound, for values above 0",
                LogarithmClasses},
};

// Null when there is no method of that name.
VEXEL_API const ClassMethod* FindClassMethod(std::string_view name) noexcept;

// The method applied so that the values that are exactly 0 have a class of their own: it starts at
// 0, the next one at the smallest value above. The other classes are shared out to the values below
// and above by their numbers, at least one to each side that has values (which may make more
// classes than asked). Without a 0 among the values the method alone decides.
VEXEL_API ClassBounds ClassesWithZeroApart(std::span<const double> values, int count,
                                           const ClassFinder& find);

struct MidpointClasses {
  ClassBounds bounds;
  // The first class at or above the midpoint, which is where a diverging palette changes its hue;
  // the number of classes when all values are below.
  std::size_t firstAbove = 0;
};

// The method applied to the values below the midpoint and to the others, the midpoint being a bound
// between them (of the first class when no value is below; none when all are). The classes are
// shared out as above. A midpoint that is not finite throws ClassError.
VEXEL_API MidpointClasses ClassesAroundMidpoint(std::span<const double> values, int count,
                                                double midpoint, const ClassFinder& find);

}  // namespace vexel

#endif  // VEXEL_KIT_CLASSES_CLASSES_H_
