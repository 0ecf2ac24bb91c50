#include "page.h"

#include <algorithm>

#include "platform/exceptions.h"
#include "render/mapgif.h"
#include "scratch.h"

namespace vexel::fuzz {

namespace {

void ChooseArea(CVELAMap& map, const View& view) {
  map.PrepareLevelDrawing(view.level % 9);
  CMapOb* node = &map;
  for (int steps = view.zoom % 4; steps > 0 && node->GetNumChildren() > 0; --steps) {
    node = node->GetChild(view.zoom % node->GetNumChildren());
    map.ZoomTo(node);
  }
}

void ChooseColumns(Model& model, const View& view) {
  const int columns = std::max(model.data.GetNumVars(), 1);
  model.data.SetVar1Selected(view.column % columns);
  if (view.second == 0 || model.data.GetNumVars() < 1) return;
  model.data.SetVar2Selected(view.second % columns);
  model.data.SetCalcSelected(view.second % 4);
  model.data.PerformCalc();
}

void Classify(Model& model, const View& view) {
  model.legend.numGroups = 1 + view.groups % CLegend::kMostGroups;
  model.legend.intervalType = view.interval % 3;
  model.legend.palette = view.palette % 6;
  model.legend.reverseColors = view.palette / 128;
  ChooseColumns(model, view);
  model.legend.UpdateData(&model.map, &model.data);
}

void TestPoint(const CMapOb& node, const CPoint& point) {
  for (int i = 0; i < node.GetNumPolygons(); ++i) node.GetPoly(i)->HitTest(point, node.GetAngle());
}

void DrawOnto(CMapGif& page, Model& model) {
  CStdioFile lines;
  Require(lines.Open(PathOf("page.txt").GetString(), CFile::modeWrite | CFile::modeCreate) != 0,
          "the file for area lines opens");
  page.SetHtmlFile(&lines);
  page.DrawMap(&model.map, "show('");
  page.DrawOutline(model.map.GetDrawRoot());
  page.DrawTitle();
  page.DrawLegend();
  page.DrawValueBox(model.map.GetDrawRoot());
  Require(page.Save() == 1, "a page is saved");
  Require(lines.Close() != 0, "the area lines are written");
}

}  // namespace

void DrawPage(Model& model, const View& view, int width, int height) {
  ChooseArea(model.map, view);
  try {
    Classify(model, view);
    CMapGif page(&model.map, &model.legend, &model.data, PathOf("page.gif"));
    page.PrepareCoords(width, height);
    page.ApplyCoords();
    DrawOnto(page, model);
  } catch (const CInvalidArgException&) {
  }
  TestPoint(*model.map.GetDrawRoot(), CPoint{width, -height});
  model.map.ZoomOut();
}

}  // namespace vexel::fuzz
