// vexel locate: the area at a pixel of a page.

#include <algorithm>
#include <limits>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "arguments.h"
#include "commands.h"
#include "failure.h"
#include "files.h"
#include "json_text.h"
#include "platform/number.h"
#include "render/mapgif.h"
#include "view.h"
#include "view_options.h"

namespace vexel::cli {

namespace {

// The point of the working space, turned with the draw root, at the middle of a pixel.
CPoint PointAt(const CMapGif& page, bool turned, int x, int y) {
  const CRect& from = page.GetMapRect();
  const CRect& to = page.GetExtent();
  const auto along = [](double pixel, int start, int end, double first, double last) {
    return TruncateToInt(first +
                         (pixel + 0.5 - start) * (last - first) / (double{1} * end - start));
  };
  // The largest y is at the top of the page; a turned extent has it in `bottom`.
  return {along(x, from.left, from.right, to.left, to.right),
          turned ? along(y, from.top, from.bottom, to.bottom, to.top)
                 : along(y, from.top, from.bottom, to.top, to.bottom)};
}

// Inside one of the outlines and in none of the holes.
bool Contains(const CMapOb& node, const CPoint& point, float angle) {
  bool inside = false;
  for (int i = 0; i < node.GetNumPolygons(); ++i) {
    const CPolygon& polygon = *node.GetPoly(i);
    if (polygon.HitTest(point, angle) == 0) continue;
    if (polygon.IsHole() != 0) return false;
    inside = true;
  }
  return inside;
}

std::string Answer(CliHost& host, const View& view, const CMapOb& area, bool asJson) {
  const std::string name(area.GetName().View());
  const std::string text = ValueText(view, area, host.GetSeparators(), "<no data>");
  if (!asJson) return KeyText(area.GetArea()) + '\t' + name + '\t' + text + '\n';
  std::string json = "{\"key\": ";
  AppendJson(json, area.GetArea());
  json += ", \"name\": ";
  AppendJson(json, name);
  json += ", \"value\": ";
  AppendJson(json, ValueOf(view, area));
  json += ", \"text\": ";
  AppendJson(json, text);
  return json + "}\n";
}

CPoint ParsePixel(std::string_view text) {
  const auto parts = Split(text, ',');
  const auto x = ParseInt(parts.front());
  const auto y = ParseInt(parts.back());
  if (parts.size() != 2 || !x || !y) {
    throw UsageError('"' + std::string(text) + "\" is no pixel such as 400,300");
  }
  return {*x, *y};
}

}  // namespace

int Locate(CliHost& host, int argc, const char* const* argv) {
  Arguments arguments("locate", "Tell the area at a pixel of a page: its key, name and value.",
                      "vexel locate us-counties.mdf 400,300 --level 2");
  ViewOptions options;
  std::string pixel;
  bool asJson = false;
  AddViewOptions(arguments, options);
  arguments.Positional("PIXEL", "Pixel as X,Y, counted from 0,0 at the top left", pixel);
  arguments.Flag("--json", "Answer in JSON", asJson);
  if (!arguments.Parse(argc, argv)) return kDone;
  Settle(options);
  const CPoint at = ParsePixel(pixel);

  View view;
  BuildView(view, options, host);
  CMapGif page(&view.map, &view.legend, &view.data, "");
  page.PrepareCoords(options.width, options.height);
  const float angle = view.map.GetDrawRoot()->GetAngle();
  const CPoint point = PointAt(page, angle != 0.0F, at.x, at.y);
  // What is painted last lies on top.
  const auto& areas = view.areas;
  const auto found = std::find_if(areas.rbegin(), areas.rend(), [&](const CMapOb* node) {
    return Contains(*node, point, angle);
  });
  if (found == areas.rend()) throw Failure("there is no area at " + pixel);
  WriteText("-", Answer(host, view, **found, asJson));
  return kDone;
}

}  // namespace vexel::cli
