#include "kit/request/parameters.h"

#include <vexel/legend/legend.h>
#include <vexel/map/map.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <utility>

#include "kit/classes/classes.h"
#include "kit/palettes/palettes.h"
#include "kit/request/error.h"
#include "kit/request/hints.h"

namespace vexel {

namespace {

using Kind = ParameterKind;
using Group = ParameterGroup;
using Texts = Parameter::Texts;
using Values = Parameter::Values;
using Words = std::vector<std::string_view>;

constexpr std::array<std::string_view, 4> kCalculations{"percent-change", "percent", "ratio",
                                                        "difference"};

Words CalculationWords() { return {kCalculations.begin(), kCalculations.end()}; }

// The engine's own ways stand among them; bounds of one's own are no way to find any.
Words IntervalWords() {
  Words words(kClassMethods.size());
  std::transform(kClassMethods.begin(), kClassMethods.end(), words.begin(),
                 [](const ClassMethod& method) { return method.name; });
  words.push_back(kOwnBounds);
  return words;
}

std::string_view ParsePalette(std::string_view text) {
  if (const Palette* palette = FindPalette(text)) return palette->name;
  Words words;
  for (const Palette& palette : Palettes()) words.push_back(palette.name);
  const std::string hint = Hint(text, words);
  throw WrongRequest(Quoted(text) + " is no palette" +
                     (hint.empty() ? "; `vexel palettes` shows them" : hint));
}

std::vector<std::uint32_t> ParseColorList(Values values) {
  std::vector<std::uint32_t> colors;
  try {
    for (const std::string_view text : values) {
      for (const std::uint32_t color : ParseColors(text)) colors.push_back(color);
    }
  } catch (const std::invalid_argument& error) {
    throw WrongRequest(error.what());
  }
  if (colors.size() > CLegend::kMostGroups) {
    throw WrongRequest("more than " + std::to_string(CLegend::kMostGroups) + " colours");
  }
  return colors;
}

// The position of a word in a list.
std::size_t ParseChoice(std::string_view text, const Words& words) {
  const auto found = std::find(words.begin(), words.end(), text);
  if (found != words.end()) return static_cast<std::size_t>(found - words.begin());
  throw WrongRequest(Quoted(text) + " is none of " + Joined(words) + Hint(text, words));
}

std::vector<double> ParseBounds(Values values) {
  std::vector<double> bounds(values.size());
  std::transform(values.begin(), values.end(), bounds.begin(), ParseNumber);
  const auto notAscending =
      std::adjacent_find(bounds.begin(), bounds.end(), [](double a, double b) { return a >= b; });
  if (notAscending != bounds.end()) {
    throw WrongRequest(Quoted(NumberText(*notAscending) + ',' + NumberText(notAscending[1])) +
                       " does not ascend");
  }
  if (bounds.size() > CLegend::kMostGroups) {
    throw WrongRequest("more than " + std::to_string(CLegend::kMostGroups) + " bounds");
  }
  return bounds;
}

std::vector<CAreaStruct> ParseKeys(Values values) {
  std::vector<CAreaStruct> keys(values.size());
  std::transform(values.begin(), values.end(), keys.begin(), ParseKey);
  return keys;
}

// The other way: what `get` gives.
Texts One(bool isSaid, std::string text) {
  Texts texts;
  if (isSaid) texts.push_back(std::move(text));
  return texts;
}
Texts Flag(bool isSaid) { return One(isSaid, "1"); }

template <typename List, typename ToText>
Texts Each(const List& list, ToText toText) {
  Texts texts;
  texts.reserve(list.size());
  for (const auto& value : list) texts.push_back(toText(value));
  return texts;
}

bool ParseFlag(std::string_view text) {
  constexpr std::array<std::string_view, 5> kYes{"1", "true", "yes", "on", ""};
  constexpr std::array<std::string_view, 4> kNo{"0", "false", "no", "off"};
  const auto isText = [=](std::string_view word) { return EqualNoCase(word, text); };
  if (std::any_of(kYes.begin(), kYes.end(), isText)) return true;
  if (std::any_of(kNo.begin(), kNo.end(), isText)) return false;
  throw WrongRequest(Quoted(text) + " is neither yes nor no");
}

constexpr std::array<std::string_view, 3> kLabelTexts{"name", "value", "both"};

Words LabelTextWords() { return {kLabelTexts.begin(), kLabelTexts.end()}; }

std::uint32_t ParseOneColor(std::string_view text) {
  const std::vector<std::uint32_t> colors = ParseColorList({&text, 1});
  if (colors.size() == 1) return colors.front();
  throw WrongRequest(Quoted(text) + " is more than one colour");
}

// A number from `least` to `most`.
double ParseNumberBetween(std::string_view text, double least, double most) {
  const double number = ParseNumber(text);
  if (number >= least && number <= most) return number;
  throw WrongRequest(Quoted(text) + " is not a number from " + NumberText(least) + " to " +
                     NumberText(most));
}

constexpr std::string_view kTransparent = "none";
constexpr double kMostLineWidth = 100.0;
constexpr double kLeastScale = 0.1;
constexpr double kMostScale = 20.0;

constexpr std::array kParameters{
    Parameter{"data", Kind::text, Group::source, "FILE",
              "Map data file, or - for standard input, of 1 GB at most", "", true,
              [](Request& r, Values v) { r.data = v.front(); },
              [](const Request& r) { return One(!r.data.empty(), r.data); }, nullptr},
    Parameter{"map", Kind::text, Group::what, "FILE",
              "Map to use instead of the one that DATA names", "", true,
              [](Request& r, Values v) { r.map = v.front(); },
              [](const Request& r) { return One(!r.map.empty(), r.map); }, nullptr},
    Parameter{
        "var", Kind::text, Group::what, "NAME|NUMBER",
        "Variable to show, by name or counted from 1", "1", false,
        [](Request& r, Values v) { r.variable = v.front(); },
        [](const Request& r) { return One(!r.variable.empty() && r.variable != "1", r.variable); },
        nullptr},
    Parameter{"var2", Kind::text, Group::what, "NAME|NUMBER", "Second variable, for --calc", "",
              false, [](Request& r, Values v) { r.secondVariable = v.front(); },
              [](const Request& r) { return One(!r.secondVariable.empty(), r.secondVariable); },
              nullptr},
    Parameter{"calc", Kind::choice, Group::what, "WORD", "Derive a value from both", "", false,
              [](Request& r, Values v) {
                r.calculation = static_cast<int>(ParseChoice(v.front(), CalculationWords()));
              },
              [](const Request& r) {
                const auto number = static_cast<std::size_t>(r.calculation.value_or(0));
                return One(r.calculation.has_value(), std::string(kCalculations.at(number)));
              },
              CalculationWords},
    Parameter{"zoom", Kind::key, Group::what, "KEY", "Area to show alone, by its codes, as in 12,3",
              "", false, [](Request& r, Values v) { r.zoom = ParseKey(v.front()); },
              [](const Request& r) {
                return One(r.zoom.has_value(), KeyText(r.zoom.value_or(CAreaStruct())));
              },
              nullptr},
    Parameter{"level", Kind::number, Group::what, "N",
              "Level of areas to draw, 1 being the uppermost", "", false,
              [](Request& r, Values v) {
                r.level = ParseIntBetween(v.front(), 1, CVELAMap::kMostLevels - 1);
              },
              [](const Request& r) {
                return One(r.level.has_value(), std::to_string(r.level.value_or(0)));
              },
              nullptr},

    Parameter{"groups", Kind::number, Group::classes, "1..7", "Number of groups", "5", false,
              [](Request& r, Values v) {
                r.groups = ParseIntBetween(v.front(), 1, CLegend::kMostGroups);
              },
              [](const Request& r) {
                const bool says = r.groups && *r.groups != DefaultGroups(r);
                return One(says, std::to_string(r.groups.value_or(0)));
              },
              nullptr},
    Parameter{"intervals", Kind::choice, Group::classes, "WORD", "Where groups begin", "counts",
              false,
              [](Request& r, Values v) {
                ParseChoice(v.front(), IntervalWords());
                r.intervals = v.front();
                if (r.intervals != kOwnBounds) r.bounds.clear();
              },
              [](const Request& r) {
                const auto usual = r.bounds.empty() ? kDefaultIntervals : kOwnBounds;
                return One(!r.intervals.empty() && r.intervals != usual, r.intervals);
              },
              IntervalWords},
    Parameter{"bounds", Kind::list, Group::classes, "A,B,C",
              "Lowest value of each group, ascending", "", false,
              [](Request& r, Values v) { r.bounds = ParseBounds(v); },
              [](const Request& r) { return Each(r.bounds, NumberText); }, nullptr},
    Parameter{"same-bounds", Kind::list, Group::classes, "VAR,VAR",
              "Find bounds for these variables together, so that their pages compare", "", false,
              [](Request& r, Values v) { r.sameBounds.assign(v.begin(), v.end()); },
              [](const Request& r) { return r.sameBounds; }, nullptr},
    Parameter{"zero-apart", Kind::flag, Group::classes, "", "A group for exactly 0", "", false,
              [](Request& r, Values v) { r.zeroApart = ParseFlag(v.front()); },
              [](const Request& r) { return Flag(r.zeroApart); }, nullptr},
    Parameter{"midpoint", Kind::number, Group::classes, "NUMBER",
              "A value at which a group must begin, and a diverging palette has its middle", "",
              false, [](Request& r, Values v) { r.midpoint = ParseNumber(v.front()); },
              [](const Request& r) {
                return One(r.midpoint.has_value(), NumberText(r.midpoint.value_or(0.0)));
              },
              nullptr},
    // The last of palette and colours counts.
    Parameter{"palette", Kind::choice, Group::classes, "NAME",
              "Colours, by a name that `vexel palettes` shows", kDefaultPalette, false,
              [](Request& r, Values v) {
                r.palette = ParsePalette(v.front());
                r.colors.clear();
              },
              [](const Request& r) { return One(r.palette != kDefaultPalette, r.palette); },
              nullptr},
    Parameter{"colors", Kind::list, Group::classes, "#RGB,#RGB", "Colours of one's own", "", false,
              [](Request& r, Values v) { r.colors = ParseColorList(v); },
              [](const Request& r) { return Each(r.colors, ColorText); }, nullptr},
    Parameter{"reverse", Kind::flag, Group::classes, "", "Colours in reverse order", "", false,
              [](Request& r, Values v) { r.reverse = ParseFlag(v.front()); },
              [](const Request& r) { return Flag(r.reverse); }, nullptr},
    Parameter{"group-names", Kind::list, Group::classes, "A,B,C",
              "Names in the legend instead of ranges", "", false,
              [](Request& r, Values v) { r.groupNames.assign(v.begin(), v.end()); },
              [](const Request& r) { return r.groupNames; }, nullptr},
    Parameter{"legend-counts", Kind::flag, Group::classes, "",
              "The number of areas behind each label of the legend", "", false,
              [](Request& r, Values v) { r.legendCounts = ParseFlag(v.front()); },
              [](const Request& r) { return Flag(r.legendCounts); }, nullptr},
    Parameter{"open-ends", Kind::flag, Group::classes, "",
              "\"less than 5.8\" and \"11.3 and more\" for the first and last group", "", false,
              [](Request& r, Values v) { r.openEnds = ParseFlag(v.front()); },
              [](const Request& r) { return Flag(r.openEnds); }, nullptr},

    Parameter{"size", Kind::text, Group::page, "WIDTHxHEIGHT", "Size in pixels", "800x600", false,
              [](Request& r, Values v) { r.size = ParseSize(v.front()); },
              [](const Request& r) { return One(r.size != PageSize(), SizeText(r.size)); },
              nullptr},
    Parameter{"outline", Kind::repeated, Group::page, "KEY",
              "Area to draw once more with an outline that stands out", "", false,
              [](Request& r, Values v) { r.outlines = ParseKeys(v); },
              [](const Request& r) {
                return Each(r.outlines, [](const CAreaStruct& key) { return KeyText(key); });
              },
              nullptr},
    Parameter{"box", Kind::repeated, Group::page, "KEY", "Area to label with its name and value",
              "", false, [](Request& r, Values v) { r.boxes = ParseKeys(v); },
              [](const Request& r) {
                return Each(r.boxes, [](const CAreaStruct& key) { return KeyText(key); });
              },
              nullptr},
    Parameter{"no-title", Kind::flag, Group::page, "",
              "Leave out the title; on a GIF its place stays empty", "", false,
              [](Request& r, Values v) { r.noTitle = ParseFlag(v.front()); },
              [](const Request& r) { return Flag(r.noTitle); }, nullptr},
    Parameter{"no-legend", Kind::flag, Group::page, "",
              "Leave out the legend; on a GIF its place stays empty", "", false,
              [](Request& r, Values v) { r.noLegend = ParseFlag(v.front()); },
              [](const Request& r) { return Flag(r.noLegend); }, nullptr},
    Parameter{"separators", Kind::text, Group::page, "XY",
              "Characters between thousands and before decimals, as in \".,\"; one alone is for"
              " decimals",
              "those of the locale", false,
              [](Request& r, Values v) { r.separators = ParseSeparators(v.front()); },
              [](const Request& r) {
                return One(r.separators.has_value(),
                           SeparatorsText(r.separators.value_or(NumberSeparators())));
              },
              nullptr},

    Parameter{"title", Kind::text, Group::publication, "TEXT", "Title in place of the map's own",
              "", false, [](Request& r, Values v) { r.publication.title = v.front(); },
              [](const Request& r) {
                const auto& title = r.publication.title;
                return One(title.has_value(), title.value_or(""));
              },
              nullptr},
    Parameter{"subtitle", Kind::text, Group::publication, "TEXT", "A line below the title", "",
              false, [](Request& r, Values v) { r.publication.subtitle = v.front(); },
              [](const Request& r) {
                return One(!r.publication.subtitle.empty(), r.publication.subtitle);
              },
              nullptr},
    Parameter{"note", Kind::text, Group::publication, "TEXT", "A remark below the map", "", false,
              [](Request& r, Values v) { r.publication.note = v.front(); },
              [](const Request& r) { return One(!r.publication.note.empty(), r.publication.note); },
              nullptr},
    Parameter{
        "source", Kind::text, Group::publication, "TEXT",
        "Where the figures come from, in the last line", "", false,
        [](Request& r, Values v) { r.publication.source = v.front(); },
        [](const Request& r) { return One(!r.publication.source.empty(), r.publication.source); },
        nullptr},
    Parameter{"label", Kind::texts, Group::publication, "LEVEL|KEY",
              "Label an area, those of a level by its name, or \"all\" that are drawn; where labels"
              " would collide or leave their areas, levels do without",
              "", false,
              [](Request& r, Values v) { r.publication.labels.assign(v.begin(), v.end()); },
              [](const Request& r) { return r.publication.labels; }, nullptr},
    Parameter{"label-text", Kind::choice, Group::publication, "WORD", "What labels say", "name",
              false,
              [](Request& r, Values v) {
                r.publication.labelText =
                    static_cast<LabelText>(ParseChoice(v.front(), LabelTextWords()));
              },
              [](const Request& r) {
                const auto text = r.publication.labelText;
                return One(text != LabelText::name,
                           std::string(kLabelTexts.at(static_cast<std::size_t>(text))));
              },
              LabelTextWords},
    Parameter{"background", Kind::text, Group::publication, "#RGB|none",
              "Colour of the page; none is transparent", "#FFFFFF", false,
              [](Request& r, Values v) {
                r.publication.background.reset();
                if (v.front() != kTransparent) r.publication.background = ParseOneColor(v.front());
              },
              [](const Request& r) {
                const auto& color = r.publication.background;
                return One(color != kWhite, color ? ColorText(*color) : std::string(kTransparent));
              },
              nullptr},
    Parameter{"line-color", Kind::text, Group::publication, "#RGB",
              "Colour of the lines between areas", "that of the page", false,
              [](Request& r, Values v) { r.publication.lineColor = ParseOneColor(v.front()); },
              [](const Request& r) {
                const auto& color = r.publication.lineColor;
                return One(color.has_value(), ColorText(color.value_or(0)));
              },
              nullptr},
    Parameter{"line-width", Kind::number, Group::publication, "PIXELS",
              "Width of the lines between areas; 0 leaves them out",
              "thinner the smaller the areas", false,
              [](Request& r, Values v) {
                r.publication.lineWidth = ParseNumberBetween(v.front(), 0.0, kMostLineWidth);
              },
              [](const Request& r) {
                const auto& width = r.publication.lineWidth;
                return One(width.has_value(), NumberText(width.value_or(0.0)));
              },
              nullptr},
    Parameter{"scale", Kind::number, Group::publication, "NUMBER",
              "Pixels of a PNG for each one of --size, as in 2 for sharp screens", "1", false,
              [](Request& r, Values v) {
                r.publication.scale = ParseNumberBetween(v.front(), kLeastScale, kMostScale);
              },
              [](const Request& r) {
                return One(r.publication.scale != 1.0, NumberText(r.publication.scale));
              },
              nullptr},
};

}  // namespace

std::span<const Parameter> AllParameters() { return kParameters; }

const Parameter& ParameterNamed(std::string_view name) {
  const auto* found = std::find_if(kParameters.begin(), kParameters.end(),
                                   [=](const Parameter& each) { return each.name == name; });
  if (found != kParameters.end()) return *found;
  Words names(kParameters.size());
  std::transform(kParameters.begin(), kParameters.end(), names.begin(),
                 [](const Parameter& each) { return each.name; });
  throw WrongRequest("unknown parameter " + Quoted(name) + Hint(name, names));
}

void SetParameter(Request& request, const Parameter& parameter, std::string_view text,
                  const std::string& spelled) {
  if (parameter.kind == Kind::list) {
    SetParameter(request, parameter, Split(text, ','), spelled);
  } else {
    SetParameter(request, parameter, {&text, 1}, spelled);
  }
}

void SetParameter(Request& request, const Parameter& parameter,
                  std::span<const std::string_view> values, const std::string& spelled) {
  const bool isSeveral = TakesSeveral(parameter.kind);
  if (values.empty() || (values.size() > 1 && !isSeveral)) {
    throw WrongRequest(spelled + ": takes " + (isSeveral ? "a value at least" : "one value"));
  }
  try {
    // Of several values the last may be the wrong one.
    Request changed = request;
    parameter.set(changed, values);
    request = std::move(changed);
  } catch (const Error& error) {
    throw WrongRequest(spelled + ": " + error.what());
  }
}

bool AskTheSame(const Request& a, const Request& b) {
  return std::all_of(kParameters.begin(), kParameters.end(),
                     [&](const Parameter& each) { return each.get(a) == each.get(b); });
}

std::span<const std::string_view> CalculationNames() { return kCalculations; }

}  // namespace vexel
