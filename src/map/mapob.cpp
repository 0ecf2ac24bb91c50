#include "map/mapob.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <new>
#include <utility>

CObject* CMapOb::CreateObject() { return new CMapOb; }

CRuntimeClass* CMapOb::GetThisClass() {
  static constinit CRuntimeClass record{"CMapOb", &CMapOb::CreateObject, &CObject::GetThisClass};
  return &record;
}

CRuntimeClass* CMapOb::GetRuntimeClass() const { return GetThisClass(); }

CMapOb::~CMapOb() {
  for (const CPolygon* polygon : polygons) {
    if (polygon != nullptr && !polygon->shared) delete polygon;
  }
  polygons.RemoveAll();
  RemoveAllChildren();
}

// A file of a few bytes for each polygon must not take a hundred in memory: those without points,
// outlines and holes with the mark that writers give them, are two objects for the whole process,
// which live to its end.
CPolygon* CMapOb::SharedFor(const CPolygon& polygon) {
  if (polygon.GetSize() > 0 || polygon.GetSizeF() > 0) return nullptr;
  if (polygon.hole != 0 && polygon.hole != 1) return nullptr;
  constexpr auto make = [](void* room, int hole) {
    auto* made = new (room) CPolygon;
    made->hole = hole;
    made->shared = true;
    return made;
  };
  alignas(CPolygon) static std::array<std::array<std::byte, sizeof(CPolygon)>, 2> room;
  static CPolygon* const outline = make(room[0].data(), 0);
  static CPolygon* const hole = make(room[1].data(), 1);
  return polygon.hole == 0 ? outline : hole;
}

CPolygon* CMapOb::MakeOwn(int index) {
  auto own = std::make_unique<CPolygon>();
  own->hole = polygons[index]->hole;
  return polygons[index] = own.release();
}

void CMapOb::RemoveAllChildren() {
  // Not by ForEachChild: what InsertChildAt left empty may never have been filled.
  std::for_each(children.begin(), children.end(), std::default_delete<CMapOb>());
  children.RemoveAll();
}

CMapOb* CMapOb::GetArea(const CAreaStruct& key) {
  if (key.GetLevel() == level) return area == key ? this : nullptr;
  for (CMapOb* child : children) {
    if (CMapOb* found = child->GetArea(key); found != nullptr) return found;
  }
  return nullptr;
}

int CMapOb::Find(const CAreaStruct& key, CMapOb*& found) {
  if (area == key) {
    found = this;
    return 1;
  }
  return std::any_of(children.begin(), children.end(),
                     [&](CMapOb* child) { return child->Find(key, found) != 0; })
             ? 1
             : 0;
}

CMapOb* CMapOb::InsertArea(const CVELAString& nodeName, const CAreaStruct& key) {
  const auto unsetFrom = [&](std::size_t code) {
    CAreaStruct cut = key;
    if (code < cut.codes.size())
      std::fill(cut.codes.begin() + code, cut.codes.end(), CAreaStruct::kUnset);
    return cut;
  };
  CAreaStruct parentKey = key;
  parentKey.codes[static_cast<std::size_t>(key.GetLevelWithLeadingZeros() - 1)] =
      CAreaStruct::kUnset;
  if (area == parentKey) {
    return &InsertInOrder(std::make_unique<CMapOb>(nodeName, key));
  }
  // From a node that is no ancestor of the key no path leads to its place. The root is one of every
  // key, whatever its own is.
  const bool isAncestor = level >= 0 && level < key.GetLevel() - 1 &&
                          (level == 0 || area == unsetFrom(static_cast<std::size_t>(level)));
  if (!isAncestor) AfxThrowInvalidArgException();
  const CAreaStruct pathKey = unsetFrom(static_cast<std::size_t>(level) + 1);
  const auto* onPath = std::find_if(children.begin(), children.end(),
                                    [&](const CMapOb* child) { return child->area == pathKey; });
  if (onPath != children.end()) return (*onPath)->InsertArea(nodeName, key);
  auto between = std::make_unique<CMapOb>(pathKey.GetAreasStr(), pathKey);
  return InsertInOrder(std::move(between)).InsertArea(nodeName, key);
}

CMapOb& CMapOb::InsertInOrder(std::unique_ptr<CMapOb> child) {
  const auto* before = std::find_if(children.begin(), children.end(),
                                    [&](const CMapOb* other) { return child->area < other->area; });
  children.InsertAt(static_cast<int>(before - children.begin()), child.get());
  child->parent = this;
  child->level = level + 1;
  return *child.release();
}

void CMapOb::Count(int& count) const {
  ++count;
  ForEachChild([&](const CMapOb& child) { child.Count(count); });
}

void CMapOb::InitLevels(int nodeLevel) {
  level = nodeLevel;
  ForEachChild([=](CMapOb& child) { child.InitLevels(nodeLevel + 1); });
}

void CMapOb::InitParents(CMapOb* node) {
  parent = node;
  ForEachChild([this](CMapOb& child) { child.InitParents(this); });
}

int CMapOb::InitTree(CMapOb* node, int nodeLevel, int drawnLevel) {
  parent = node;
  level = nodeLevel;
  drawn = nodeLevel == drawnLevel ? 1 : 0;
  int count = 1;
  ForEachChild([&](CMapOb& child) { count += child.InitTree(this, nodeLevel + 1, drawnLevel); });
  return count;
}

void CMapOb::ClearDraw() {
  drawn = 0;
  ForEachChild([](CMapOb& child) { child.ClearDraw(); });
}
