#include "render/mapgif.h"

#include "map/map.h"
#include "platform/ref_or_throw.h"

CObject* CMapGif::CreateObject() { return new CMapGif; }

const CRuntimeClass* CMapGif::GetThisClass() {
  static constexpr CRuntimeClass kRecord{"CMapGif", &CMapGif::CreateObject, &CGif::GetThisClass};
  return &kRecord;
}

const CRuntimeClass* CMapGif::GetRuntimeClass() const { return GetThisClass(); }

CMapGif::CMapGif(CVELAMap* pageMap, CLegend* pageLegend, CVELAData* pageData, const CString& file)
    : map(pageMap), legend(pageLegend), data(pageData) {
  extent = vexel::RefOrThrow(vexel::RefOrThrow(map).GetDrawRoot()).GetBoundRect();
  fileName = file;
}
