// Where title, map, legend and notes of a publication page stand.

#ifndef VEXEL_KIT_PUBLISH_PAGE_PLAN_H_
#define VEXEL_KIT_PUBLISH_PAGE_PLAN_H_

#include <cstdint>
#include <string>
#include <vector>

#include "kit/publish/drawing.h"
#include "kit/request/values.h"

namespace vexel {

// The colours of texts, chosen by that of the page.
struct Ink {
  std::uint32_t strong = 0;
  std::uint32_t soft = 0;
};

struct PlannedLegend {
  struct Entry {
    std::string text;
    std::uint16_t fill = 0;  // of its swatch
  };
  std::string heading;
  std::vector<Entry> entries;
};

// What a page is to hold; what is empty takes no room. The extent is that of the map in any unit.
struct PageContents {
  PageSize size;
  double extentWidth = 0.0;
  double extentHeight = 0.0;
  std::string title;
  std::string subtitle;
  std::string note;
  std::string source;
  PlannedLegend legend;
  Ink ink;
};

struct PagePlan {
  double unit = 0.0;  // the size of plain text, by which everything else goes; page pixels
  double mapScale = 1.0;
  PageArea map;
  PageArea legend;              // without extent when there is none
  std::vector<PageArea> taken;  // all that is not map
  std::vector<PageBox> boxes;
  std::vector<TextLine> texts;
  bool lacksLegend = false;            // left out, since the map would have no room
  std::vector<std::string> lost;       // texts left out likewise: "title", "note" ...
  std::vector<std::string> shortened;  // texts that end in an ellipsis
};

// Keeps the proportions of the extent. The legend stands to the right of the map or below it,
// whichever leaves the map larger. Nothing overlaps and nothing leaves the page: texts wrap, then
// end in an ellipsis; where the map would get too little, notes, legend and title go, in this
// order.
PagePlan PlanPage(const PageContents& contents);

}  // namespace vexel

#endif  // VEXEL_KIT_PUBLISH_PAGE_PLAN_H_
