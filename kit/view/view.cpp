#include "kit/view/view.h"

#include <vexel/brindle/text.h>

#include <algorithm>

#include "kit/request/error.h"
#include "kit/request/hints.h"
#include "kit/view/areas.h"
#include "kit/view/classify.h"
#include "kit/view/columns.h"
#include "kit/view/load.h"

namespace vexel {

namespace {

void Select(CVELAData& data, const Request& request) {
  if (data.GetNumVars() < 1) throw Failed(request.data, "the file holds no variable");
  if (!request.variable.empty()) {
    data.SetVar1Selected(ColumnOf(data, "--var", request.variable));
  }
  if (!request.calculation) return;
  data.SetVar2Selected(ColumnOf(data, "--var2", request.secondVariable));
  data.SetCalcSelected(*request.calculation);
}

// Each as it is before a request has had its say.
void ForgetSelection(CVELAData& data) {
  data.SetVar1Selected(0);
  data.SetVar2Selected(-1);
  data.SetCalcSelected(-1);
}

void ForgetClasses(CLegend& legend) {
  const CLegend fresh;
  legend = fresh;
  legend.values.RemoveAll();
  legend.decimals = fresh.decimals;
  legend.numMissing = fresh.numMissing;
  legend.lastIndex = fresh.lastIndex;
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
  throw WrongRequest(text);
}

std::vector<CMapOb*> AreasOnLevel(const CVELAMap& map, int level) {
  std::vector<CMapOb*> areas;
  ForEachOnLevel(*map.GetDrawRoot(), level, [&](CMapOb& area) { areas.push_back(&area); });
  return areas;
}

void FindAreasOnShow(View& view) {
  CVELAMap& map = view.map;
  const CMapOb* root = map.GetDrawRoot();
  view.areas = AreasOnLevel(map, map.GetDrawLevel());
  if (!view.areas.empty()) return;
  const std::string place =
      root == &map ? "the map" : "area " + KeyText(root->GetArea()) + " of the map";
  throw Failed(place + " has no areas on level " + std::to_string(map.GetDrawLevel()));
}

bool HasOutline(const CMapOb* area) { return area->GetNumPolygons() > 0; }

// Tells which level can be drawn where that of the request has nothing but names.
void CheckOutlines(const View& view) {
  if (std::any_of(view.areas.begin(), view.areas.end(), HasOutline)) return;
  const auto named = [&](int level) {
    std::string text = "level " + std::to_string(level);
    const bool isNamed = level < CVELAMap::kMostLevels && !view.map.GetLevelName(level).IsEmpty();
    if (isNamed) text += " (" + std::string(view.map.GetLevelName(level).View()) + ')';
    return text;
  };
  std::string text = "the areas of " + named(view.map.GetDrawLevel()) + " have no outlines";
  std::string others;
  for (int level = 1; level < view.map.GetNumMapLevels(); ++level) {
    const std::vector<CMapOb*> areas = AreasOnLevel(view.map, level);
    if (std::any_of(areas.begin(), areas.end(), HasOutline)) {
      others += (others.empty() ? "; there are some on " : ", ") + named(level);
    }
  }
  throw Failed(text + (others.empty() ? ", nor have those of any other level" : others));
}

// The areas that an option names, of which `isShown` must say that the page has a place for them.
template <typename IsShown>
std::vector<CMapOb*> AreasNamed(View& view, const std::string& option,
                                const std::vector<CAreaStruct>& keys, IsShown isShown) {
  std::vector<CMapOb*> found;
  found.reserve(keys.size());
  for (const CAreaStruct& key : keys) {
    CMapOb* area = AreaNamed(view.map, option, key);
    if (!isShown(area)) {
      throw WrongRequest(option + ": area " + KeyText(key) + " is none of those on show");
    }
    found.push_back(area);
  }
  return found;
}

void ChooseAreas(View& view) {
  const Request& request = view.request;
  if (request.zoom) view.map.ZoomTo(AreaNamed(view.map, "--zoom", *request.zoom));
  if (request.level) {
    CheckLevel(view.map, *request.level);
    view.map.PrepareLevelDrawing(*request.level);
  }
  FindAreasOnShow(view);
  CheckOutlines(view);
  // Only what is painted has a colour to be filled with again; a box may also stand over the area
  // around it.
  view.outlines = AreasNamed(view, "--outline", request.outlines, [&](const CMapOb* area) {
    return std::find(view.areas.begin(), view.areas.end(), area) != view.areas.end();
  });
  view.boxes = AreasNamed(view, "--box", request.boxes,
                          [&](const CMapOb* area) { return IsInDrawRoot(view.map, area); });
}

}  // namespace

View::View(Request pageRequest, Listener* pageListener)
    : ownListener_(pageListener == nullptr ? std::make_unique<Listener>() : nullptr),
      listener(pageListener == nullptr ? *ownListener_ : *pageListener),
      request(std::move(pageRequest)),
      grouping(GroupingOf(request)) {
  map.data = &data;
  map.legend = &legend;
  data.map = &map;
  const CurrentHost current(listener);
  hostSeparators_ = listener.GetSeparators();
  if (request.separators) listener.SetSeparators(*request.separators);
  LoadData(data, request.data, request.map, listener);
  Prepare();
}

void View::Prepare() {
  Select(data, request);
  ChooseAreas(*this);
  Classify(*this);
}

void View::Show(Request pageRequest) {
  pageRequest.data = std::move(request.data);
  pageRequest.map = std::move(request.map);
  request = std::move(pageRequest);
  grouping = GroupingOf(request);
  notes.clear();
  const CurrentHost current(listener);
  listener.SetSeparators(request.separators.value_or(hostSeparators_));
  ForgetSelection(data);
  ForgetClasses(legend);
  map.ZoomTo(&map);
  map.PrepareLevelDrawing(1);
  Prepare();
}

std::string ColumnText(const View& view, int column, double value,
                       const NumberSeparators& separators) {
  const int decimals = std::max(view.data.GetVarDecs(column), 0);
  return d2txt(value, static_cast<unsigned>(decimals), separators.thousand, separators.decimal, 1);
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
  return value ? ColumnText(view, view.data.GetSelected(), *value, separators) : missing;
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

}  // namespace vexel
