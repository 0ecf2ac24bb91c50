// What is on show: draw root, draw level, and the bounds that go with them.

#include <algorithm>

#include "map/map.h"
#include "messages/messages.h"
#include "platform/host.h"

void CMapOb::PrepareLevelDrawing(int drawnLevel) {
  drawn = level == drawnLevel ? 1 : 0;
  ForEachChild([=](CMapOb& child) { child.PrepareLevelDrawing(drawnLevel); });
}

int CMapOb::CheckForMissingPolygons(const CRect& rect) {
  int missing = 0;
  if (GetNumPolygons() == 0) {
    boundRect = rect;
    missing = 1;
  }
  for (CMapOb* child : children) missing |= child->CheckForMissingPolygons(rect);
  return missing;
}

void CVELAMap::PrepareLevelDrawing(int drawnLevel) {
  drawLevel = drawnLevel;
  CMapOb::PrepareLevelDrawing(drawnLevel);
}

int CVELAMap::ZoomTo(CMapOb* node) {
  if (node == nullptr) return 0;
  drawRoot = node;
  PrepareLevelDrawing(LevelFor(*node));
  return 1;
}

int CVELAMap::ZoomOut() {
  const CMapOb* before = drawRoot;
  CMapOb* above = drawRoot->GetParent();
  drawRoot = above == nullptr ? this : above;
  PrepareLevelDrawing(LevelFor(*drawRoot));
  return drawRoot != before ? 1 : 0;
}

// The level to draw under a draw root: what the table says, at least the next one, at most the
// deepest. A compiled map may name any number of levels, less than none included.
int CVELAMap::LevelFor(const CMapOb& root) const {
  const int above = root.GetLevel();
  const bool inTable = above >= 0 && above < kMostLevels;
  int chosen = inTable ? zoomDrawLevels[static_cast<std::size_t>(above)] : 0;
  if (chosen <= above) chosen = above + 1;
  return std::min(chosen, std::max(numMapLevels, 0) - 1);
}

const CRect& CVELAMap::GetBoundRect(const CAreaStruct& key) {
  CMapOb* found = this;
  Find(key, found);
  return found->GetBoundRect();
}

int CVELAMap::CheckForMissingPolygons(const CRect& rect) {
  return CheckForMissingPolygons(rect, {});
}

int CVELAMap::CheckForMissingPolygons(const CRect& rect, std::string_view file) {
  int missing = 0;
  for (CMapOb* child : children) missing |= child->CheckForMissingPolygons(rect);
  if (missing != 0) vexel::Tell(CHost::ok, vexel::Message::missingPolygons, {.file = file});
  return missing;
}
