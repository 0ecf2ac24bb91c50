// What the methods share: the cases without a choice, bounds put in order, notes, the mean.

#ifndef VEXEL_KIT_CLASSES_COMMON_H_
#define VEXEL_KIT_CLASSES_COMMON_H_

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "kit/classes/classes.h"

namespace vexel {

// Checks the request, and answers it where no method has a choice: no values, or all equal.
std::optional<ClassBounds> WithoutChoice(std::span<const double> values, int count);

// The bounds in order: what is not finite or does not rise above the bound before it is left out.
// When that does not leave as many as asked, the note says so, and why: `why`, unless there are too
// few different values.
ClassBounds InOrder(std::span<const double> values, std::vector<double> lower, int asked,
                    std::string_view why);

// "3 classes instead of 5: why".
std::string NumberNote(std::size_t made, int asked, std::string_view why);

// How many different values there are, counted up to kMostClasses.
int CountDifferent(std::span<const double> values);

// The arithmetic mean, correctly rounded but for rare cases; never beyond the values.
double MeanOf(std::span<const double> values);

// The shortest decimal text that reads back as the number.
std::string NoteText(double number);

// The power of two that brings all values into -1..1, where their squares and sums are safe.
int ExponentOf(std::span<const double> values);

}  // namespace vexel

#endif  // VEXEL_KIT_CLASSES_COMMON_H_
