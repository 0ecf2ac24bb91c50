#include "kit/view/classify.h"

#include <vexel/brindle/text.h>

#include <algorithm>
#include <optional>
#include <span>
#include <utility>

#include "kit/classes/classes.h"
#include "kit/palettes/palettes.h"
#include "kit/request/error.h"
#include "kit/view/columns.h"
#include "kit/view/shown_bounds.h"

namespace vexel {

namespace {

constexpr std::uint32_t kWhite = 0xFFFFFF;

LegendGroup& Group(CLegend& legend, int index) {
  return legend.groups[static_cast<std::size_t>(index)];
}

// The engine finds these bounds itself, unless something is asked on top.
bool IsEngineWay(const View& view) {
  const Request& request = view.request;
  const std::string_view way = view.grouping.intervals;
  const bool isPlain = !request.zeroApart && !request.midpoint && request.sameBounds.empty();
  return isPlain && (way == "counts" || way == "widths");
}

int IntervalTypeOf(std::string_view way) {
  return way == "widths" ? CLegend::equalWidths : CLegend::equalCounts;
}

// The values of the areas on show, ascending and without missing ones; with --same-bounds those of
// the other variables, too.
std::vector<double> ValuesToClassify(View& view) {
  CLegend& legend = view.legend;
  const int shown = view.data.GetVar1Selected();
  legend.values.RemoveAll();
  legend.GetData(view.map.GetDrawRoot(), &view.data, view.map.GetDrawLevel());
  for (const std::string& variable : view.request.sameBounds) {
    const int column = ColumnOf(view.data, "--same-bounds", variable);
    if (column == shown) continue;
    view.data.SetVar1Selected(column);
    legend.GetData(view.map.GetDrawRoot(), &view.data, view.map.GetDrawLevel());
  }
  view.data.SetVar1Selected(shown);
  std::vector<double> values(legend.values.begin(), legend.values.end());
  std::erase(values, NO_DATA_VALUE);
  std::sort(values.begin(), values.end());
  return values;
}

// Values that differ by the noise of a calculation are one value, which begins where the least of
// them does.
class WithoutNoise {
 public:
  WithoutNoise(std::vector<double> values, bool isCalculated, int decimals)
      : raw_(std::move(values)), rounded_(raw_) {
    constexpr int kDecimalsThatCount = 6;  // behind those that are shown
    if (!isCalculated) return;
    std::transform(raw_.begin(), raw_.end(), rounded_.begin(),
                   Rounding(decimals + kDecimalsThatCount));
  }

  std::span<const double> Values() const { return rounded_; }

  double BoundFor(double bound) const {
    const auto at = std::lower_bound(rounded_.begin(), rounded_.end(), bound);
    return at == rounded_.end() || *at != bound
               ? bound
               : raw_[static_cast<std::size_t>(at - rounded_.begin())];
  }

 private:
  std::vector<double> raw_;
  std::vector<double> rounded_;
};

struct Found {
  ClassBounds bounds;
  std::size_t firstAbove = 0;  // the first group at or above --midpoint
};

Found FindIn(const View& view, std::span<const double> values) {
  const ClassFinder find = FindClassMethod(view.grouping.intervals)->find;
  const int count = view.grouping.groups;
  try {
    if (view.request.midpoint) {
      MidpointClasses around = ClassesAroundMidpoint(values, count, *view.request.midpoint, find);
      return {std::move(around.bounds), around.firstAbove};
    }
    if (view.request.zeroApart) return {ClassesWithZeroApart(values, count, find)};
    return {find(values, count)};
  } catch (const ClassError& error) {
    throw WrongRequest("--intervals " + std::string(view.grouping.intervals) + ": " + error.what());
  }
}

Found FindBounds(View& view) {
  const bool isCalculated = view.request.calculation.has_value();
  const WithoutNoise values(ValuesToClassify(view), isCalculated,
                            view.data.GetVarDecs(view.data.GetSelected()));
  Found found = FindIn(view, values.Values());
  std::vector<double>& lower = found.bounds.lower;
  std::transform(lower.begin(), lower.end(), lower.begin(),
                 [&](double bound) { return values.BoundFor(bound); });
  return found;
}

void SetColors(View& view, std::span<const std::uint32_t> colors) {
  CLegend& legend = view.legend;
  legend.palette = CLegend::custom;
  legend.customSaved = 1;
  for (int i = 0; i < legend.numGroups; ++i) {
    Group(legend, i).customColor = colors[static_cast<std::size_t>(i)];
  }
  Group(legend, CLegend::kNoDataSlot).customColor = kWhite;
}

// The colours of a diverging palette lie about the midpoint, however the groups do.
std::vector<std::uint32_t> ColorsAbout(const Palette& palette, int below, int above, bool reverse) {
  return reverse ? Reversed(CenteredColors(palette, above, below))
                 : CenteredColors(palette, below, above);
}

void ChooseColors(View& view, std::size_t firstAbove) {
  const Request& request = view.request;
  CLegend& legend = view.legend;
  const auto inOrder = [&](std::span<const std::uint32_t> colors) {
    return request.reverse ? Reversed(colors)
                           : std::vector<std::uint32_t>(colors.begin(), colors.end());
  };
  if (!request.colors.empty()) {
    SetColors(view, inOrder(request.colors));
    return;
  }
  const Palette* palette = FindPalette(request.palette);
  if (palette == nullptr) throw WrongRequest("--palette: there is no palette " + request.palette);
  const int below = static_cast<int>(firstAbove);
  if (request.midpoint && palette->kind == PaletteKind::kDiverging) {
    SetColors(view, ColorsAbout(*palette, below, legend.numGroups - below, request.reverse));
  } else if (palette->engineNumber) {
    legend.palette = *palette->engineNumber;
    legend.reverseColors = request.reverse ? 1 : 0;
  } else {
    SetColors(view, inOrder(ColorsOf(*palette, legend.numGroups)));
  }
}

// Gathers the values on show, with the engine's own bounds for the time being.
void Gather(View& view) {
  view.legend.intervalType = IntervalTypeOf(view.grouping.intervals);
  ChooseColors(view, 0);
  view.legend.UpdateData(&view.map, &view.data);
}

// Gives the bounds to the engine, which finds counts, texts and colours for them.
void Apply(View& view, const ShownBounds& shown, std::size_t firstAbove) {
  CLegend& legend = view.legend;
  legend.numGroups = static_cast<int>(shown.lower.size());
  legend.intervalType = CLegend::hostBounds;
  legend.decimals = shown.decimals;
  for (std::size_t i = 0; i < shown.lower.size(); ++i) legend.groups[i].lower = shown.lower[i];
  // The upper end of a group that is alone is the host's to say.
  if (legend.numGroups == 1) Group(legend, 0).upper = legend.values[legend.lastIndex];
  ChooseColors(view, firstAbove);
  legend.UpdateLegend();
  legend.UpdateColors(view.map.GetDrawRoot(), &view.data, view.map.GetDrawLevel());
}

bool HasValues(const CLegend& legend) { return legend.numMissing <= legend.lastIndex; }

// A group for exactly 0 reaches no further.
void CloseZeroGroup(CLegend& legend) {
  const auto* last = legend.groups.begin() + legend.numGroups;
  auto* zero = std::find_if(legend.groups.begin(), legend.groups.begin() + legend.numGroups,
                            [](const LegendGroup& group) { return group.lower == 0.0; });
  if (zero == last || zero->count == 0) return;
  zero->upper = zero->lower;
  zero->upperText = zero->lowerText;
  zero->rangeLabel = zero->lowerText;
}

void ClassifyByOwnBounds(View& view) {
  Gather(view);
  if (!HasValues(view.legend)) return;
  Apply(view, WithDecimals(view.request.bounds, view.legend.decimals), 0);
}

void ClassifyByMethod(View& view) {
  const auto [bounds, firstAbove] = FindBounds(view);
  Gather(view);
  if (!bounds.note.empty()) view.notes.push_back(bounds.note);
  if (bounds.lower.empty()) return;  // no value at all
  const int decimals = view.legend.decimals;
  const double fixed = view.request.midpoint.value_or(0.0);
  Apply(view,
        view.request.calculation ? WithDecimals(bounds.lower, decimals)
                                 : MovedToDecimals(bounds.lower, decimals, fixed),
        firstAbove);
  if (view.request.zeroApart) CloseZeroGroup(view.legend);
}

std::string RangeOf(const View& view, int index) {
  const CLegend& legend = view.legend;
  const auto slot = static_cast<std::size_t>(index);
  if (view.request.openEnds && legend.numGroups > 1) {
    if (index == 0) return "less than " + std::string(legend.groups[1].lowerText.View());
    if (index == legend.numGroups - 1) {
      return std::string(legend.groups[slot].lowerText.View()) + " and more";
    }
  }
  return std::string(legend.groups[slot].rangeLabel.View());
}

// What the rows of the legend say in place of the engine's ranges.
void NameGroups(View& view) {
  const Request& request = view.request;
  CLegend& legend = view.legend;
  if (request.groupNames.empty() && !request.legendCounts && !request.openEnds) return;
  legend.useGroupNames = 1;
  const NumberSeparators separators = view.listener.GetSeparators();
  const auto name = [&](LegendGroup& group, std::string text) {
    if (request.legendCounts) {
      text.append(" (")
          .append(d2txt(group.count, 0, separators.thousand, separators.decimal, 1))
          .append(")");
    }
    group.groupName = CVELAString(std::string_view(text));
  };
  for (int i = 0; i < legend.numGroups; ++i) {
    const auto slot = static_cast<std::size_t>(i);
    const bool isNamed = slot < request.groupNames.size();
    name(legend.groups[slot], isNamed ? request.groupNames[slot] : RangeOf(view, i));
  }
  LegendGroup& missing = Group(legend, CLegend::kNoDataSlot);
  name(missing, std::string(missing.groupName.View()));
}

void NoteEmptyGroups(View& view) {
  const CLegend& legend = view.legend;
  const auto groups = legend.GetGroups();
  const auto empty = std::count_if(groups.begin(), groups.end(),
                                   [](const LegendGroup& group) { return group.count == 0; });
  if (empty == 0) return;
  view.notes.push_back(std::to_string(empty) + " of " + std::to_string(legend.numGroups) +
                       (empty == 1 ? " groups holds no area" : " groups hold no area"));
}

void NoteMovedBounds(View& view) {
  const std::vector<double>& wanted = view.request.bounds;
  for (std::size_t i = 1; i < wanted.size(); ++i) {
    const double lower = view.legend.groups[i].lower;
    if (lower == wanted[i]) continue;
    view.notes.push_back("the bound " + NumberText(wanted[i]) + " has become " + NumberText(lower) +
                         ": bounds lie at least one unit of the last decimal apart");
  }
}

// Where bounds have more digits than the legend shows, what it says may not be what the colours
// say.
void NoteRoundedRanges(View& view) {
  const CLegend& legend = view.legend;
  const auto groups = legend.GetGroups();
  const Rounding shown(legend.decimals);
  std::vector<double> lower(groups.size());
  std::transform(groups.begin(), groups.end(), lower.begin(),
                 [&](const LegendGroup& group) { return shown(group.lower); });
  const auto seemsElsewhere = [&](const CMapOb* area) {
    const std::optional<double> value = ValueOf(view, *area);
    const std::optional<int> group = value ? legend.GroupOf(*value) : std::nullopt;
    if (!group) return false;
    const auto slot = static_cast<std::size_t>(*group);
    const double rounded = shown(*value);
    return rounded < lower[slot] || (slot + 1 < lower.size() && rounded >= lower[slot + 1]);
  };
  const auto strays = std::count_if(view.areas.begin(), view.areas.end(), seemsElsewhere);
  if (strays > 0) {
    view.notes.push_back("rounded as the legend shows them, the values of " +
                         std::to_string(strays) + (strays == 1 ? " area seems" : " areas seem") +
                         " to belong to a neighbouring group");
  }
  if (std::any_of(groups.begin(), groups.end(), [&](const LegendGroup& group) {
        return shown(group.upper) < shown(group.lower);
      })) {
    view.notes.push_back(
        "a range of the legend runs backwards: its bounds are closer together than"
        " the decimals of the variable show");
  }
}

void NoteSurprises(View& view) {
  if (!HasValues(view.legend)) {
    view.notes.push_back("no area on show has a value: all are drawn as \"" +
                         std::string(view.legend.noDataText.View()) + '"');
    return;
  }
  NoteEmptyGroups(view);
  NoteMovedBounds(view);
  NoteRoundedRanges(view);
  const std::size_t names = view.request.groupNames.size();
  if (names > static_cast<std::size_t>(view.legend.numGroups)) {
    view.notes.push_back(std::to_string(names) + " names for " +
                         std::to_string(view.legend.numGroups) + " groups: the last are left out");
  }
}

}  // namespace

void Classify(View& view) {
  CLegend& legend = view.legend;
  legend.numGroups = view.grouping.groups;
  legend.intervalType = CLegend::equalCounts;
  if (view.request.calculation) view.data.PerformCalc();
  if (view.grouping.intervals == kOwnBounds) {
    ClassifyByOwnBounds(view);
  } else if (IsEngineWay(view)) {
    Gather(view);
  } else {
    ClassifyByMethod(view);
  }
  NameGroups(view);
  NoteSurprises(view);
}

}  // namespace vexel
