// What the script asks of areas.

#include <algorithm>
#include <cmath>
#include <optional>

#include "apps/serve/pages/pages.h"
#include "apps/serve/pages/viewer_links.h"
#include "kit/publish/compose.h"
#include "kit/publish/fills.h"
#include "kit/report/area_parents.h"
#include "kit/report/map_data.h"
#include "kit/request/error.h"
#include "kit/request/json_text.h"
#include "kit/request/markup.h"
#include "kit/request/values.h"
#include "kit/site/compared.h"
#include "kit/site/pieces.h"
#include "kit/view/area_finder.h"

namespace vexel::serve {

namespace {

// The variable to compare; none where there is no such one, which the page tells.
std::optional<ComparedColumn> ComparedOf(View& view, const Show& show) {
  if (show.with.empty()) return std::nullopt;
  try {
    return ComparedColumn(view, show.with);
  } catch (const Error&) {
    return std::nullopt;
  }
}

// The area on show with that key; null for none.
const CMapOb* AreaWith(const View& view, const CAreaStruct& key) {
  const auto found = std::find_if(view.areas.begin(), view.areas.end(),
                                  [&](const CMapOb* area) { return area->GetArea() == key; });
  return found == view.areas.end() ? nullptr : *found;
}

const CMapOb* AreaOf(View& view, AreaFinder& finder, const Target& target) {
  if (!target.key) return target.pixel ? finder.At(*target.pixel) : nullptr;
  const CMapOb* area = AreaWith(view, *target.key);
  if (area == nullptr || !target.way) return area;
  switch (*target.way) {
    case Way::left:
      return &finder.NeighbourOf(*area, -1, 0);
    case Way::right:
      return &finder.NeighbourOf(*area, 1, 0);
    case Way::up:
      return &finder.NeighbourOf(*area, 0, -1);
    default:
      return &finder.NeighbourOf(*area, 0, 1);
  }
}

// Whether a place lies inside some rings, by the rule of nonzero winding.
bool AreIn(const Rings& rings, const RingRange& range, double x, double y) {
  int winding = 0;
  for (std::uint32_t number = range.first; number < range.end; ++number) {
    const auto ring = rings.Ring(number);
    for (std::size_t i = 0; i < ring.size(); ++i) {
      const GridPoint& from = ring[i];
      const GridPoint& to = ring[(i + 1) % ring.size()];
      if ((from.y <= y) == (to.y <= y)) continue;
      const double side = (to.x - from.x) * (y - from.y) - (x - from.x) * (to.y - from.y);
      if (from.y <= y ? side > 0.0 : side < 0.0) winding += from.y <= y ? 1 : -1;
    }
  }
  return winding != 0;
}

// The publication page as it stands on the viewer's page, which says the rest itself.
Drawing BareDrawing(View& view) {
  const Request before = view.request;
  view.request = BareRequest(before);
  Drawing drawing = Compose(view);
  view.request = before;
  return drawing;
}

// The area at a pixel of it.
const CMapOb* AreaDrawnAt(View& view, CPoint pixel) {
  const Drawing drawing = BareDrawing(view);
  constexpr double kMiddle = 0.5;
  const double x = (pixel.x + kMiddle) * drawing.grid;
  const double y = (pixel.y + kMiddle) * drawing.grid;
  for (std::size_t i = drawing.areas.size(); i-- > 0;) {
    if (AreIn(drawing.rings, drawing.areas[i].rings, x, y)) return view.areas[i];
  }
  return nullptr;
}

void AppendText(std::string& json, std::string_view name, std::string_view text) {
  json.append(",\"").append(name).append("\":");
  AppendJson(json, text);
}

}  // namespace

std::string OutlinesJson(View& view, const Show& show) {
  const Drawing drawing = BareDrawing(view);
  std::string json = "{\"width\":" + std::to_string(drawing.width * drawing.grid) +
                     ",\"height\":" + std::to_string(drawing.height * drawing.grid) + ",\n";
  AppendMapData(json, view, drawing, AreaParents(view));
  if (const auto compared = ComparedOf(view, show)) {
    json += ",\n\"compared\":[";
    for (const CMapOb* area : view.areas) {
      if (area != view.areas.front()) json += ',';
      AppendJson(json, std::string_view(compared->TextFor(*area)));
    }
    json += ']';
  }
  json += ",\n\"parts\":[";
  for (const CMapOb* area : view.areas) {
    if (area != view.areas.front()) json += ',';
    json += area->GetNumChildren() > 0 ? '1' : '0';
  }
  return json + "]}\n";
}

std::string AtJson(View& view, AreaFinder& finder, const Target& target) {
  const CMapOb* area = AreaOf(view, finder, target);
  if (area == nullptr) return "null\n";
  std::string json = "{\"key\":";
  AppendJson(json, std::string_view(KeyText(area->GetArea())));
  AppendText(json, "name", XmlText(area->GetName().View()));
  AppendText(json, "parent", ParentText(view.map, area));
  AppendText(json, "value",
             XmlText(ValueText(view, *area, view.listener.GetSeparators(),
                               std::string(view.legend.noDataText.View()))));
  if (const auto compared = ComparedOf(view, target.show)) {
    AppendText(json, "compared", compared->TextFor(*area));
  }
  const CRect box = finder.BoxOf(*area);
  json += ",\"slot\":" + std::to_string(SlotOf(view, *area)) +
          ",\"parts\":" + (area->GetNumChildren() > 0 ? "1" : "0") + ",\"middle\":[" +
          NumberText((box.left + box.right) / 2.0) + ',' +
          NumberText((box.top + box.bottom) / 2.0) + ']';
  AppendText(json, "outline", finder.OutlineOf(*area));
  return json + "}\n";
}

std::string GoAddress(const Site& site, View& view, AreaFinder& finder, const Target& target) {
  const ViewerLinks links(site, view, target.show);
  const CMapOb* area = nullptr;
  if (target.pixel) {
    area = HasVectors(view) ? AreaDrawnAt(view, *target.pixel) : finder.At(*target.pixel);
  }
  if (area == nullptr) return links.To(Part::page);
  return area->GetNumChildren() > 0 ? links.ToPlace(area) : links.ToRow(*area);
}

}  // namespace vexel::serve
