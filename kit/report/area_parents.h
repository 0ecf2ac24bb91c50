// What the areas on show are part of.

#ifndef VEXEL_KIT_REPORT_AREA_PARENTS_H_
#define VEXEL_KIT_REPORT_AREA_PARENTS_H_

#include <cstddef>
#include <string>
#include <vector>

#include "kit/view/view.h"

namespace vexel {

// The names of the areas that an area on show lies in below the draw root, the innermost first and
// with commas between; empty for none.
VEXEL_API std::string ParentText(const CVELAMap& map, const CMapOb* area);

// Those of all areas on show, each text once.
class VEXEL_API AreaParents {
 public:
  explicit AreaParents(const View& view);

  const std::vector<std::string>& Texts() const { return texts_; }
  std::size_t PlaceFor(std::size_t area) const { return ofAreas_[area]; }
  const std::string& TextFor(std::size_t area) const { return texts_[ofAreas_[area]]; }
  bool AreAny() const { return texts_.size() > 1 || !texts_.front().empty(); }

 private:
  std::vector<std::string> texts_;
  std::vector<std::size_t> ofAreas_;
};

}  // namespace vexel

#endif  // VEXEL_KIT_REPORT_AREA_PARENTS_H_
