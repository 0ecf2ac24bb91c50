// Classification: from the values of the areas on show to groups, labels and colours.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <vector>

#include "data/dataset.h"
#include "legend/legend.h"
#include "legend/palettes.h"
#include "legend/sort_values.h"
#include "map/map.h"
#include "platform/exceptions.h"
#include "platform/profile.h"
#include "platform/ref_or_throw.h"

namespace {

// Above every value of a data set: the lower bound of the group behind the last.
constexpr double kSentinel = std::numeric_limits<double>::max();
constexpr std::uint32_t kWhite = 0xFFFFFF;

// Calls `use` for each node of the subtree at that level. Nothing below such a node is visited.
template <typename Use>
void ForLevel(CMapOb& node, int level, const Use& use) {
  if (node.GetLevel() == level) {
    use(node);
    return;
  }
  node.ForEachChild([&](CMapOb& child) { ForLevel(child, level, use); });
}

// A column's value of an area. A host's NaN has no place in an order.
double ValueOf(const CMapOb& area, int column) {
  const CAreaData* row = area.GetAreaData();
  const double value = row == nullptr ? NO_DATA_VALUE : row->GetValue(column);
  return std::isnan(value) ? NO_DATA_VALUE : value;
}

// The colours of a legend for one value after the other: the same as by GroupOf, without a branch
// for each group that could be guessed wrong.
class Colors {
 public:
  explicit Colors(const CLegend& legend)
      : legend_(legend), count_(static_cast<std::size_t>(legend.numGroups) + 1) {
    const std::uint32_t none = legend.groups[CLegend::kNoDataSlot].color;
    colors_.fill(none);
    for (std::size_t i = 0; i < count_; ++i) bounds_[i] = legend.groups[i].lower;
    for (std::size_t i = 0; i + 1 < count_; ++i) colors_[i + 1] = legend.groups[i].color;
    // A host's NaN ascends to nothing.
    const auto inUse = std::span(bounds_).first(count_);
    isAscending_ = std::adjacent_find(inUse.begin(), inUse.end(),
                                      [](double a, double b) { return !(a <= b); }) == inUse.end();
  }

  std::uint32_t operator()(double value) const {
    if (value == NO_DATA_VALUE) return colors_.front();
    if (!isAscending_) {
      const std::optional<int> group = legend_.GroupOf(value);
      return group ? colors_[static_cast<std::size_t>(*group) + 1] : colors_.front();
    }
    std::size_t reached = 0;
    for (std::size_t i = 0; i < count_; ++i) reached += value >= bounds_[i] ? 1U : 0U;
    return colors_[reached];
  }

 private:
  static constexpr std::size_t kMostBounds = CLegend::kMostGroups + 1;  // with the sentinel

  const CLegend& legend_;
  std::size_t count_;  // of the bounds
  std::array<double, kMostBounds> bounds_{};
  std::array<std::uint32_t, kMostBounds + 1> colors_{};  // by the number of bounds reached
  bool isAscending_ = false;
};

}  // namespace

void CLegend::UpdateData(CVELAMap* map, CVELAData* data) {
  const CVELAMap& shown = vexel::RefOrThrow(map);
  CMapOb* root = shown.GetDrawRoot();
  const int level = shown.GetDrawLevel();
  // The areas with their values: to look for them once more would wait for memory once more.
  struct Shown {
    CMapOb* area;
    double value;
  };
  std::vector<Shown> areas;
  values.RemoveAll();
  const int column = vexel::RefOrThrow(data).GetSelected();
  ForLevel(vexel::RefOrThrow(root), level, [&](CMapOb& area) {
    areas.push_back({&area, ValueOf(area, column)});
  });
  decimals = data->GetVarDecs(column);
  if (areas.empty()) AfxThrowInvalidArgException();
  std::transform(areas.begin(), areas.end(), values.Extend(static_cast<int>(areas.size())),
                 [](const Shown& area) { return area.value; });
  // The lowest double is the mark of a missing value, so these come first.
  vexel::SortValues(values.Elements());
  lastIndex = values.GetSize() - 1;
  const auto* real = std::find_if(values.begin(), values.end(),
                                  [](double value) { return value != NO_DATA_VALUE; });
  numMissing = static_cast<int>(real - values.begin());
  Group(kNoDataSlot).count = numMissing;
  UpdateLegend();
  const Colors colors(*this);
  for (const auto& [area, value] : areas) area->SetColor(colors(value));
}

void CLegend::GetData(CMapOb* node, CVELAData* data, int level) {
  const int column = vexel::RefOrThrow(data).GetSelected();
  ForLevel(vexel::RefOrThrow(node), level,
           [&](const CMapOb& area) { values.Add(ValueOf(area, column)); });
}

void CLegend::CheckNumGroups() const {
  if (numGroups < 1 || numGroups > kMostGroups) AfxThrowInvalidArgException();
}

void CLegend::UpdateIntervals() {
  CheckNumGroups();
  // One unit of the last decimal that is shown.
  const double step = std::pow(10.0, -static_cast<double>(decimals));
  Group(numGroups).lower = kSentinel;
  const bool hasValues = numMissing <= lastIndex;
  if (intervalType == equalCounts || intervalType == equalWidths) {
    if (hasValues) {
      EqualBounds(step);
    } else {
      for (int i = 0; i < numGroups; ++i) Group(i).lower = Group(i).upper = 0.0;
    }
  } else if (intervalType == hostBounds && hasValues) {
    HostBounds(step);
  }
}

// Bounds of equal counts or equal widths. Equal neighbours are pushed apart by a step.
void CLegend::EqualBounds(double step) {
  for (int i = 0; i < numGroups; ++i) {
    Group(i).lower = EqualBound(i);
    if (i == 0) continue;
    LegendGroup& below = Group(i - 1);
    if (Group(i).lower <= below.lower) Group(i).lower = below.lower + step;
    below.upper = Group(i).lower - step;
  }
  LegendGroup& last = Group(numGroups - 1);
  last.upper = std::max(last.lower, values[lastIndex]);
}

// Where a group starts before it is corrected.
double CLegend::EqualBound(int group) const {
  const int count = lastIndex - numMissing + 1;
  if (intervalType == equalCounts) {
    return values[numMissing + static_cast<int>(static_cast<long long>(group) * count / numGroups)];
  }
  const double least = values[numMissing];
  if (group == 0) return least;
  const double most = values[lastIndex];
  const double bound = (most - least) * group / numGroups + least;
  if (std::isfinite(bound)) return bound;
  // The width of all groups together is beyond a double; that of one is not.
  return (most / numGroups - least / numGroups) * group + least;
}

// Corrects the bounds that the host has set, in place.
void CLegend::HostBounds(double step) {
  const double least = values[numMissing];
  const double most = values[lastIndex];
  for (int i = 0; i < numGroups; ++i) {
    // A sentinel that an earlier run with fewer groups has left.
    if (Group(i).lower == kSentinel) Group(i).lower = NO_DATA_VALUE;
  }
  LegendGroup& first = Group(0);
  LegendGroup& last = Group(numGroups - 1);
  first.lower = std::min(first.lower, least);
  for (int i = 1; i < numGroups; ++i) {
    LegendGroup& below = Group(i - 1);
    if (below.lower + step > Group(i).lower) Group(i).lower = below.lower + step;
    below.upper = Group(i).lower - step;
  }
  if (numGroups > 1) last.upper = std::max(most, last.lower);
  if (least > first.lower) first.lower = std::min(least, first.upper);
}

void CLegend::UpdateLegend() {
  UpdateIntervals();
  UpdateCounts();
  UpdateTexts();
  if (palette == Palette::custom) {
    FollowCustomColors();
  } else if (palette >= Palette::spectrum && palette < Palette::custom) {
    UpdatePalette();
  }
}

// Values and groups both ascend, so one walk through both counts them.
void CLegend::UpdateCounts() {
  for (int i = 0; i < kMostGroups; ++i) Group(i).count = 0;
  int group = 0;
  for (int i = numMissing; i <= lastIndex; ++i) {
    while (group < numGroups && values[i] >= Group(group + 1).lower) ++group;
    if (group < numGroups) ++Group(group).count;
  }
}

void CLegend::UpdateTexts() {
  const vexel::NumberSeparators separators = vexel::MachineSeparators({0, '.'});
  const auto textOf = [&](double value) {
    return CVELAString(d2txt(value, static_cast<unsigned>(std::max(decimals, 0)),
                             separators.thousand, separators.decimal, 1));
  };
  for (int i = 0; i < numGroups; ++i) {
    LegendGroup& group = Group(i);
    group.lowerText = textOf(group.lower);
    group.upperText = textOf(group.upper);
    group.rangeLabel = group.lowerText + " " + toText + " " + group.upperText;
  }
  Group(kNoDataSlot).rangeLabel = noDataText;
}

void CLegend::UpdatePalette() {
  const auto colors = vexel::PaletteColors(palette, numGroups);
  for (int i = 0; i < numGroups; ++i) {
    const int entry = reverseColors == 0 ? i : numGroups - 1 - i;
    Group(i).color = colors[static_cast<std::size_t>(entry)];
  }
  Group(kNoDataSlot).color = kWhite;
}

// The custom palette starts as the colours in use; from then on it is what the host makes of it.
void CLegend::FollowCustomColors() {
  const auto follow = [&](LegendGroup& group) {
    if (customSaved == 0) {
      group.customColor = group.color;
    } else {
      group.color = group.customColor;
    }
  };
  for (int i = 0; i < numGroups; ++i) follow(Group(i));
  follow(Group(kNoDataSlot));
  customSaved = 1;
}

void CLegend::UpdateColors(CMapOb* node, CVELAData* data, int level) {
  CheckNumGroups();
  const int column = vexel::RefOrThrow(data).GetSelected();
  const Colors colors(*this);
  ForLevel(vexel::RefOrThrow(node), level,
           [&](CMapOb& area) { area.SetColor(colors(ValueOf(area, column))); });
}

std::optional<int> CLegend::GroupOf(double value) const {
  CheckNumGroups();
  // Bounds of the host's may start as low as the mark of a missing value.
  if (value == NO_DATA_VALUE) return std::nullopt;
  // The group and the one above it, which for the last is the sentinel.
  const auto takes = [=](const LegendGroup& group, const LegendGroup& above) {
    return value >= group.lower && value < above.lower;
  };
  const auto* end = groups.begin() + numGroups + 1;
  const auto* taker = std::adjacent_find(groups.begin(), end, takes);
  if (taker == end) return std::nullopt;
  return static_cast<int>(taker - groups.begin());
}
