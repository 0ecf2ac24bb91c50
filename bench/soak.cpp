// Draws page after page in one process, over changing views, and watches what the process holds:
// after a first round memory must stay level and no file open.

#include <unistd.h>

#include <charconv>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "data/dataset.h"
#include "legend/legend.h"
#include "map/map.h"
#include "render/mapgif.h"

namespace {

constexpr int kRound = 100;
constexpr double kGrowthAllowed = 1.05;

struct Holdings {
  long pages = 0;  // of memory, resident
  long files = 0;

  static Holdings Now() {
    Holdings now;
    long whole = 0;
    std::ifstream("/proc/self/statm") >> whole >> now.pages;
    const std::filesystem::directory_iterator open("/proc/self/fd");
    now.files = std::distance(begin(open), end(open));
    return now;
  }
};

struct Model {
  explicit Model(const CString& dataPath) {
    data.map = &map;
    map.data = &data;
    map.legend = &legend;
    if (data.Build(dataPath, 1, 0) == 0) throw std::runtime_error("the data file does not load");
    map.SetAreaDataPointers(&data);
  }

  CVELAMap map;
  CVELAData data;
  CLegend legend;
};

// Every setting goes round in a step of its own, so that few pages of a round are alike.
void DrawPage(Model& model, int number, const CString& folder) {
  CMapOb* state = model.map.GetChild(number % model.map.GetNumChildren());
  model.map.ZoomTo(number % 3 == 0 ? state : &model.map);
  if (number % 3 != 0) model.map.PrepareLevelDrawing(1 + number % 2);
  model.data.SetVar1Selected(number % model.data.GetNumVars());
  model.data.SetVar2Selected(number % 5 == 0 ? 1 : -1);
  model.data.SetCalcSelected(number % 5 == 0 ? number % 4 : -1);
  model.legend.numGroups = 1 + number % CLegend::kMostGroups;
  model.legend.intervalType = number % 2;
  model.legend.palette = number % 6;
  if (number % 5 == 0) model.data.PerformCalc();
  model.legend.UpdateData(&model.map, &model.data);

  CMapGif page(&model.map, &model.legend, &model.data, folder + "page.gif");
  page.PrepareCoords(400 + 100 * (number % 5), 300 + 100 * (number % 4));
  page.ApplyCoords();
  CStdioFile lines;
  lines.Open((folder + "page.txt").GetString(), CFile::modeCreate | CFile::modeWrite);
  page.SetHtmlFile(&lines);
  page.DrawMap(model.map.GetDrawRoot(), "");
  page.DrawOutline(state);
  page.DrawTitle();
  page.DrawLegend();
  page.DrawValueBox(state);
  if (page.Save() == 0 || lines.Close() == 0) throw std::runtime_error("a page is not saved");
}

// Nonzero when more is held after the last round than after the first, and when there were not two.
int Soak(int pages, const CString& data, const CString& folder) {
  Holdings first;
  Holdings now;
  auto model = std::make_unique<Model>(data);
  for (int number = 0; number < pages; ++number) {
    if (number % 10 == 9) model = std::make_unique<Model>(data);
    DrawPage(*model, number, folder);
    if ((number + 1) % kRound != 0) continue;
    now = Holdings::Now();
    if (number + 1 == kRound) first = now;
    std::cout << number + 1 << " pages: " << now.pages * 4 << " KiB, " << now.files << " files\n";
  }
  const bool isLevel =
      static_cast<double>(now.pages) <= kGrowthAllowed * static_cast<double>(first.pages);
  return pages >= 2 * kRound && isLevel && now.files == first.files ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  int pages = 2000;
  if (argc > 1) std::from_chars(argv[1], argv[1] + std::string_view(argv[1]).size(), pages);
  const std::filesystem::path folder =
      std::filesystem::temp_directory_path() / ("vexel-soak-" + std::to_string(::getpid()));
  std::filesystem::create_directory(folder);
  int status = 1;
  try {
    status =
        Soak(pages, CString(VEXEL_SAMPLES_DIR "/us-counties.mdf"), CString(folder.string() + "/"));
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
  }
  std::filesystem::remove_all(folder);
  std::cout << (status == 0 ? "level\n" : "NOT level\n");
  return status;
}
