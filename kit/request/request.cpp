#include "kit/request/request.h"

#include <vexel/legend/legend.h>

#include <algorithm>

#include "kit/request/error.h"

namespace vexel {

namespace {

constexpr int kDefaultGroups = 5;

template <typename List>
int Count(const List& list) {
  return static_cast<int>(list.size());
}

void CheckNumber(int groups, int number, const std::string& where) {
  if (number == 0 || number == groups) return;
  throw WrongRequest(std::to_string(groups) + " groups but " + std::to_string(number) + " in " +
                     where);
}

}  // namespace

Grouping GroupingOf(const Request& request) {
  if (request.calculation.has_value() == request.secondVariable.empty()) {
    throw WrongRequest("--calc and --var2 go together");
  }
  const bool changesBounds = request.zeroApart || request.midpoint || !request.sameBounds.empty();
  const bool hasBounds = !request.bounds.empty();
  Grouping grouping{0, hasBounds ? kOwnBounds : kDefaultIntervals};
  if (!request.intervals.empty()) grouping.intervals = request.intervals;
  if (hasBounds != (grouping.intervals == kOwnBounds)) {
    throw WrongRequest(hasBounds ? "--bounds needs --intervals bounds, which may be left out"
                                 : "--intervals bounds needs --bounds");
  }
  if (hasBounds && changesBounds) {
    throw WrongRequest(
        "--bounds says all there is to say of bounds: neither --zero-apart nor --midpoint nor"
        " --same-bounds goes with it");
  }
  if (request.zeroApart && request.midpoint) {
    throw WrongRequest("--zero-apart and --midpoint do not go together");
  }
  if (!request.sameBounds.empty() && request.calculation) {
    throw WrongRequest("--same-bounds is for variables, and does not go with --calc");
  }
  grouping.groups = request.groups.value_or(DefaultGroups(request));
  CheckNumber(grouping.groups, Count(request.bounds), "--bounds");
  CheckNumber(grouping.groups, Count(request.groupNames), "--group-names");
  CheckNumber(grouping.groups, Count(request.colors), "--colors");
  if (grouping.groups > CLegend::kMostGroups) {
    throw WrongRequest("more than " + std::to_string(CLegend::kMostGroups) + " groups");
  }
  return grouping;
}

int DefaultGroups(const Request& request) {
  const int named =
      std::max({Count(request.bounds), Count(request.groupNames), Count(request.colors)});
  return named == 0 ? kDefaultGroups : named;
}

}  // namespace vexel
