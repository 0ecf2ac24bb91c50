// What the tests of faults share: a map, a table and a legend that belong together, and what a host
// does with them.

#ifndef VEXEL_TESTS_FAULTS_MODEL_H_
#define VEXEL_TESTS_FAULTS_MODEL_H_

#include "data/dataset.h"
#include "legend/legend.h"
#include "map/map_fixture.h"
#include "platform/exceptions.h"
#include "render/mapgif.h"

namespace vexel::test {

class ColumnData : public CVELAData {
 public:
  // Something to show where no data file has been loaded.
  void AddColumn() {
    SetNumVars(1);
    varNames.SetSize(2);
    varDecs.SetSize(2);
  }
};

struct Model {
  Model() {
    data.map = &map;
    map.data = &data;
    map.legend = &legend;
    legend.numGroups = 3;
  }

  ProbeMap map;
  ColumnData data;
  CLegend legend;
};

// Lines written as for a map, with ";" for the tabs of a table.
inline std::string Cells(const std::string& joined) {
  std::string text = Lines(joined);
  std::replace(text.begin(), text.end(), ';', '\t');
  return text;
}

// A page with everything that can be on one.
inline int SavePage(Model& model, const CVELAString& path, CStdioFile* areaLines = nullptr) {
  CMapOb* root = model.map.GetDrawRoot();
  CMapGif page(&model.map, &model.legend, &model.data, path);
  model.legend.UpdateData(&model.map, &model.data);
  page.PrepareCoords(60, 50);
  page.ApplyCoords();
  page.SetHtmlFile(areaLines);
  page.DrawMap(root, "u");
  page.DrawOutline(root);
  page.DrawTitle();
  page.DrawLegend();
  page.DrawValueBox(root);
  return page.Save();
}

// Walks, zooms, draws and writes whatever the model holds, and gives the number of pages drawn. A
// page with nothing on show, or with a polygon without points, ends in the documented exception.
inline int UseAll(Model& model) {
  int pages = 0;
  if (model.data.GetNumVars() == 0) model.data.AddColumn();
  model.map.InitParents(nullptr);
  model.map.InitLevels(0);
  model.map.SetAreaDataPointers(&model.data);
  for (CMapOb* node = &model.map; node != nullptr;
       node = node->GetNumChildren() > 0 ? node->GetChild(0) : nullptr) {
    CMapOb* found = nullptr;
    EXPECT_EQ(model.map.Find(node->GetArea(), found), 1);
    model.map.ZoomTo(node);
    try {
      pages += SavePage(model, "/dev/null");
    } catch (const CInvalidArgException&) {
    }
  }
  while (model.map.ZoomOut() != 0) {
  }
  EXPECT_TRUE(IsSettled(model.map, model.map.GetDrawLevel()));
  model.map.SaveMap("/dev/null", nullptr);
  EXPECT_NE(model.map.WriteTreeFile("/dev/null", "u"), 0);
  return pages;
}

}  // namespace vexel::test

#endif  // VEXEL_TESTS_FAULTS_MODEL_H_
