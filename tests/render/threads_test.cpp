#include <algorithm>
#include <thread>

#include "data/dataset.h"
#include "render/render_fixture.h"
#include "support/files.h"

namespace vexel::test {
namespace {

// A page with all that can be on it, from the files on; the picture and its area lines.
std::string DrawSample(const TempDir& dir, const std::string& name) {
  CVELAMap map;
  CVELAData data;
  CLegend legend;
  data.map = &map;
  map.data = &data;
  map.legend = &legend;
  data.Build(VEXEL_SAMPLES_DIR "/names.mdf", 1, 0);
  map.SetAreaDataPointers(&data);
  legend.numGroups = 3;
  data.SetVar2Selected(1);
  data.SetCalcSelected(2);
  data.PerformCalc();
  legend.UpdateData(&map, &data);
  CMapGif page(&map, &legend, &data, CString(dir.Path(name + ".gif")));
  page.PrepareCoords(300, 200);
  page.ApplyCoords();
  CStdioFile lines;
  lines.Open(dir.Path(name + ".txt").c_str(), CFile::modeCreate | CFile::modeWrite);
  page.SetHtmlFile(&lines);
  page.DrawMap(&map, "");
  page.DrawTitle();
  page.DrawLegend();
  page.DrawValueBox(map.GetChild(0));
  page.Save();
  lines.Close();
  return dir.Read(name + ".gif") + dir.Read(name + ".txt");
}

TEST(Threads, WithMapsOfTheirOwnDrawAtOnceWhatOneDraws) {
  const TempDir dir;
  const std::string alone = DrawSample(dir, "alone");
  ASSERT_GT(alone.size(), 1000U);
  std::vector<std::string> drawn(64);
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < drawn.size(); ++i) {
    threads.emplace_back([&, i] { drawn[i] = DrawSample(dir, std::to_string(i)); });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(std::count(drawn.begin(), drawn.end(), alone), 64);
}

}  // namespace
}  // namespace vexel::test
