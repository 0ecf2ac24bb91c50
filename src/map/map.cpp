#include "map/map.h"

#include <utility>

namespace {

void CheckLevel(int index) {
  if (index < 0 || index >= CVELAMap::kMostLevels) AfxThrowInvalidArgException();
}

}  // namespace

CObject* CVELAMap::CreateObject() { return new CVELAMap; }

CRuntimeClass* CVELAMap::GetThisClass() {
  static constinit CRuntimeClass record{"CVELAMap", &CVELAMap::CreateObject, &CMapOb::GetThisClass};
  return &record;
}

CRuntimeClass* CVELAMap::GetRuntimeClass() const { return GetThisClass(); }

const CVELAString& CVELAMap::GetLevelName(int index) const {
  CheckLevel(index);
  return levelNames[static_cast<std::size_t>(index)];
}

void CVELAMap::AddLevelName(const CVELAString& levelName) {
  CheckLevel(numMapLevels);
  levelNames[static_cast<std::size_t>(numMapLevels++)] = levelName;
}

void CVELAMap::SetTitle(CVELAString title) {
  titleLines.RemoveAll();
  titleLines.Add(std::move(title));
}
