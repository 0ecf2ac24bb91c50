#include "kit/report/area_parents.h"

#include <algorithm>
#include <unordered_map>

#include "kit/report/page_pieces.h"
#include "kit/request/markup.h"

namespace vexel {

std::string ParentText(const CVELAMap& map, const CMapOb* area) {
  std::vector<const CMapOb*> path;
  FindPath(map, area, path);
  path.pop_back();
  std::string whole;
  std::for_each(path.rbegin(), path.rend(), [&](const CMapOb* node) {
    whole.append(whole.empty() ? "" : ", ").append(XmlText(node->GetName().View()));
  });
  return whole;
}

AreaParents::AreaParents(const View& view) {
  std::unordered_map<const CMapOb*, std::size_t> places;
  ofAreas_.reserve(view.areas.size());
  for (const CMapOb* area : view.areas) {
    const auto [place, isNew] = places.emplace(area->GetParent(), texts_.size());
    if (isNew) texts_.push_back(ParentText(view.map, area));
    ofAreas_.push_back(place->second);
  }
}

}  // namespace vexel
