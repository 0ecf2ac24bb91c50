// A node of the area tree.

#ifndef VEXEL_MAP_MAPOB_H_
#define VEXEL_MAP_MAPOB_H_

#include <cstddef>
#include <memory>
#include <span>
#include <string_view>

#include "brindle/areastruct.h"
#include "brindle/specfile.h"
#include "brindle/text.h"
#include "map/polygon.h"
#include "map/rect.h"
#include "platform/array.h"
#include "platform/export.h"
#include "platform/geometry.h"
#include "platform/object.h"

class CAreaData;
class CArchive;
class CProgressDlg;
class CVELAData;
struct _TREEITEM;  // an item of the host's tree control

namespace vexel {

class MapReader;

// The fixed part of a conic projection: angles in radians, and the cotangent of the latitude.
struct Cone {
  float refLat = 0.0F;
  float refLong = 0.0F;
  float coneConst = 0.0F;
};

// Groups may be nested this deep in a file; what lies deeper is refused.
inline constexpr int kDeepestNesting = 64;

}  // namespace vexel

// An area: a name, a key, polygons and child areas. A node owns its children and its polygons and
// deletes them with itself; it does not own its parent, its tree item or its row of data.
//
// `boundRectF` is in map units and `boundRect` in the working space; in both `top` holds the
// largest y. The bound covers the node's own polygons only. The working space has x from 0 at the
// west edge to the east and y from 0 at the north edge into the negative; its longer side is 32000.
class VEXEL_API CMapOb : public CObject {
 public:
  static CObject* CreateObject();
  static CRuntimeClass* GetThisClass();
  CRuntimeClass* GetRuntimeClass() const override;

  CMapOb() = default;
  CMapOb(const CVELAString& nodeName, const CAreaStruct& key) : area(key), name(nodeName) {}
  CMapOb(const CMapOb&) = delete;
  CMapOb& operator=(const CMapOb&) = delete;
  ~CMapOb() override;

  // Carries one node and its subtree to or from a compiled map: `floatPass` 0 is the integer form,
  // any other value the float form. With `oldFormat` a code of 0 means unset. Reading the integer
  // form appends to the node. Reading the float form makes polygons and children for a node that
  // has neither; else it fills the very nodes and polygons that stand there and must have their
  // shape. Throws CArchiveException when the file ends early, when the two forms differ in shape,
  // or when nodes are nested too deeply.
  virtual void Serialize(CArchive& ar, int floatPass, bool oldFormat);
  using CObject::Serialize;

  const CVELAString& GetName() const { return name; }
  void SetName(const CVELAString& text) { name = text; }
  const CAreaStruct& GetArea() const { return area; }
  void SetArea(const CAreaStruct& key) { area = key; }
  int GetLevel() const { return level; }
  void SetLevel(int value) { level = value; }
  CMapOb* GetParent() const { return parent; }
  void SetParent(CMapOb* node) { parent = node; }
  const CRect& GetBoundRect() const { return boundRect; }
  void SetBoundRect(const CRect& rect) { boundRect = rect; }
  CRectF& GetBoundRectF() { return boundRectF; }
  const CRectF& GetBoundRectF() const { return boundRectF; }
  void SetBoundRectF(CRectF rect) { boundRectF = rect; }
  const CRect& GetHitTestRect() const { return hitTestRect; }
  void SetHitTestRect(const CRect& rect) { hitTestRect = rect; }
  int IsDrawn() const { return drawn; }
  void SetDraw(int value) { drawn = value; }
  unsigned long GetColor() const { return color; }  // 0x00BBGGRR
  void SetColor(unsigned long value) { color = static_cast<std::uint32_t>(value); }
  _TREEITEM* GetTreeHandle() const { return treeHandle; }
  void SetTreeHandle(_TREEITEM* item) { treeHandle = item; }
  float GetAngle() const { return angle; }  // radians
  CAreaData* GetAreaData() const { return areaData; }
  void SetAreaData(CAreaData* row) { areaData = row; }

  // Children. Adding hands ownership to the node and sets neither parent nor level; Adopt does the
  // same and cannot lose what it is given. Inserting
  // beyond the count leaves null entries in between, which the caller fills before the tree is
  // used.
  int GetNumChildren() const { return children.GetSize(); }
  CMapOb*& GetChild(int index) { return children[index]; }
  CMapOb* GetChild(int index) const { return children[index]; }
  int AddChild(CMapOb* child) { return children.Add(child); }
  void Adopt(std::unique_ptr<CMapOb> child) {
    children.Add(child.get());
    static_cast<void>(child.release());
  }
  void InsertChildAt(CMapOb* child, int index) { children.InsertAt(index, child); }
  void RemoveAllChildren();

  // Calls `visit` with each child in order; none may be a null entry. A walk over a large map
  // mostly waits for memory: here the nodes to come are on their way while one is visited.
  template <typename Visit>
  void ForEachChild(const Visit& visit) const {
    constexpr std::size_t kAhead = 8;
    constexpr std::size_t kCacheLine = 64;
    const std::span<CMapOb* const> nodes = children.Elements();
    for (std::size_t i = 0; i < nodes.size(); ++i) {
      if (i + kAhead < nodes.size()) {
        const auto* next = reinterpret_cast<const char*>(nodes[i + kAhead]);
        __builtin_prefetch(next);
        __builtin_prefetch(next + kCacheLine);
      }
      visit(*nodes[i]);
    }
  }

  // Polygons. Adding hands ownership to the node; removing hands it back to the caller, who has the
  // polygon from the first GetPoly. To the second one, polygons of a compiled map that have no
  // points may all be the same.
  int GetNumPolygons() const { return polygons.GetSize(); }
  CPolygon* GetPoly(int index) {
    CPolygon* polygon = polygons[index];
    return polygon != nullptr && polygon->shared ? MakeOwn(index) : polygon;
  }
  const CPolygon* GetPoly(int index) const { return polygons[index]; }
  void AddPoly(CPolygon* polygon) { polygons.Add(polygon); }
  void Adopt(std::unique_ptr<CPolygon> polygon) {
    polygons.Add(polygon.get());
    static_cast<void>(polygon.release());
  }
  void RemovePoly(int index) { polygons.RemoveAt(index); }

  // The node with that key on the key's own level at or below this one; null when there is none.
  CMapOb* GetArea(const CAreaStruct& key);

  // The first node with that key in pre-order, whatever its level. Returns 1 and sets `found`, or
  // returns 0 and leaves it.
  int Find(const CAreaStruct& key, CMapOb*& found);

  // Makes a node below this one, which is the root or an ancestor of the key, and returns it.
  // Children stay in ascending order of their keys; missing ancestors are made on the way, named
  // after their own keys. A key that is there already gets a second node behind the first. Throws
  // CInvalidArgException on a node that is neither.
  CMapOb* InsertArea(const CVELAString& nodeName, const CAreaStruct& key);

  // Adds the number of nodes of this subtree, this one included, to `count`.
  void Count(int& count) const;

  // Make the levels and the parents of the whole subtree true, from those given for this node.
  void InitLevels(int nodeLevel);
  void InitParents(CMapOb* node);

  // Points this node and all below it at their rows of the data set, null where there is none. The
  // pointers stay good while the set's rows are unchanged. (Stands in data/dataset.cpp.)
  void SetAreaDataPointers(CVELAData* data);

  // Marks exactly the nodes of that level, in this subtree, as drawn.
  void PrepareLevelDrawing(int drawnLevel);

  // Gives each node of the subtree without polygons the rectangle as its bound, in the working
  // space. Returns 1 if there was one, else 0.
  int CheckForMissingPolygons(const CRect& rect);

  // Plain map units to the working space, for the whole subtree: appends to each polygon's integer
  // points and sets the bounds. `scale` is in units of the working space for one map unit.
  void NormalizeCoords(float scale, float xOrigin, float yOrigin);

  // Degrees of longitude and latitude to the working space through a conic projection; sets the
  // angles too, by which a node stands upright. Origins are in projected units.
  void NormalizeCoords(float scale, float xOrigin, float yOrigin, float refLat, float refLong,
                       float coneConst);

  // Projects one point in place, from degrees of longitude and latitude to the plane of a simple
  // conic projection whose cone touches the sphere at refLat: `coneConst` is the cotangent of
  // refLat, both reference angles are in radians.
  static void Conic(float* x, float* y, float refLat, float refLong, float coneConst);

  // The extent of this node's integer points after a turn by the angle of `root`, with the smallest
  // y in `top`. Children do not count; without any point the rectangle comes inside out.
  void GetRotatedRect(const CMapOb* root, CRectF* rect) const;

 protected:
  void ClearDraw();

  // Reads the section of this node, which a heading before the file's position has begun, up to
  // where it ends; `isGroup` lets it have nodes below it. 1 at its end, 0 when the load must stop.
  int Build(CSpecFile& spec, CProgressDlg* progress, int isGroup, CRectF& fileBounds);
  void Save(CSpecFile& spec, CProgressDlg* progress) const;
  void WriteTreeFile(CSpecFile& file, const CVELAString& baseUrl) const;

  static constexpr int kGrowBy = 25;

 private:
  friend class CVELAMap;
  friend class vexel::MapReader;

  // What InitParents, InitLevels and PrepareLevelDrawing do, in one walk that also counts the
  // nodes.
  int InitTree(CMapOb* node, int nodeLevel, int drawnLevel);

  CMapOb& InsertInOrder(std::unique_ptr<CMapOb> child);
  void ProjectPolygons(float scale, float xOrigin, float yOrigin, const vexel::Cone& cone);

  void Store(CArchive& ar, bool floats);
  void LoadNew(CArchive& ar, bool floats, bool oldFormat, int depth);
  void MergeFloats(CArchive& ar, bool oldFormat, int firstPolygon, int firstChild);
  void LoadKey(CArchive& ar, bool oldFormat);
  void LoadPolygons(CArchive& ar, bool floats);
  void MergePolygon(CArchive& ar, CPolygon*& polygon);
  CPolygon* MakeOwn(int index);

  // The polygon that stands for the given one, if it has no points; else null.
  static CPolygon* SharedFor(const CPolygon& polygon);

  // In this order, what every walk over the tree looks at comes first and stands close together.
  vexel::GrowArray<CMapOb*> children{kGrowBy};
  int level = 0;
  int drawn = 0;
  CAreaData* areaData = nullptr;
  CAreaStruct area;
  CMapOb* parent = nullptr;
  std::uint32_t color = 0;
  float angle = 0.0F;
  vexel::GrowArray<CPolygon*> polygons{kGrowBy};
  CVELAString name;
  CRect boundRect;
  CRectF boundRectF;
  CRect hitTestRect;
  _TREEITEM* treeHandle = nullptr;
};

#endif  // VEXEL_MAP_MAPOB_H_
