// Which areas stand in a table, and in what order.

#include <algorithm>
#include <limits>
#include <string>
#include <utility>

#include "kit/publish/fills.h"
#include "kit/report/area_parents.h"
#include "kit/request/fold.h"
#include "kit/site/area_table.h"

namespace vexel {

namespace {

using Areas = std::vector<const CMapOb*>;

Areas AreasFound(const View& view, const TableChoice& choice) {
  Areas areas(view.areas.begin(), view.areas.end());
  if (choice.in) {
    std::erase_if(areas, [&](const CMapOb* area) { return SlotOf(view, *area) != *choice.in; });
  }
  const std::string wanted = Folded(choice.find);
  if (!wanted.empty()) {
    std::erase_if(areas, [&](const CMapOb* area) {
      return Folded(area->GetName().View()).find(wanted) == std::string::npos;
    });
  }
  return areas;
}

// Sorts by what `keyOf` gives for each area, asked once each.
template <typename KeyOf>
void SortBy(Areas& areas, bool down, const KeyOf& keyOf) {
  std::vector<std::pair<decltype(keyOf(areas.front())), const CMapOb*>> keyed;
  keyed.reserve(areas.size());
  for (const CMapOb* area : areas) keyed.emplace_back(keyOf(area), area);
  std::stable_sort(keyed.begin(), keyed.end(), [=](const auto& a, const auto& b) {
    return down ? b.first < a.first : a.first < b.first;
  });
  std::transform(keyed.begin(), keyed.end(), areas.begin(),
                 [](const auto& each) { return each.second; });
}

void Sort(Areas& areas, const View& view, const TableChoice& choice) {
  if (choice.sort == "name") {
    SortBy(areas, choice.down, [](const CMapOb* area) { return SortKey(area->GetName().View()); });
  } else if (choice.sort == "value") {
    const double last = std::numeric_limits<double>::infinity() * (choice.down ? -1.0 : 1.0);
    SortBy(areas, choice.down,
           [&](const CMapOb* area) { return ValueOf(view, *area).value_or(last); });
  } else if (choice.sort == "parent") {
    SortBy(areas, choice.down,
           [&](const CMapOb* area) { return SortKey(ParentText(view.map, area)); });
  }
}

}  // namespace

TableRows ChooseRows(const View& view, const TableChoice& choice) {
  Areas areas = AreasFound(view, choice);
  Sort(areas, view, choice);
  TableRows rows;
  rows.found = areas.size();
  rows.pages =
      static_cast<int>(std::max<std::size_t>((areas.size() + kTableRows - 1) / kTableRows, 1));
  rows.page = std::clamp(choice.page, 1, rows.pages);
  const auto kept = std::find(areas.begin(), areas.end(), choice.kept);
  if (kept != areas.end()) {
    rows.page = 1 + static_cast<int>(static_cast<std::size_t>(kept - areas.begin()) / kTableRows);
  }
  const std::size_t first = kTableRows * static_cast<std::size_t>(rows.page - 1);
  const std::size_t count = std::min(kTableRows, areas.size() - std::min(first, areas.size()));
  const auto begin = areas.begin() + static_cast<std::ptrdiff_t>(first);
  rows.areas.assign(begin, begin + static_cast<std::ptrdiff_t>(count));
  return rows;
}

}  // namespace vexel
