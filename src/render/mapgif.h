// A map page on a canvas.

#ifndef VEXEL_RENDER_MAPGIF_H_
#define VEXEL_RENDER_MAPGIF_H_

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "brindle/areastruct.h"
#include "brindle/text.h"
#include "platform/export.h"
#include "platform/geometry.h"
#include "render/gif.h"

class CLegend;
class CMapOb;
class CVELAData;
class CVELAMap;
struct LegendRow;

// Title band at the top, the map, and the legend beside or below it. The page owns none of map,
// legend, data set and HTML file. It is driven in this order: UpdateData of the legend, then the
// constructor, PrepareCoords, ApplyCoords, SetHtmlFile, DrawMap, whatever else is to lie on top,
// Save. Nothing is erased between calls.
class VEXEL_API CMapGif : public CGif {
 public:
  static CObject* CreateObject();
  static CRuntimeClass* GetThisClass();
  CRuntimeClass* GetRuntimeClass() const override;

  CMapGif() = default;

  // Stores the pointers and takes the extent of the map's draw root; makes no image. An operation
  // that needs a map or a legend throws CInvalidArgException without it.
  CMapGif(CVELAMap* pageMap, CLegend* pageLegend, CVELAData* pageData, const CString& file);

  // Size of the legend box in pixels, from its rows. The heading does not count.
  int GetLegendWidth() const;
  int GetLegendHeight() const;

  // Lays the page out for a size in pixels; may be repeated. Draws nothing.
  void PrepareCoords(int pageWidth, int pageHeight);

  // Makes the image of the prepared size. Throws CInvalidArgException for a side outside 1 to
  // 65535.
  void ApplyCoords();

  // Scales a polygon's integer points from the extent into the map rectangle. The polygon must have
  // been turned already when the draw root has an angle. Throws CInvalidArgException for a polygon
  // without points.
  void SetPolygon(const CPolygon* polygon);

  // Replaces the target's integer points by the source's, turned by `angle` radians about the
  // origin of the working space, counter-clockwise where y grows upward.
  static void RotatePolygon(const CPolygon* source, CPolygon* target, float angle);

  // Paints the polygons of all marked nodes of the subtree, each with a black outline, in tree
  // order, and writes an area line for each when there is an HTML file. `url` is what the links
  // begin with; it opens the quoted argument and the call that an area line closes.
  void DrawMap(CMapOb* node, const CVELAString& url);

  // Paints the node's own polygons once more with the outline colour.
  void DrawOutline(CMapOb* node);

  void DrawTitle();
  void DrawLegend();

  // A box with name and value of a node, its corner over the node's centre.
  void DrawValueBox(CMapOb* node);

  // Writes the area line of the polygon at work to the HTML file. Throws CFileException when the
  // file does not take it.
  void PolygonToHtml(const CAreaStruct& key, const CVELAString& url);

  // The rectangles of the page in pixels, after PrepareCoords.
  const CRect& GetMapRect() const { return mapRect; }
  const CRect& GetLegendRect() const { return legendRect; }
  const CRect& GetExtent() const { return extent; }

 protected:
  CVELAMap* map = nullptr;
  CLegend* legend = nullptr;
  CVELAData* data = nullptr;
  CRect extent;      // the part of the working space that fills mapRect
  CRect mapRect;     // pixels
  CRect legendRect;  // pixels
  CRect titleRect;   // pixels; top and bottom only

 private:
  vexel::Axis ColumnAxis() const;
  vexel::Axis RowAxis(bool turned) const;
  float RootAngle() const;

  struct Placement;
  void DrawSubtree(const CMapOb& area, const CVELAString& url, const Placement& placement);
  void SetVertices(std::span<const CPoint> vertices, const Placement& placement);
  template <typename Paint>
  void ForEachPolygon(const CMapOb& node, const Placement& placement, Paint paint);

  void DrawLegendRow(const LegendRow& row, std::int64_t top);
  CPoint ValueBoxCorner(const CMapOb& area) const;
  void DrawText(bool bold, std::int64_t x, std::int64_t y, std::string_view drawn);

  std::vector<CPoint> turned_;  // the ring at work on a turned map
};

#endif  // VEXEL_RENDER_MAPGIF_H_
