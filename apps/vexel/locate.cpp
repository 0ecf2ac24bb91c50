// The area at a pixel of a page.

#include <vexel/messages/messages.h>
#include <vexel/render/mapgif.h>

#include <algorithm>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "arguments.h"
#include "commands.h"
#include "kit/request/error.h"
#include "kit/request/json_text.h"
#include "kit/view/page.h"
#include "kit/view/view.h"

namespace vexel::cli {

namespace {

// A prepared page on which polygons are painted one at a time, to see which pixels they take: what
// a pixel belongs to and what a picture shows there cannot differ.
class Probe {
 public:
  explicit Probe(View& view) : page_(view, ""), angle_(view.map.GetDrawRoot()->GetAngle()) {}

  // True when painting the polygon, inside and outline, touches the pixel.
  bool Paints(const CPolygon& polygon, const CPoint& pixel) {
    if (polygon.GetSize() == 0) return false;
    if (angle_ == 0.0F) {
      page_.SetPolygon(&polygon);
    } else {
      CMapGif::RotatePolygon(&polygon, &turned_, angle_);
      page_.SetPolygon(&turned_);
    }
    page_.SetPixel(pixel.x, pixel.y, kUntouched);
    page_.FillPolygon(kTouched);
    page_.DrawOutlinePolygon(kTouched);
    return page_.GetPixel(pixel.x, pixel.y) == page_.GetRGB(kTouched);
  }

 private:
  static constexpr unsigned long kUntouched = 0xFFFFFF;
  static constexpr unsigned long kTouched = 0x000000;

  GifPage page_;
  float angle_;
  CPolygon turned_;
};

// What the uppermost polygon of an area at a pixel is.
enum class Hit { none, area, hole };

Hit HitOf(Probe& probe, const CMapOb& area, const CPoint& pixel) {
  for (int i = area.GetNumPolygons() - 1; i >= 0; --i) {
    const CPolygon& polygon = *area.GetPoly(i);
    if (probe.Paints(polygon, pixel)) return polygon.IsHole() != 0 ? Hit::hole : Hit::area;
  }
  return Hit::none;
}

// The area whose paint lies uppermost at the pixel. A hole shows the paint of the area around it,
// but is not a part of that area.
const CMapOb* AreaAt(const View& view, Probe& probe, const CPoint& pixel) {
  std::vector<const CMapOb*> painted(view.areas.begin(), view.areas.end());
  painted.insert(painted.end(), view.outlines.begin(), view.outlines.end());
  const auto found = std::find_if(painted.rbegin(), painted.rend(), [&](const CMapOb* area) {
    return HitOf(probe, *area, pixel) == Hit::area;
  });
  return found == painted.rend() ? nullptr : *found;
}

CPoint ParsePixel(std::string_view text) {
  const std::vector<std::string_view> parts = Split(text, ',');
  const std::optional<int> x = ParseInt(parts.front());
  const std::optional<int> y = ParseInt(parts.back());
  if (parts.size() == 2 && x && y) return {*x, *y};
  throw WrongRequest("\"" + std::string(text) + "\" is no pixel such as 400,300");
}

void PrintArea(const View& view, const CMapOb& area, bool asJson, CliHost& host) {
  const std::string value =
      ValueText(view, area, host.GetSeparators(), std::string(MessageText(Message::noData)));
  std::string line;
  if (asJson) {
    line += "{\"key\": ";
    AppendJson(line, area.GetArea());
    line += ", \"name\": ";
    AppendJson(line, area.GetName().View());
    line += ", \"value\": ";
    AppendJson(line, ValueOf(view, area));
    line += ", \"text\": ";
    AppendJson(line, std::string_view(value));
    line += '}';
  } else {
    line.append(KeyText(area.GetArea())).append("\t").append(area.GetName().View());
    line.append("\t").append(value);
  }
  std::puts(line.c_str());
}

}  // namespace

int Locate(int argc, const char* const* argv, CliHost& host) {
  Request request;
  std::string pixelText;
  bool asJson = false;
  Arguments arguments("locate",
                      "Tell which area the page shows at a pixel, counted from 0 at the top left:"
                      " its codes, name and value, with tabs between. The options of the page are"
                      " those of render.",
                      "vexel locate counties.mdf 400,300 --level 2 --size 1000x700");
  arguments.RequestOptions(request);
  arguments.Positional("PIXEL", "The pixel, as in 400,300", pixelText);
  arguments.Group("Output");
  arguments.Flag("--json", "Print JSON", asJson);
  if (!arguments.Parse(argc, argv)) return kDone;
  GroupingOf(request);
  const CPoint pixel = ParsePixel(pixelText);

  View view(request, &host);
  Probe probe(view);
  const CMapOb* area = AreaAt(view, probe, pixel);
  if (area == nullptr) throw Failed(pixelText, "no area is there");
  PrintArea(view, *area, asJson, host);
  return kDone;
}

}  // namespace vexel::cli
