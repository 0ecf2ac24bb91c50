// The area at a pixel of a page.

#include <vexel/messages/messages.h>
#include <vexel/render/mapgif.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <utility>
#include <vector>

#include "arguments.h"
#include "commands.h"
#include "kit/request/error.h"
#include "kit/request/json_text.h"
#include "kit/view/view.h"

namespace vexel::cli {

namespace {

// The pixels of a scan line where the outline crosses it. A line belongs to an edge from its upper
// end on; the lower end belongs to it on the last line of the whole polygon only.
class Crossings {
 public:
  Crossings(std::span<const CPoint> ring, int row, std::vector<std::int64_t>& columns)
      : columns_(columns) {
    columns_.clear();
    const auto byRow = [](const CPoint& a, const CPoint& b) { return a.y < b.y; };
    const int lastRow = std::max_element(ring.begin(), ring.end(), byRow)->y;
    CPoint from = ring.back();
    for (const CPoint& to : ring) {
      Add(from.y < to.y ? from : to, from.y < to.y ? to : from, row, lastRow);
      from = to;
    }
    std::sort(columns_.begin(), columns_.end());
  }

  // True between the first and second crossing, the third and fourth, and so on, ends included.
  bool Cover(std::int64_t column) const {
    for (std::size_t i = 0; i + 1 < columns_.size(); i += 2) {
      if (column >= columns_[i] && column <= columns_[i + 1]) return true;
    }
    return false;
  }

 private:
  void Add(const CPoint& upper, const CPoint& lower, int row, int lastRow) {
    if (upper.y == lower.y) return;
    if (row >= upper.y && row < lower.y) {
      const auto rise = static_cast<double>(std::int64_t{lower.y} - upper.y);
      const auto run = static_cast<double>(std::int64_t{lower.x} - upper.x);
      const auto down = static_cast<double>(std::int64_t{row} - upper.y);
      columns_.push_back(static_cast<std::int64_t>(down * run / rise + 0.5 + upper.x));
    } else if (row == lastRow && row == lower.y) {
      columns_.push_back(lower.x);
    }
  }

  std::vector<std::int64_t>& columns_;
};

// True when a line drawn one pixel wide between two points passes over a pixel.
bool LinePasses(const CPoint& from, const CPoint& to, const CPoint& pixel) {
  const std::int64_t runX = std::int64_t{to.x} - from.x;
  const std::int64_t runY = std::int64_t{to.y} - from.y;
  const std::int64_t x = std::int64_t{pixel.x} - from.x;
  const std::int64_t y = std::int64_t{pixel.y} - from.y;
  const bool flat = std::abs(runX) >= std::abs(runY);
  const std::int64_t run = flat ? runX : runY;
  const std::int64_t along = flat ? x : y;
  if (along < std::min<std::int64_t>(run, 0) || along > std::max<std::int64_t>(run, 0))
    return false;
  if (run == 0) return x == 0 && y == 0;
  const double across = static_cast<double>(flat ? runY : runX) / static_cast<double>(run);
  const double off = static_cast<double>(flat ? y : x) - across * static_cast<double>(along);
  return std::abs(off) < 0.5;
}

// A prepared page that is asked instead of painted: the vertices of its polygons are the very
// pixels that a painted page has.
class Probe : public CMapGif {
 public:
  using CMapGif::CMapGif;

  // True when painting the polygon, inside and outline, would touch the pixel.
  bool Paints(const CPolygon& polygon, const CPoint& pixel) {
    if (polygon.GetSize() == 0) return false;
    const float angle = map->GetDrawRoot()->GetAngle();
    if (angle != 0.0F) {
      RotatePolygon(&polygon, &turned_, angle);
      SetPolygon(&turned_);
    } else {
      SetPolygon(&polygon);
    }
    const std::span<const CPoint> ring(points.data(), static_cast<std::size_t>(numPoints));
    if (Crossings(ring, pixel.y, columns_).Cover(pixel.x)) return true;
    CPoint from = ring.back();
    return std::any_of(ring.begin(), ring.end(), [&](const CPoint& to) {
      return LinePasses(std::exchange(from, to), to, pixel);
    });
  }

 private:
  CPolygon turned_;
  std::vector<std::int64_t> columns_;
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
  Probe probe(&view.map, &view.legend, &view.data, CString());
  probe.PrepareCoords(request.size.width, request.size.height);
  const bool isOnPage =
      pixel.x >= 0 && pixel.y >= 0 && pixel.x < request.size.width && pixel.y < request.size.height;
  const CMapOb* area = isOnPage ? AreaAt(view, probe, pixel) : nullptr;
  if (area == nullptr) throw Failed(pixelText, "no area is there");
  PrintArea(view, *area, asJson, host);
  return kDone;
}

}  // namespace vexel::cli
