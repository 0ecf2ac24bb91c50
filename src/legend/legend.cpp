#include "legend/legend.h"

#include <algorithm>
#include <string>

#include "platform/exceptions.h"

CLegend::CLegend() {
  constexpr int kFirstValues = 1000;
  title = legendText;
  values.SetSize(kFirstValues);
  for (int i = 0; i < kMostGroups; ++i) {
    Group(i).groupName = CVELAString("Group " + std::to_string(i + 1));
  }
  Group(kNoDataSlot).groupName = "No data";
}

void CLegend::operator=(const CLegend& other) {  // NOLINT: gives nothing, by custom
  hostFlag = other.hostFlag;
  drawFrame = other.drawFrame;
  useGroupNames = other.useGroupNames;
  title = other.title;
  titleFont = other.titleFont;
  numGroups = other.numGroups;
  intervalType = other.intervalType;
  palette = other.palette;
  reverseColors = other.reverseColors;
  textFont = other.textFont;
  groups = other.groups;
}

std::span<const LegendGroup> CLegend::GetGroups() const {
  if (numGroups > kMostGroups) AfxThrowInvalidArgException();
  return std::span(groups).first(static_cast<std::size_t>(std::max(numGroups, 0)));
}

LegendRow CLegend::GetRow(int slot) const {
  if (slot < 0 || slot > kNoDataSlot) AfxThrowInvalidArgException();
  const LegendGroup& group = groups[static_cast<std::size_t>(slot)];
  return {slot, &group, (useGroupNames != 0 ? group.groupName : group.rangeLabel).View()};
}

std::vector<LegendRow> CLegend::GetRows() const {
  std::vector<LegendRow> rows;
  rows.reserve(groups.size());
  const int inUse = static_cast<int>(GetGroups().size());
  for (int slot = 0; slot < inUse; ++slot) rows.push_back(GetRow(slot));
  if (IsMissingData() != 0) rows.push_back(GetRow(kNoDataSlot));
  return rows;
}
