// Whole pages of the samples, held against the pictures in pictures/, which somebody has looked at.
// With VEXEL_KEEP_PICTURES in the environment these become what is drawn. A page that is another
// leaves itself and the difference in the working folder.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "data/dataset.h"
#include "render/render_fixture.h"

namespace vexel::test {
namespace {

struct Page {
  const char* name;
  const char* data;
  int width;
  int height;
  int level;
  std::int32_t zoom = 0;
  int column = 3;
  int groups = 5;
  int palette = 1;
  int intervals = CLegend::equalCounts;
  int calculation = -1;
};

constexpr Page kPages[] = {
    {"statesPercent", "us-counties", 380, 410, 1, 0, 2, 5, 1, CLegend::equalCounts, 1},
    {"texasDifference", "us-conus", 370, 340, 2, 48, 4, 6, 4, CLegend::equalWidths, 3},
    {"names", "names", 350, 280, 1, 0, 1, 3, 4}};

class Golden : public testing::TestWithParam<Page> {
 protected:
  void SetUp() override {
    const Page& view = GetParam();
    data.map = &map;
    map.data = &data;
    map.legend = &legend;
    const std::string path = std::string(VEXEL_SAMPLES_DIR "/") + view.data + ".mdf";
    ASSERT_EQ(data.Build(CString(std::string_view(path)), 1, 0), 1);
    map.SetAreaDataPointers(&data);
    if (view.zoom != 0) map.ZoomTo(Area(view.zoom));
    map.PrepareLevelDrawing(view.level);
    data.SetVar1Selected(view.column);
    legend.numGroups = view.groups;
    legend.palette = view.palette;
    legend.intervalType = view.intervals;
    if (view.calculation >= 0) {
      data.SetVar2Selected(view.column + 1);
      data.SetCalcSelected(view.calculation);
      data.PerformCalc();
    }
    legend.UpdateData(&map, &data);
  }

  CMapOb* Area(std::int32_t code) {
    CAreaStruct key;
    key.codes[0] = code;
    CMapOb* found = nullptr;
    map.Find(key, found);
    return found;
  }

  CVELAMap map;
  CVELAData data;
  CLegend legend;
};

using Image = std::unique_ptr<gdImage, decltype(&gdImageDestroy)>;

Image Read(const std::string& path) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"),
                                                             &std::fclose);
  return {file == nullptr ? nullptr : gdImageCreateFromGif(file.get()), &gdImageDestroy};
}

// Both pictures in one, grey where they agree, and how many pixels do not.
std::pair<Image, int> Compare(gdImage& a, gdImage& b) {
  Image both(gdImageCreateTrueColor(a.sx, a.sy), &gdImageDestroy);
  int different = 0;
  for (int y = 0; y < a.sy; ++y) {
    for (int x = 0; x < a.sx; ++x) {
      const int color = gdImageGetTrueColorPixel(&a, x, y);
      const bool isSame = color == gdImageGetTrueColorPixel(&b, x, y);
      different += isSame ? 0 : 1;
      gdImageSetPixel(both.get(), x, y, isSame ? (color >> 2 & 0x3F3F3F) + 0xC0C0C0 : 0xFF0000);
    }
  }
  return {std::move(both), different};
}

TEST_P(Golden, PageIsThatOfThePicture) {
  const std::string name = GetParam().name;
  const std::string drawn = "drawn-" + name + ".gif";
  const std::string kept = VEXEL_TESTS_DIR "/render/pictures/" + name + ".gif";
  CMapGif page(&map, &legend, &data, CString(std::string_view(drawn)));
  page.PrepareCoords(GetParam().width, GetParam().height);
  page.ApplyCoords();
  page.DrawMap(map.GetDrawRoot(), "");
  page.DrawOutline(map.GetDrawRoot()->GetChild(0));
  page.DrawTitle();
  page.DrawLegend();
  page.DrawValueBox(map.GetDrawRoot()->GetChild(0));
  ASSERT_EQ(page.Save(), 1);
  if (std::getenv("VEXEL_KEEP_PICTURES") != nullptr) {
    std::filesystem::copy_file(drawn, kept, std::filesystem::copy_options::overwrite_existing);
  }
  const Image expected = Read(kept);
  const Image found = Read(drawn);
  ASSERT_TRUE(expected != nullptr && found != nullptr);
  ASSERT_TRUE(expected->sx == found->sx && expected->sy == found->sy) << found->sx;
  const auto [both, different] = Compare(*expected, *found);
  const std::string difference = "difference-" + name + ".png";
  std::filesystem::remove(different == 0 ? drawn : difference);
  if (different == 0) return;
  gdImageFile(both.get(), difference.c_str());
  FAIL() << different << " pixels are others than in " << kept << ": see " << drawn << " and "
         << difference << " in " << std::filesystem::current_path();
}

INSTANTIATE_TEST_SUITE_P(Gallery, Golden, testing::ValuesIn(kPages),
                         [](const auto& page) { return std::string(page.param.name); });

}  // namespace
}  // namespace vexel::test
