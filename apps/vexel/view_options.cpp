#include "view_options.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "failure.h"
#include "hints.h"
#include "legend/legend.h"
#include "map/map.h"

namespace vexel::cli {

namespace {

constexpr std::array<std::string_view, 4> kCalculations{"percent-change", "percent", "ratio",
                                                        "difference"};
constexpr std::array<std::string_view, 3> kIntervals{"counts", "widths", "bounds"};
constexpr std::array<std::string_view, 6> kPalettes{"spectrum", "blue",   "green",
                                                    "red",      "yellow", "grey"};
constexpr int kMostPixels = 65535;

std::string Quoted(std::string_view text) { return '"' + std::string(text) + '"'; }

// The position of a word in a list.
int ParseChoice(std::string_view text, std::span<const std::string_view> names) {
  const auto found = std::find(names.begin(), names.end(), text);
  if (found != names.end()) return static_cast<int>(found - names.begin());
  throw UsageError(Quoted(text) + " is none of " + Joined(names) + Hint(text, names));
}

int ParseIntBetween(std::string_view text, int least, int most) {
  const std::optional<int> number = ParseInt(text);
  if (number && *number >= least && *number <= most) return *number;
  throw UsageError(Quoted(text) + " is not a whole number from " + std::to_string(least) + " to " +
                   std::to_string(most));
}

double ParseBound(std::string_view text) {
  double number = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error == std::errc() && end == text.data() + text.size() && std::isfinite(number)) {
    return number;
  }
  throw UsageError(Quoted(text) + " is not a number such as 12.5");
}

std::vector<double> ParseBounds(std::string_view text) {
  std::vector<double> bounds;
  for (const std::string_view part : Split(text, ',')) bounds.push_back(ParseBound(part));
  const auto notAscending = [](double a, double b) { return a >= b; };
  if (std::adjacent_find(bounds.begin(), bounds.end(), notAscending) != bounds.end()) {
    throw UsageError(Quoted(text) + " does not ascend");
  }
  if (bounds.size() > CLegend::kMostGroups) {
    throw UsageError(Quoted(text) + " has more than " + std::to_string(CLegend::kMostGroups) +
                     " bounds");
  }
  return bounds;
}

void ParseSize(std::string_view text, ViewOptions& options) {
  const std::size_t cross = text.find('x');
  const auto side = [](std::string_view part) {
    const std::optional<int> number = ParseInt(part);
    return number && *number >= 1 && *number <= kMostPixels ? *number : 0;
  };
  options.width = side(text.substr(0, cross));
  options.height = cross == std::string_view::npos ? 0 : side(text.substr(cross + 1));
  if (options.width == 0 || options.height == 0) {
    throw UsageError(Quoted(text) + " is not a size such as 800x600, sides from 1 to " +
                     std::to_string(kMostPixels));
  }
}

NumberSeparators ParseSeparators(std::string_view text) {
  const auto isSeparator = [](char c) {
    return c > '\0' && (c < '0' || c > '9') && c != '-' && c != '+' && c != '\n' && c != '\t';
  };
  const bool good = (text.size() == 1 || text.size() == 2) &&
                    std::all_of(text.begin(), text.end(), isSeparator) &&
                    text.front() != (text.size() == 2 ? text.back() : '\0');
  if (!good) {
    throw UsageError(Quoted(text) +
                     " is neither two different characters, first between thousands, then before"
                     " decimals, nor the latter alone");
  }
  return {text.size() == 2 ? text.front() : '\0', text.back()};
}

void AddSelection(Arguments& arguments, ViewOptions& options) {
  arguments.Group("What to show");
  arguments.Option("--map", "FILE", "Map to use instead of the one that DATA names", options.map);
  arguments.Option("--var", "NAME|NUMBER", "Variable to show, by name or counted from 1 [1]",
                   options.variable);
  arguments.Option("--var2", "NAME|NUMBER", "Second variable, for --calc", options.secondVariable);
  arguments.Option(
      "--calc", "WORD", "Derive a value from both: " + Joined(kCalculations),
      [&](std::string_view text) { options.calculation = ParseChoice(text, kCalculations); });
  arguments.Option("--zoom", "KEY", "Area to show alone, by its codes, as in 12,3",
                   [&](std::string_view text) { options.zoom = ParseKey(text); });
  arguments.Option("--level", "N", "Level of areas to draw, 1 being the uppermost",
                   [&](std::string_view text) {
                     options.level = ParseIntBetween(text, 1, CVELAMap::kMostLevels - 1);
                   });
}

void AddClasses(Arguments& arguments, ViewOptions& options) {
  arguments.Group("Groups and colours");
  arguments.Option("--groups", "1..7", "Number of groups [5]", [&](std::string_view text) {
    options.groups = ParseIntBetween(text, 1, CLegend::kMostGroups);
  });
  arguments.Option(
      "--intervals", "WORD", "Where groups begin: " + Joined(kIntervals) + " [counts]",
      [&](std::string_view text) { options.intervals = ParseChoice(text, kIntervals); });
  arguments.Option("--bounds", "A,B,C", "Lowest value of each group, ascending",
                   [&](std::string_view text) { options.bounds = ParseBounds(text); });
  arguments.Option("--palette", "WORD", "Colours: " + Joined(kPalettes) + " [blue]",
                   [&](std::string_view text) { options.palette = ParseChoice(text, kPalettes); });
  arguments.Flag("--reverse", "Colours in reverse order", options.reverse);
  arguments.Option("--group-names", "A,B,C", "Names in the legend instead of ranges",
                   [&](std::string_view text) {
                     const auto names = Split(text, ',');
                     options.groupNames.assign(names.begin(), names.end());
                   });
}

void AddPage(Arguments& arguments, ViewOptions& options) {
  arguments.Group("The page");
  arguments.Option("--size", "WIDTHxHEIGHT", "Size in pixels [800x600]",
                   [&](std::string_view text) { ParseSize(text, options); });
  arguments.Repeated("--outline", "KEY", "Area to draw once more with an outline that stands out",
                     [&](std::string_view text) { options.outlines.push_back(ParseKey(text)); });
  arguments.Repeated("--box", "KEY", "Area to label with its name and value",
                     [&](std::string_view text) { options.boxes.push_back(ParseKey(text)); });
  arguments.Flag("--no-title", "Leave out the title", options.noTitle);
  arguments.Flag("--no-legend", "Leave out the legend", options.noLegend);
  arguments.Option("--separators", "XY",
                   "Characters between thousands and before decimals, as in \".,\"; one alone is"
                   " for decimals [those of the locale]",
                   [&](std::string_view text) { options.separators = ParseSeparators(text); });
  arguments.Flag("--quiet", "No summary and no progress", options.quiet);
}

}  // namespace

void AddViewOptions(Arguments& arguments, ViewOptions& options) {
  arguments.Positional("DATA", "Map data file, or - for standard input", options.data);
  AddSelection(arguments, options);
  AddClasses(arguments, options);
  AddPage(arguments, options);
}

void Settle(ViewOptions& options) {
  if (options.calculation.has_value() == options.secondVariable.empty()) {
    throw UsageError("--calc and --var2 go together");
  }
  const bool hasBounds = !options.bounds.empty();
  if (!options.intervals)
    options.intervals = hasBounds ? CLegend::hostBounds : CLegend::equalCounts;
  if (hasBounds != (*options.intervals == CLegend::hostBounds)) {
    throw UsageError(hasBounds ? "--bounds needs --intervals bounds, which may be left out"
                               : "--intervals bounds needs --bounds");
  }
  const auto count = [](const auto& list) { return static_cast<int>(list.size()); };
  if (!options.groups) {
    constexpr int kDefaultGroups = 5;
    const int named = std::max(count(options.bounds), count(options.groupNames));
    options.groups = named == 0 ? kDefaultGroups : named;
  }
  const auto check = [&](int number, const std::string& what) {
    if (number == 0 || number == *options.groups) return;
    throw UsageError(std::to_string(*options.groups) + " groups but " + std::to_string(number) +
                     what);
  };
  check(count(options.bounds), " in --bounds");
  check(count(options.groupNames), " in --group-names");
  if (*options.groups > CLegend::kMostGroups) {
    throw UsageError("more than " + std::to_string(CLegend::kMostGroups) + " groups");
  }
}

std::span<const std::string_view> CalculationNames() { return kCalculations; }

std::optional<int> ParseInt(std::string_view text) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

std::vector<std::string_view> Split(std::string_view text, char mark) {
  std::vector<std::string_view> parts;
  for (;;) {
    const std::size_t at = text.find(mark);
    parts.push_back(text.substr(0, at));
    if (at == std::string_view::npos) return parts;
    text.remove_prefix(at + 1);
  }
}

CAreaStruct ParseKey(std::string_view text) {
  CAreaStruct key;
  const std::vector<std::string_view> parts = Split(text, ',');
  if (parts.size() > key.codes.size()) throw UsageError(Quoted(text) + " has more than 8 codes");
  auto code = key.codes.begin();
  for (const std::string_view part : parts) {
    const std::optional<int> number = ParseInt(TrimBlanks(part));
    if (!number) throw UsageError(Quoted(text) + " is no area key such as 12,3");
    *code++ = *number;
  }
  return key;
}

std::string KeyText(const CAreaStruct& key, std::string_view between) {
  std::string text;
  const auto level = static_cast<std::size_t>(key.GetLevel());
  for (std::size_t i = 0; i < level; ++i) {
    if (i > 0) text += between;
    text += std::to_string(key.codes[i]);
  }
  return text;
}

}  // namespace vexel::cli
