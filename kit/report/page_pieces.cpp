#include "kit/report/page_pieces.h"

#include <algorithm>

#include "kit/request/hints.h"
#include "kit/request/json_text.h"
#include "kit/request/markup.h"

namespace vexel {

std::string Filled(std::string_view pattern,
                   std::initializer_list<std::pair<std::string_view, std::string>> values) {
  std::string filled;
  for (;;) {
    const std::size_t open = pattern.find('$');
    const std::size_t close = open == std::string_view::npos ? open : pattern.find('$', open + 1);
    filled.append(pattern.substr(0, open));
    if (close == std::string_view::npos) return filled;
    const std::string_view name = pattern.substr(open + 1, close - open - 1);
    const auto* value = std::find_if(values.begin(), values.end(),
                                     [=](const auto& entry) { return entry.first == name; });
    if (value != values.end()) filled += value->second;
    pattern.remove_prefix(close + 1);
  }
}

void FindPath(const CVELAMap& map, const CMapOb* area, std::vector<const CMapOb*>& path) {
  path.assign(1, area);
  while (path.back()->GetParent() != nullptr && path.back()->GetParent() != map.GetDrawRoot() &&
         path.back() != map.GetDrawRoot()) {
    path.push_back(path.back()->GetParent());
  }
  std::reverse(path.begin(), path.end());
}

std::string AlternativeText(const View& view, std::string_view title) {
  std::string text = "Map: ";
  return text.append(title) + ". " + Counted(view.areas.size(), "area") + " in " +
         Counted(view.legend.numGroups, "group") + " of colour.";
}

std::string LevelHeading(const CVELAMap& map) {
  const int level = map.GetDrawLevel();
  const bool isNamed = level < CVELAMap::kMostLevels && !map.GetLevelName(level).IsEmpty();
  return isNamed ? MarkupText(XmlText(map.GetLevelName(level).View())) : "Area";
}

void AppendForScript(std::string& to, std::string_view text) {
  const std::size_t begin = to.size();
  AppendJson(to, text);
  for (std::size_t at = begin; (at = to.find('<', at)) != std::string::npos;) {
    to.replace(at, 1, "\\u003c");
  }
}

}  // namespace vexel
