// Bounds that are set beforehand, with a method for the values on either side.

#include <algorithm>
#include <cmath>

#include "kit/classes/common.h"

namespace vexel {
namespace {

using Values = std::span<const double>;

struct Shares {
  int below = 0;
  int above = 0;
};

// Shares classes out by the numbers of values: at least one to a side that has any, and what
// exceeds the different values of one side goes to the other.
Shares ShareOut(int count, Values below, Values above) {
  if (below.empty() || above.empty()) return {below.empty() ? 0 : count, above.empty() ? 0 : count};
  const auto part =
      static_cast<double>(below.size()) / static_cast<double>(below.size() + above.size());
  int share = static_cast<int>(std::lround(part * count));
  share = std::max({share, 1, count - CountDifferent(above)});
  share = std::min({share, std::max(count - 1, 1), CountDifferent(below)});
  return {share, std::max(count - share, 1)};
}

// A method that takes the number of classes for a wish must not push the other side out.
ClassBounds AtMost(Values values, int count, const ClassFinder& find) {
  for (int wish = count; wish > 0; --wish) {
    ClassBounds bounds = find(values, wish);
    if (bounds.lower.size() <= static_cast<std::size_t>(count)) return bounds;
  }
  return {{values.front()}, ""};
}

void AddNote(std::string& notes, std::string_view where, const std::string& note) {
  if (note.empty()) return;
  if (!notes.empty()) notes += "; ";
  notes.append(where).append(": ").append(note);
}

// The bounds of the values on both sides, those above starting at `start`, in which the method has
// no say. Bounds that reach into the other side are left out: no value is between them and it.
struct Sides {
  std::vector<double> lower;
  std::size_t below = 0;  // how many of them
  std::string notes;
};

Sides Classify(Values below, Values above, double start, int count, const ClassFinder& find) {
  const Shares shares = ShareOut(count, below, above);
  Sides sides;
  if (!below.empty()) {
    const ClassBounds bounds = AtMost(below, shares.below, find);
    std::copy_if(bounds.lower.begin(), bounds.lower.end(), std::back_inserter(sides.lower),
                 [&](double bound) { return bound <= below.back(); });
    AddNote(sides.notes, "below", bounds.note);
  }
  sides.below = sides.lower.size();
  if (!above.empty()) {
    const ClassBounds bounds = AtMost(above, shares.above, find);
    sides.lower.push_back(start);
    std::copy_if(bounds.lower.begin(), bounds.lower.end(), std::back_inserter(sides.lower),
                 [&](double bound) { return bound > above.front(); });
    AddNote(sides.notes, "above", bounds.note);
  }
  return sides;
}

std::string NoteOf(const Sides& sides, std::size_t made, int asked) {
  if (made == static_cast<std::size_t>(asked)) return sides.notes;
  return NumberNote(made, asked, sides.notes);
}

std::span<const double> From(Values values, Values::iterator first, Values::iterator last) {
  return values.subspan(static_cast<std::size_t>(first - values.begin()),
                        static_cast<std::size_t>(last - first));
}

}  // namespace

ClassBounds ClassesWithZeroApart(std::span<const double> values, int count,
                                 const ClassFinder& find) {
  if (auto answer = WithoutChoice(values, count)) return *std::move(answer);
  const auto [first, last] = std::equal_range(values.begin(), values.end(), 0.0);
  if (first == last) {
    ClassBounds bounds = find(values, count);
    AddNote(bounds.note, "no group for 0", "no value is 0");
    return bounds;
  }
  const Values below = From(values, values.begin(), first);
  const Values above = From(values, last, values.end());
  const double start = above.empty() ? 0.0 : above.front();
  Sides sides = Classify(below, above, start, std::max(count - 1, 1), find);
  sides.lower.insert(sides.lower.begin() + static_cast<std::ptrdiff_t>(sides.below), 0.0);
  const std::string note = NoteOf(sides, sides.lower.size(), count);
  return {std::move(sides.lower), note};
}

MidpointClasses ClassesAroundMidpoint(std::span<const double> values, int count, double midpoint,
                                      const ClassFinder& find) {
  if (!std::isfinite(midpoint)) throw ClassError("the midpoint must be a number");
  if (values.empty()) return {*WithoutChoice(values, count), 0};
  const auto split = std::lower_bound(values.begin(), values.end(), midpoint);
  const Values below = From(values, values.begin(), split);
  const Values above = From(values, split, values.end());
  Sides sides = Classify(below, above, midpoint + 0.0, count, find);
  std::string note = NoteOf(sides, sides.lower.size(), count);
  if (below.empty()) AddNote(note, "midpoint", "no value is below it");
  if (above.empty()) AddNote(note, "midpoint", "all values are below it");
  return {{std::move(sides.lower), std::move(note)}, sides.below};
}

}  // namespace vexel
