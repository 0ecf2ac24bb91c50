// A polygon of a map: one ring, an outline or a hole.

#ifndef VEXEL_MAP_POLYGON_H_
#define VEXEL_MAP_POLYGON_H_

#include <span>

#include "map/rect.h"
#include "platform/array.h"
#include "platform/export.h"
#include "platform/geometry.h"
#include "platform/object.h"

class CArchive;
class CProgressDlg;
class CSpecFile;

// A vertex in map units.
struct tagVELAPOINTF {
  float x;
  float y;
};

// Holds its ring twice: as floats in the units of the map file, which are what is saved, and as
// integers in the working space, which are what drawing and hit testing use. Either list may be
// empty. A ring is closed from its last vertex to its first; winding may go either way, and
// nothing is checked.
class VEXEL_API CPolygon : public CObject {
 public:
  static CObject* CreateObject();
  static CRuntimeClass* GetThisClass();
  CRuntimeClass* GetRuntimeClass() const override;

  CPolygon() = default;
  CPolygon(const CPolygon&) = delete;
  CPolygon& operator=(const CPolygon&) = delete;

  // Working space.
  void AddPoint(int x, int y) { points.Add({x, y}); }
  void AddPoint(const CPoint& point) { points.Add(point); }
  CPoint& GetPoint(int index) { return points[index]; }
  CPoint* GetData() { return points.GetData(); }  // null when there are none
  int GetSize() const { return points.GetSize(); }
  void RemoveAllPoints() { points.RemoveAll(); }  // leaves the floats alone
  std::span<const CPoint> GetPoints() const { return points.Elements(); }

  // Map units. Adding returns the index of the new vertex.
  int AddPointF(tagVELAPOINTF point) { return pointsF.Add(point); }
  int AddPointF(float x, float y) { return pointsF.Add({x, y}); }
  tagVELAPOINTF GetPointF(int index) const { return pointsF[index]; }
  int GetSizeF() const { return pointsF.GetSize(); }
  void RemovePointF(int index) { pointsF.RemoveAt(index); }
  std::span<const tagVELAPOINTF> GetPointsF() const { return pointsF.Elements(); }

  void SetHole(int value) { hole = value; }
  int IsHole() const { return hole; }

  // Nonzero when `point` lies inside the ring in the working space after the ring has been turned
  // by `angle` radians about the origin (counter-clockwise where y grows upward); the point itself
  // is not turned. The winding rule decides, and of the edge the smallest x and y belong. Looks at
  // the first 64000 vertices.
  int HitTest(const CPoint& point, float angle) const;

  // Reads the lines of a [Polygon] section up to the next heading. Sets `polygonBounds` to the
  // bound of the vertices read, and widens `fileBounds` by them, both with the smallest y in `top`.
  // 1 at the end of the section; 0 when the load must stop, after a message (a bad coordinate) or
  // a cancel.
  int Build(CSpecFile& spec, CProgressDlg* progress, CRectF& polygonBounds, CRectF& fileBounds);

  // Writes a [Polygon] section from the floats.
  void Save(CSpecFile& spec) const;

  // Appends integer vertices for all float ones; `project` turns a tagVELAPOINTF into a CPoint.
  template <typename Projection>
  void AppendProjected(Projection project) {
    if (pointsF.IsEmpty()) return;
    CPoint* to = points.Extend(pointsF.GetSize());
    for (const tagVELAPOINTF& point : pointsF) *to++ = project(point);
  }

  // The polygon's record in a compiled map, with the one or the other list; loading replaces the
  // list. Load throws CArchiveException when the file ends early; Store throws CInvalidArgException
  // when there are fewer floats than integers.
  void Store(CArchive& ar, bool floats) const;
  void Load(CArchive& ar, bool floats);

 private:
  friend class CMapOb;

  static constexpr int kGrowBy = 25;

  vexel::GrowArray<CPoint> points{kGrowBy};
  vexel::GrowArray<tagVELAPOINTF> pointsF{kGrowBy};
  int hole = 0;
  bool shared = false;  // stands for any number of polygons without points, and is not changed
};

#endif  // VEXEL_MAP_POLYGON_H_
