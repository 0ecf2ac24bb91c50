#include "kit/view/classify.h"

#include <vexel/brindle/text.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <span>
#include <utility>

#include "kit/classes/classes.h"
#include "kit/palettes/palettes.h"
#include "kit/request/error.h"

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
  return way == kOwnBounds || (isPlain && (way == "counts" || way == "widths"));
}

int IntervalTypeOf(std::string_view way) {
  if (way == "widths") return CLegend::equalWidths;
  return way == kOwnBounds ? CLegend::hostBounds : CLegend::equalCounts;
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

struct Found {
  ClassBounds bounds;
  std::size_t firstAbove = 0;  // the first group at or above --midpoint
};

Found FindBounds(View& view) {
  const std::vector<double> values = ValuesToClassify(view);
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

// Whether the engine leaves the bounds as they are, which must be one unit of the last decimal
// apart.
bool AreApart(std::span<const double> lower, int decimals) {
  const double step = std::pow(10.0, -static_cast<double>(decimals));
  return std::adjacent_find(lower.begin(), lower.end(), [=](double below, double above) {
           return below + step > above;
         }) == lower.end();
}

bool AreShownWhole(std::span<const double> lower, int decimals) {
  constexpr double kNoise = 1e-9;
  const double scale = std::pow(10.0, static_cast<double>(decimals));
  return std::all_of(lower.begin(), lower.end(), [=](double bound) {
    const double scaled = bound * scale;
    return std::abs(scaled - std::round(scaled)) <= kNoise * std::max(1.0, std::abs(scaled));
  });
}

// The decimals with which bounds are shown: those of the variable, and more where it takes them to
// tell two bounds apart or, if three more are enough for that, to show them whole.
int DecimalsFor(std::span<const double> lower, int decimals) {
  constexpr int kMoreForWhole = 3;
  constexpr int kMost = 15;
  int apart = decimals;
  while (apart < kMost && !AreApart(lower, apart)) ++apart;
  // The first bound becomes the lowest value, which has the variable's decimals.
  const std::span<const double> inner = lower.subspan(1);
  for (int whole = apart; whole <= std::min(apart + kMoreForWhole, kMost); ++whole) {
    if (AreShownWhole(inner, whole)) return whole;
  }
  return apart;
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

void ClassifyByEngine(View& view) {
  CLegend& legend = view.legend;
  legend.intervalType = IntervalTypeOf(view.grouping.intervals);
  for (std::size_t i = 0; i < view.request.bounds.size(); ++i) {
    legend.groups[i].lower = view.request.bounds[i];
  }
  ChooseColors(view, 0);
  legend.UpdateData(&view.map, &view.data);
}

void ClassifyByBounds(View& view) {
  CLegend& legend = view.legend;
  const auto [bounds, firstAbove] = FindBounds(view);
  if (bounds.lower.empty()) {  // no value at all
    ClassifyByEngine(view);
    return;
  }
  if (!bounds.note.empty()) view.notes.push_back(bounds.note);
  legend.numGroups = static_cast<int>(bounds.lower.size());
  ChooseColors(view, firstAbove);
  const auto setBounds = [&, &lower = bounds.lower] {
    legend.intervalType = CLegend::hostBounds;
    for (std::size_t i = 0; i < lower.size(); ++i) legend.groups[i].lower = lower[i];
  };
  setBounds();
  legend.UpdateData(&view.map, &view.data);
  const int decimals = DecimalsFor(bounds.lower, legend.decimals);
  if (decimals == legend.decimals) return;
  legend.decimals = decimals;
  setBounds();
  legend.UpdateLegend();
  legend.UpdateColors(view.map.GetDrawRoot(), &view.data, view.map.GetDrawLevel());
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

void NoteSurprises(View& view, const std::vector<double>& wanted) {
  const CLegend& legend = view.legend;
  const int values = legend.lastIndex - legend.numMissing + 1;
  if (values == 0) {
    view.notes.push_back("no area on show has a value: all are drawn as \"" +
                         std::string(legend.noDataText.View()) + '"');
    return;
  }
  const auto first = legend.groups.begin();
  const auto empty = std::count_if(first, first + legend.numGroups,
                                   [](const auto& each) { return each.count == 0; });
  if (empty > 0) {
    view.notes.push_back(std::to_string(empty) + " of " + std::to_string(legend.numGroups) +
                         (empty == 1 ? " groups holds no area" : " groups hold no area"));
  }
  for (std::size_t i = 1; i < wanted.size(); ++i) {
    if (legend.groups[i].lower == wanted[i]) continue;
    view.notes.push_back("the bound " + NumberText(wanted[i]) + " has become " +
                         NumberText(legend.groups[i].lower) +
                         ": bounds lie at least one unit of the last decimal apart");
  }
  const std::size_t names = view.request.groupNames.size();
  if (names > static_cast<std::size_t>(legend.numGroups)) {
    view.notes.push_back(std::to_string(names) + " names for " + std::to_string(legend.numGroups) +
                         " groups: the last are left out");
  }
}

}  // namespace

void Classify(View& view) {
  CLegend& legend = view.legend;
  legend.numGroups = view.grouping.groups;
  legend.intervalType = CLegend::equalCounts;
  if (view.request.calculation) view.data.PerformCalc();
  if (IsEngineWay(view)) {
    ClassifyByEngine(view);
  } else {
    ClassifyByBounds(view);
  }
  NameGroups(view);
  NoteSurprises(view, view.request.bounds);
}

}  // namespace vexel
