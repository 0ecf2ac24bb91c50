// The table of a view's areas: which of them stand in it, and as markup.

#ifndef VEXEL_KIT_SITE_AREA_TABLE_H_
#define VEXEL_KIT_SITE_AREA_TABLE_H_

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "kit/site/compared.h"
#include "kit/site/links.h"
#include "kit/view/view.h"

namespace vexel {

inline constexpr std::size_t kTableRows = 100;  // on a page of it

struct TableChoice {
  std::string sort;              // "name", "value" or "parent"; anything else: the order of the map
  bool down = false;             // the other way round
  std::string find;              // in names, folded
  std::optional<int> in;         // only areas of this slot of the legend
  int page = 1;                  // from 1
  const CMapOb* kept = nullptr;  // if it is among the areas, the page is the one that it is on
};

struct TableRows {
  std::vector<const CMapOb*> areas;  // on this page
  std::size_t found = 0;             // on all pages
  int page = 1;
  int pages = 1;
};

// Areas that are equal in what they are sorted by stay in the map's order, and those without a
// value come last, whichever way the others go. A page beyond the last is the last.
VEXEL_API TableRows ChooseRows(const View& view, const TableChoice& choice);

// The table with links to sort it and to turn its pages. `compared`, if given, has a column.
VEXEL_API std::string TableMarkup(View& view, const TableChoice& choice, const TableRows& rows,
                                  const Links& links, const ComparedColumn* compared);

}  // namespace vexel

#endif  // VEXEL_KIT_SITE_AREA_TABLE_H_
