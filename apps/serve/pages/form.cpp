#include "apps/serve/pages/form.h"

#include <algorithm>
#include <array>
#include <vector>

#include "kit/classes/classes.h"
#include "kit/request/markup.h"
#include "kit/request/parameters.h"
#include "kit/request/values.h"
#include "kit/site/pieces.h"

namespace vexel::serve {

namespace {

struct Choice {
  std::string value;  // empty: what holds when nothing is said
  std::string text;
  bool isChosen = false;
};

std::string Attribute(std::string_view name, std::string_view value) {
  std::string text = " ";
  text.append(name).append("=\"");
  AppendMarkup(text, value);
  return text + '"';
}

std::string Field(std::string_view name, std::string_view label, const std::string& control) {
  std::string field = "<div class=\"field\"><label for=\"";
  field.append(name).append("\">").append(label).append("</label>").append(control);
  return field + "</div>\n";
}

std::string Select(std::string_view name, std::string_view label,
                   const std::vector<Choice>& choices) {
  std::string select = "<select" + Attribute("id", name) + Attribute("name", name) + ">";
  for (const Choice& choice : choices) {
    select += "<option" + Attribute("value", choice.value) +
              (choice.isChosen ? " selected>" : ">") + MarkupText(XmlText(choice.text)) +
              "</option>";
  }
  return Field(name, label, select + "</select>");
}

std::string TextField(std::string_view name, std::string_view label, const std::string& value,
                      std::string_view example) {
  return Field(name, label,
               "<input type=\"text\" autocomplete=\"off\" spellcheck=\"false\"" +
                   Attribute("id", name) + Attribute("name", name) + Attribute("value", value) +
                   Attribute("placeholder", example) + ">");
}

std::string Checkbox(std::string_view name, std::string_view label, std::string_view value,
                     bool isChecked) {
  std::string box = "<label class=\"check\"><input type=\"checkbox\"";
  box.append(Attribute("id", name))
      .append(Attribute("name", name))
      .append(Attribute("value", value));
  return box.append(isChecked ? " checked> " : "> ").append(label).append("</label>\n");
}

// "percent-change" as a reader likes it.
std::string Spoken(std::string_view word) {
  std::string spoken(word);
  std::replace(spoken.begin(), spoken.end(), '-', ' ');
  if (!spoken.empty() && spoken.front() >= 'a' && spoken.front() <= 'z') {
    spoken.front() = static_cast<char>(spoken.front() - 'a' + 'A');
  }
  return spoken;
}

// What of the request has a field of its own.
constexpr std::array<std::string_view, 14> kOffered{
    "var",    "var2",     "calc",    "zoom",   "level",      "groups",    "intervals",
    "bounds", "midpoint", "palette", "colors", "zero-apart", "open-ends", "reverse"};
constexpr std::string_view kSize = "size";

class FormWriter {
 public:
  FormWriter(View& view, const Show& show, std::optional<int> compared)
      : view_(view), show_(show), request_(show.request), compared_(compared) {}

  std::string Fields() const {
    std::optional<int> second;
    if (request_.calculation) second = view_.data.GetVar2Selected();
    return Select("var", "Variable",
                  Variables(view_.data.GetVar1Selected(), request_.variable, false)) +
           Select("calc", "Calculation", Calculations()) +
           Select("var2", "and variable", Variables(second, request_.secondVariable, true)) +
           Select("with", "Compare with", Variables(compared_, show_.with, true)) +
           Select("level", "Level", Levels()) + Select("groups", "Groups", Groups()) +
           Select("intervals", "Bounds by", Intervals()) + PaletteField() +
           Checkbox("reverse", "Reverse colours", "1", request_.reverse) + More() + Hidden();
  }

 private:
  // A variable by its name, or by its number where that is not enough.
  std::string ValueFor(int column) const {
    const CVELAString name = view_.data.GetVarName(column);
    int same = 0;
    for (int i = 0; i < view_.data.GetNumVars(); ++i) {
      if (view_.data.GetVarName(i).View() == name.View()) ++same;
    }
    return same == 1 && !name.IsEmpty() ? std::string(name.View()) : std::to_string(column + 1);
  }

  // The one that is chosen keeps the word that the address has for it.
  std::vector<Choice> Variables(std::optional<int> chosen, const std::string& said,
                                bool orNone) const {
    std::vector<Choice> choices;
    choices.reserve(static_cast<std::size_t>(view_.data.GetNumVars()) + 1);
    if (orNone) choices.push_back({"", "none", !chosen});
    for (int i = 0; i < view_.data.GetNumVars(); ++i) {
      const bool isUsual = i == 0 && !orNone;
      const std::string value = isUsual ? std::string() : ValueFor(i);
      choices.push_back({chosen == i && !said.empty() ? said : value,
                         std::string(view_.data.GetVarName(i).View()), chosen == i});
    }
    return choices;
  }

  std::vector<Choice> Calculations() const {
    std::vector<Choice> choices{{"", "none", !request_.calculation}};
    choices.reserve(CalculationNames().size() + 1);
    int number = 0;
    for (const std::string_view name : CalculationNames()) {
      choices.push_back({std::string(name), Spoken(name), request_.calculation == number++});
    }
    return choices;
  }

  // What is drawn anyway needs no word.
  std::vector<Choice> Levels() const {
    std::vector<Choice> choices;
    const CVELAMap& map = view_.map;
    const int deepest = std::min(std::max(map.GetNumMapLevels() - 1, map.GetDrawLevel()),
                                 CVELAMap::kMostLevels - 1);
    for (int level = map.GetDrawRoot()->GetLevel() + 1; level <= deepest; ++level) {
      const bool isDrawn = level == map.GetDrawLevel();
      const std::string name(map.GetLevelName(level).View());
      choices.push_back({isDrawn && !request_.level ? "" : std::to_string(level),
                         name.empty() ? "Level " + std::to_string(level) : name, isDrawn});
    }
    return choices;
  }

  std::vector<Choice> Groups() const {
    std::vector<Choice> choices;
    choices.reserve(CLegend::kMostGroups);
    const int usual = DefaultGroups(request_);
    const int chosen = request_.groups.value_or(usual);
    for (int groups = 1; groups <= CLegend::kMostGroups; ++groups) {
      choices.push_back({groups == usual ? "" : std::to_string(groups), std::to_string(groups),
                         groups == chosen});
    }
    return choices;
  }

  std::vector<Choice> Intervals() const {
    const std::string_view usual = request_.bounds.empty() ? kDefaultIntervals : kOwnBounds;
    const std::string_view chosen = request_.intervals.empty() ? usual : request_.intervals;
    std::vector<Choice> choices;
    choices.reserve(kClassMethods.size() + 1);
    for (const ClassMethod& method : kClassMethods) {
      choices.push_back({method.name == kDefaultIntervals ? "" : std::string(method.name),
                         Spoken(method.name), method.name == chosen});
    }
    choices.push_back({std::string(kOwnBounds), "My own", chosen == kOwnBounds});
    return choices;
  }

  std::string PaletteField() const {
    const int groups = std::clamp(view_.legend.numGroups, 2, kMostPaletteClasses);
    const bool reverse = request_.reverse;
    const Palette* current = FindPalette(request_.palette);
    std::string field =
        "<div class=\"field\"><span class=\"label\">Palette</span><details "
        "id=\"palettes\"><summary>";
    if (current != nullptr) field += StripMarkup(*current, groups, reverse);
    field += MarkupText(request_.palette) + "</summary>\n<fieldset><legend>Palette</legend>\n";
    if (!request_.colors.empty()) {
      std::string colors;
      for (const std::string& color : ParameterNamed("colors").get(request_)) {
        colors += (colors.empty() ? "" : ",") + color;
      }
      field += Checkbox("colors", "My own colours", colors, true);
    }
    for (const Palette& palette : Palettes()) {
      const bool isUsual = palette.name == kDefaultPalette;
      field += "<label class=\"palette\"><input type=\"radio\" name=\"palette\"" +
               Attribute("value", isUsual ? "" : palette.name) +
               (&palette == current ? " checked>" : ">") + StripMarkup(palette, groups, reverse) +
               "<span>" + std::string(palette.name) +
               (palette.colorBlindSafe ? " <span class=\"safe\">safe</span>" : "") +
               "</span></label>\n";
    }
    return field +
           "<p class=\"soft\">safe: colour-blind readers can tell the colours apart</p>\n"
           "</fieldset></details></div>\n";
  }

  std::string More() const {
    std::string bounds;
    for (const double bound : request_.bounds) {
      bounds += (bounds.empty() ? "" : ", ") + NumberText(bound);
    }
    const std::string midpoint = request_.midpoint ? NumberText(*request_.midpoint) : "";
    return "<details id=\"more\" class=\"more\"><summary>More</summary>\n<div>" +
           TextField("bounds", "Lowest value of each group", bounds, "0, 10, 20") +
           TextField("midpoint", "Midpoint", midpoint, "0") + Select(kSize, "Picture", Sizes()) +
           Checkbox("zero-apart", "A group for 0", "1", request_.zeroApart) +
           Checkbox("open-ends", "Open ends", "1", request_.openEnds) + "</div></details>\n";
  }

  std::vector<Choice> Sizes() const {
    constexpr std::array kSizes{PageSize{800, 600}, PageSize{1200, 900}, PageSize{1600, 1200}};
    std::vector<Choice> choices;
    choices.reserve(kSizes.size() + 1);
    bool isAny = false;
    for (const PageSize& size : kSizes) {
      const bool isChosen = size == request_.size;
      choices.push_back({size == PageSize() ? "" : SizeText(size), SizeText(size), isChosen});
      isAny = isAny || isChosen;
    }
    if (!isAny) choices.push_back({SizeText(request_.size), SizeText(request_.size), true});
    return choices;
  }

  static void AppendHidden(std::string& fields, std::string_view name, std::string_view value) {
    fields +=
        "<input type=\"hidden\"" + Attribute("name", name) + Attribute("value", value) + ">\n";
  }

  std::string Hidden() const {
    std::string fields;
    for (const Parameter& parameter : AllParameters()) {
      const bool isOffered =
          std::find(kOffered.begin(), kOffered.end(), parameter.name) != kOffered.end();
      if (isOffered || parameter.isFile || parameter.name == kSize) continue;
      for (const std::string& value : parameter.get(request_)) {
        AppendHidden(fields, parameter.name, value);
      }
    }
    if (!show_.sort.empty()) AppendHidden(fields, "sort", show_.sort);
    if (show_.down) AppendHidden(fields, "down", "1");
    return fields;
  }

  View& view_;
  const Show& show_;
  const Request& request_;
  std::optional<int> compared_;
};

}  // namespace

std::string FormMarkup(View& view, const Show& show, const std::string& action,
                       std::optional<int> compared) {
  return "<form id=\"choices\" data-part method=\"get\"" + Attribute("action", action) + ">\n" +
         FormWriter(view, show, compared).Fields() +
         "<button type=\"submit\">Show</button>\n</form>\n";
}

}  // namespace vexel::serve
