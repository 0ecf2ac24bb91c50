#include "kit/view/areas.h"

#include "kit/request/error.h"
#include "kit/request/values.h"

namespace vexel {

CMapOb* AreaNamed(CVELAMap& map, const std::string& option, const CAreaStruct& key) {
  CMapOb* found = nullptr;
  if (map.Find(key, found) != 0 && found != &map) return found;
  throw WrongRequest(option + ": the map has no area " + KeyText(key));
}

bool IsInDrawRoot(const CVELAMap& map, const CMapOb* area) {
  const CMapOb* root = map.GetDrawRoot();
  while (area != nullptr && area != root) area = area->GetParent();
  return area == root;
}

}  // namespace vexel
