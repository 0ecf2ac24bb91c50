// What the web pages have in common: how fixed text is filled, and how the areas stand in it.

#ifndef VEXEL_KIT_REPORT_PAGE_PIECES_H_
#define VEXEL_KIT_REPORT_PAGE_PIECES_H_

#include <vexel/map/map.h>

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "kit/view/view.h"

namespace vexel {

// Replaces each "$NAME$" of a text by its value, in one pass, so that values may hold anything.
std::string Filled(std::string_view pattern,
                   std::initializer_list<std::pair<std::string_view, std::string>> values);

// Sets `path` to the areas that an area lies in, below the draw root: the uppermost first and
// itself last.
void FindPath(const CVELAMap& map, const CMapOb* area, std::vector<const CMapOb*>& path);

// What a picture with that title is to those who do not see it.
std::string AlternativeText(const View& view, std::string_view title);

// The name of the level that is drawn, as markup; "Area" where it has none.
std::string LevelHeading(const CVELAMap& map);

// Appends a string of JSON that may stand in a script element: nothing in it can close one or open
// a comment.
void AppendForScript(std::string& to, std::string_view text);

}  // namespace vexel

#endif  // VEXEL_KIT_REPORT_PAGE_PIECES_H_
