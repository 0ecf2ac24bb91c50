// What the tests of the canvas and the page share: canvases whose fields can be looked at, pictures
// drawn with gd's own calls to compare them with, and short ways to make areas.

#ifndef VEXEL_TESTS_RENDER_RENDER_FIXTURE_H_
#define VEXEL_TESTS_RENDER_RENDER_FIXTURE_H_

#include <gd.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <random>
#include <span>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "legend/legend.h"
#include "map/map.h"
#include "render/mapgif.h"

namespace vexel::test {

class ProbeGif : public CGif {
 public:
  using CGif::CGif;
  using CGif::colorIndex;
  using CGif::colorRgb;
  using CGif::GetVertices;
  using CGif::height;
  using CGif::image;
  using CGif::numColors;
  using CGif::numPoints;
  using CGif::ownsImage;
  using CGif::points;
  using CGif::width;
};

class ProbePage : public CMapGif {
 public:
  using CMapGif::CMapGif;
  using CMapGif::extent;
  using CMapGif::GetVertices;
  using CMapGif::image;
  using CMapGif::legendRect;
  using CMapGif::mapRect;
  using CMapGif::numPoints;
  using CMapGif::ownsImage;
  using CMapGif::points;
  using CMapGif::titleRect;
};

// A palette picture with the first colours of a canvas, for gd's own calls.
class Picture {
 public:
  Picture(int width, int height) : image_(gdImageCreate(width, height), &gdImageDestroy) {
    gdImageColorAllocate(image_.get(), 255, 255, 255);
    gdImageColorAllocate(image_.get(), 0, 0, 0);
  }
  gdImagePtr get() const { return image_.get(); }
  gdImageStruct& operator*() const { return *image_; }
  gdImageStruct* operator->() const { return image_.get(); }

 private:
  std::unique_ptr<gdImageStruct, decltype(&gdImageDestroy)> image_;
};

// The first pixel that two pictures do not share, as text; empty when they are the same.
inline std::string Difference(const gdImageStruct& a, const gdImageStruct& b) {
  std::ostringstream out;
  if (a.sx != b.sx || a.sy != b.sy) out << a.sx << "x" << a.sy << " and " << b.sx << "x" << b.sy;
  for (int y = 0; y < a.sy && out.str().empty(); ++y) {
    const auto [inA, inB] = std::mismatch(a.pixels[y], a.pixels[y] + a.sx, b.pixels[y]);
    if (inA == a.pixels[y] + a.sx) continue;
    out << "pixel " << inA - a.pixels[y] << "," << y << ": " << int{*inA} << " and " << int{*inB};
  }
  return out.str();
}

inline std::vector<gdPoint> ForGd(std::span<const CPoint> ring) {
  std::vector<gdPoint> points;
  for (const CPoint& point : ring) points.push_back({point.x, point.y});
  return points;
}

inline std::string ToText(const CRect& rect) {
  std::ostringstream out;
  out << rect.left << ", " << rect.top << ", " << rect.right << ", " << rect.bottom;
  return out.str();
}

inline std::string ToText(std::span<const CPoint> ring) {
  std::ostringstream out;
  for (const CPoint& point : ring) out << '(' << point.x << ", " << point.y << ')';
  return out.str();
}

inline std::unique_ptr<CPolygon> MakePolygon(const std::vector<CPoint>& ring) {
  auto polygon = std::make_unique<CPolygon>();
  for (const CPoint& point : ring) polygon->AddPoint(point);
  return polygon;
}

// Adds an area with one polygon to a node.
inline CMapOb& AddArea(CMapOb& parent, const char* name, std::int32_t code,
                       const std::vector<CPoint>& ring, unsigned long color) {
  CAreaStruct key;
  key.codes[0] = code;
  auto area = std::make_unique<CMapOb>(name, key);
  area->AddPoly(MakePolygon(ring).release());
  area->SetColor(color);
  area->SetDraw(1);
  CMapOb& added = *area;
  parent.AddChild(area.release());
  return added;
}

// Gives a node that has a polygon an angle, in the way that a projection does it: the node's
// parallel is seen from a pole, `degrees` west of the middle. Children must come later.
inline void TurnNode(CMapOb& node, float degrees) {
  const CRect bound = node.GetBoundRect();
  node.SetBoundRectF(CRectF(-degrees - 1, 0, -degrees + 1, 0));
  node.NormalizeCoords(1, 0, 0, 1.5707964F, 0, 1);
  node.SetBoundRect(bound);
}

// A map with nothing in it but a bound, and a legend of five groups whose longest text has the
// given length.
struct Scene {
  explicit Scene(const CRect& bound = {0, 0, 32000, -16000}, int longestText = 15) {
    map.SetBoundRect(bound);
    legend.numGroups = 4;
    for (LegendGroup& group : legend.groups) group.rangeLabel = "x";
    legend.groups[1].rangeLabel =
        CVELAString(std::string(static_cast<std::size_t>(longestText), 'x'));
  }

  // A page of that size, with its image.
  std::unique_ptr<ProbePage> MakePage(int width, int height) {
    auto page = std::make_unique<ProbePage>(&map, &legend, nullptr, CString("page.gif"));
    page->PrepareCoords(width, height);
    page->ApplyCoords();
    return page;
  }

  CVELAMap map;
  CLegend legend;
};

}  // namespace vexel::test

#endif  // VEXEL_TESTS_RENDER_RENDER_FIXTURE_H_
