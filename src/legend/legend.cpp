#include "legend/legend.h"

#include <string>

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
