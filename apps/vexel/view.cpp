#include "view.h"

#include <algorithm>

#include "brindle/text.h"
#include "failure.h"
#include "hints.h"
#include "load.h"

namespace vexel::cli {

namespace {

std::vector<std::string_view> VariableNames(const CVELAData& data,
                                            std::vector<CVELAString>& storage) {
  for (int i = 0; i < data.GetNumVars(); ++i) storage.push_back(data.GetVarName(i));
  std::vector<std::string_view> names;
  names.reserve(storage.size());
  for (const CVELAString& name : storage) names.push_back(name.View());
  return names;
}

// The column that a name or a number means: the very name first, then the name in another letter
// case if there is but one, then the number.
int ColumnOf(const CVELAData& data, const std::string& option, std::string_view text) {
  std::vector<CVELAString> storage;
  const std::vector<std::string_view> names = VariableNames(data, storage);
  const auto exact = std::find(names.begin(), names.end(), text);
  if (exact != names.end()) return static_cast<int>(exact - names.begin());

  const auto same = [=](std::string_view name) { return EqualNoCase(name, text); };
  const auto close = std::find_if(names.begin(), names.end(), same);
  if (close != names.end() && std::find_if(close + 1, names.end(), same) == names.end()) {
    return static_cast<int>(close - names.begin());
  }
  const std::optional<int> number = ParseInt(text);
  if (number && *number >= 1 && *number <= data.GetNumVars()) return *number - 1;

  std::string problem = option + ": there is no variable \"" + std::string(text) + '"';
  const std::string hint = Hint(text, names);
  throw UsageError(problem + (hint.empty() ? "; there are " + Joined(names) : hint));
}

void Select(CVELAData& data, const ViewOptions& options) {
  if (data.GetNumVars() < 1) throw Failure(options.data, "the file holds no variable");
  if (!options.variable.empty()) {
    data.SetVar1Selected(ColumnOf(data, "--var", options.variable));
  }
  if (!options.calculation) return;
  data.SetVar2Selected(ColumnOf(data, "--var2", options.secondVariable));
  data.SetCalcSelected(*options.calculation);
}

CMapOb* AreaOf(CVELAMap& map, const std::string& option, const CAreaStruct& key) {
  CMapOb* found = nullptr;
  if (map.Find(key, found) != 0 && found != &map) return found;
  throw UsageError(option + ": the map has no area " + KeyText(key));
}

void CheckLevel(const CVELAMap& map, int level) {
  const int deepest = std::max(map.GetNumMapLevels() - 1, 1);
  if (level <= deepest) return;
  std::string text = "--level: the map has no level " + std::to_string(level) + "; there are";
  for (int i = 1; i <= deepest; ++i) {
    text += (i == 1 ? " " : ", ") + std::to_string(i);
    if (!map.GetLevelName(i).IsEmpty()) {
      text += " (" + std::string(map.GetLevelName(i).View()) + ')';
    }
  }
  throw UsageError(text);
}

void Collect(CMapOb* node, int level, std::vector<CMapOb*>& areas) {
  if (node->GetLevel() == level) areas.push_back(node);
  if (node->GetLevel() >= level) return;
  node->ForEachChild([&](CMapOb& child) { Collect(&child, level, areas); });
}

void ChooseAreas(View& view, const ViewOptions& options) {
  CVELAMap& map = view.map;
  if (options.zoom) map.ZoomTo(AreaOf(map, "--zoom", *options.zoom));
  if (options.level) {
    CheckLevel(map, *options.level);
    map.PrepareLevelDrawing(*options.level);
  }
  const CMapOb* root = map.GetDrawRoot();
  Collect(map.GetDrawRoot(), map.GetDrawLevel(), view.areas);
  if (view.areas.empty()) {
    const std::string place =
        root == &map ? "the map" : "area " + KeyText(root->GetArea()) + " of the map";
    throw Failure(place + " has no areas on level " + std::to_string(map.GetDrawLevel()));
  }
  for (const CAreaStruct& key : options.outlines) {
    CMapOb* area = AreaOf(map, "--outline", key);
    // Only what is on show has a colour to be filled with again.
    if (std::find(view.areas.begin(), view.areas.end(), area) == view.areas.end()) {
      throw UsageError("--outline: area " + KeyText(key) + " is none of those on show");
    }
    view.outlines.push_back(area);
  }
  for (const CAreaStruct& key : options.boxes) view.boxes.push_back(AreaOf(map, "--box", key));
}

void Classify(View& view, const ViewOptions& options) {
  CLegend& legend = view.legend;
  legend.numGroups = options.groups.value_or(1);
  legend.intervalType = options.intervals.value_or(CLegend::equalCounts);
  legend.palette = options.palette;
  legend.reverseColors = options.reverse ? 1 : 0;
  legend.useGroupNames = options.groupNames.empty() ? 0 : 1;
  for (std::size_t i = 0; i < options.bounds.size(); ++i) {
    legend.groups[i].lower = options.bounds[i];
  }
  for (std::size_t i = 0; i < options.groupNames.size(); ++i) {
    legend.groups[i].groupName = CVELAString(std::string_view(options.groupNames[i]));
  }
  if (options.calculation) view.data.PerformCalc();
  legend.UpdateData(&view.map, &view.data);
}

}  // namespace

View::View() {
  map.data = &data;
  map.legend = &legend;
  data.map = &map;
}

void BuildView(View& view, const ViewOptions& options, CliHost& host) {
  if (options.separators) host.SetSeparators(*options.separators);
  host.SetProgressWanted(!options.quiet);
  LoadData(view.data, options.data, options.map, host);
  Select(view.data, options);
  ChooseAreas(view, options);
  Classify(view, options);
}

std::optional<double> ValueOf(const View& view, const CMapOb& area) {
  const CAreaData* row = area.GetAreaData();
  if (row == nullptr) return std::nullopt;
  const double value = row->GetValue(view.data.GetSelected());
  if (value == NO_DATA_VALUE) return std::nullopt;
  return value;
}

std::string ValueText(const View& view, const CMapOb& area, const NumberSeparators& separators,
                      const std::string& missing) {
  const std::optional<double> value = ValueOf(view, area);
  if (!value) return missing;
  const int decimals = std::max(view.data.GetVarDecs(view.data.GetSelected()), 0);
  return d2txt(*value, static_cast<unsigned>(decimals), separators.thousand, separators.decimal, 1);
}

std::optional<int> GroupOf(const CLegend& legend, double value) {
  for (int i = 0; i < legend.numGroups; ++i) {
    const auto slot = static_cast<std::size_t>(i);
    if (value >= legend.groups[slot].lower && value < legend.groups[slot + 1].lower) return i;
  }
  return std::nullopt;
}

std::string SubjectOf(View& view) {
  if (view.data.GetCalcSelected() == -1) {
    return std::string(view.data.GetVarName(view.data.GetVar1Selected()).View());
  }
  const CVELAString whole = view.map.GenerateTitle();
  const std::string place = ": " + std::string(view.map.GetDrawRoot()->GetName().View());
  std::string_view title = whole.View();
  if (title.ends_with(place)) title.remove_suffix(place.size());
  return std::string(title);
}

}  // namespace vexel::cli
