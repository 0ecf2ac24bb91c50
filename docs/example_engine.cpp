#include <vexel/data/dataset.h>
#include <vexel/legend/legend.h>
#include <vexel/map/map.h>
#include <vexel/render/mapgif.h>

int main() {
  CVELAMap map;
  CVELAData data;
  CLegend legend;
  data.map = &map;
  map.data = &data;
  map.legend = &legend;
  if (data.Build("samples/us-counties.mdf", 1, 0) == 0) return 1;  // loads the map too
  map.SetAreaDataPointers(&data);
  map.PrepareLevelDrawing(2);  // counties
  data.SetVar1Selected(3);     // unemployment rate
  legend.numGroups = 5;
  legend.palette = 1;  // blues
  legend.UpdateData(&map, &data);
  CMapGif page(&map, &legend, &data, "counties.gif");
  page.PrepareCoords(800, 600);
  page.ApplyCoords();
  page.DrawMap(&map, "");
  page.DrawTitle();
  page.DrawLegend();
  return page.Save() == 1 ? 0 : 1;
}
