#include "data/dataset.h"

#include <algorithm>
#include <utility>

#include "data/areaindex.h"
#include "map/mapob.h"
#include "platform/ref_or_throw.h"

CObject* CVELAData::CreateObject() { return new CVELAData; }

CRuntimeClass* CVELAData::GetThisClass() {
  static constinit CRuntimeClass record{"CVELAData", &CVELAData::CreateObject,
                                        &CObject::GetThisClass};
  return &record;
}

CRuntimeClass* CVELAData::GetRuntimeClass() const { return GetThisClass(); }

void CVELAData::operator=(CVELAData& source) {  // NOLINT: gives nothing, by custom
  if (this == &source) return;
  mapIsText = source.mapIsText;
  mapFile = source.mapFile;
  linkToFile = source.linkToFile;
  map = source.map;
  mapLabel = source.mapLabel;
  noValue = source.noValue;
  thousand = source.thousand;
  decimal = source.decimal;
  numVars = source.numVars;
  for (int i = 0; i < source.varDecs.GetSize(); ++i) {
    varDecs[i] = source.varDecs[i];
    varNames[i] = source.varNames[i];
  }
  numDataLevels = source.numDataLevels;
  areas.RemoveAll();
  for (const CAreaData& row : source.areas) AddAreaData(row);
  var1Selected = source.var1Selected;
  var2Selected = source.var2Selected;
  calcSelected = source.calcSelected;
}

CAreaData* CVELAData::FindAreaData(const CAreaStruct& key) {
  auto* const found = std::find_if(areas.begin(), areas.end(),
                                   [&](const CAreaData& row) { return row.area == key; });
  return found == areas.end() ? nullptr : found;
}

int CVELAData::AddAreaData(const CAreaData& row) {
  CAreaData copy(row.area);
  copy.values.SetSize(row.values.GetSize());
  std::ranges::copy(row.values, copy.values.begin());
  return areas.Add(std::move(copy));
}

void CMapOb::SetAreaDataPointers(CVELAData* data) {
  CVELAData& set = vexel::RefOrThrow(data);
  vexel::AreaIndex<CAreaData> rows;
  for (int i = 0; i < set.GetNumAreas(); ++i) rows.Add(&set.GetAreaData(i));
  const auto point = [&](const auto& self, CMapOb& node) -> void {
    node.areaData = rows.Find(node.area);
    node.ForEachChild([&](CMapOb& child) { self(self, child); });
  };
  point(point, *this);
}
