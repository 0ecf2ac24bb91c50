// Whole pages of the samples, held against pages made the slow and plain way: rows are looked for
// one after the other, polygons go to gd's own calls, area lines to a stream.

#include <cstdint>
#include <span>

#include "data/dataset.h"
#include "render/render_fixture.h"
#include "support/files.h"

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
    {"counties", "us-counties", 1000, 800, 2, 0, 3, 7, 0},
    {"statesPercent", "us-counties", 760, 820, 1, 0, 2, 5, 1, CLegend::equalCounts, 1},
    {"countiesGreen", "us-conus", 800, 620, 2, 0, 3, 3, 2, CLegend::equalWidths},
    {"texasDifference", "us-conus", 740, 680, 2, 48, 4, 6, 4, CLegend::equalWidths, 3},
    {"floridaRatio", "us-conus", 760, 560, 2, 12, 4, 5, 5, CLegend::equalCounts, 2},
    {"californiaChange", "us-conus", 800, 1080, 2, 6, 4, 4, 0, CLegend::equalCounts, 0},
    {"washington", "us-conus", 800, 640, 2, 53},
    {"newJersey", "us-conus", 420, 640, 2, 34},
    {"oneGroup", "us-conus", 700, 500, 1, 0, 0, 1, 5},
    {"names", "names", 700, 560, 1, 0, 1, 3, 4}};

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
  TempDir dir;
};

// The map of a page by gd's calls, and its area lines; the page gives the pixels of the vertices.
class PlainMap {
 public:
  PlainMap(ProbePage& page, float angle)
      : image(gdImageCreate(page.image->sx, page.image->sy), &gdImageDestroy),
        page_(page),
        angle_(angle) {
    for (int i = 0; i < page.image->colorsTotal; ++i) {
      gdImageColorAllocate(image.get(), page.image->red[i], page.image->green[i],
                           page.image->blue[i]);
    }
  }

  void Draw(CMapOb& node, unsigned long color) {
    for (int i = 0; i < node.GetNumPolygons(); ++i) {
      CPolygon turned;
      CMapGif::RotatePolygon(node.GetPoly(i), &turned, angle_);
      page_.SetPolygon(angle_ != 0.0F ? &turned : node.GetPoly(i));
      const auto end = page_.points.begin() + page_.numPoints;
      std::vector<gdPoint> points = ForGd({page_.points.begin(), end});
      const int index = gdImageColorExact(image.get(), static_cast<int>(color & 0xFF),
                                          static_cast<int>(color >> 8 & 0xFF),
                                          static_cast<int>(color >> 16 & 0xFF));
      gdImageFilledPolygon(image.get(), points.data(), page_.numPoints, index);
      gdImagePolygon(image.get(), points.data(), page_.numPoints, 1);
      AddLine(points, node.GetArea());
    }
  }

  std::unique_ptr<gdImageStruct, decltype(&gdImageDestroy)> image;
  std::ostringstream lines;

 private:
  void AddLine(const std::vector<gdPoint>& points, const CAreaStruct& key) {
    lines << "<area shape=\"polygon\" coords=\"";
    for (std::size_t i = 0; i < points.size(); ++i) {
      lines << (i > 0 ? "," : "") << (i % 50 == 49 ? "\r\n" : "") << points[i].x << ','
            << points[i].y;
    }
    lines << "\"  href=\"go('";
    for (std::size_t k = 0; k < key.codes.size(); ++k) {
      if (key.codes[k] != 0) lines << "&A" << k << '=' << key.codes[k];
    }
    lines << "')\">\r\n";
  }

  ProbePage& page_;
  float angle_;
};

void ForEachDrawn(CMapOb& node, const auto& visit) {
  if (node.IsDrawn() != 0) visit(node);
  for (int i = 0; i < node.GetNumChildren(); ++i) ForEachDrawn(*node.GetChild(i), visit);
}

TEST_P(Golden, PageIsThatOfThePlainWay) {
  ProbePage page(&map, &legend, &data, CString(dir.Path("page.gif")));
  page.PrepareCoords(GetParam().width, GetParam().height);
  page.ApplyCoords();
  CStdioFile lines;
  lines.Open(dir.Path("lines.txt").c_str(), CFile::modeCreate | CFile::modeWrite);
  page.SetHtmlFile(&lines);
  page.DrawMap(map.GetDrawRoot(), "go('");
  lines.Close();

  PlainMap plain(page, map.GetDrawRoot()->GetAngle());
  ForEachDrawn(*map.GetDrawRoot(), [&](CMapOb& node) {
    const CAreaData* row = data.FindAreaData(node.GetArea());
    ASSERT_EQ(node.GetAreaData(), row);
    const double value = row == nullptr ? NO_DATA_VALUE : row->GetValue(data.GetSelected());
    int group = CLegend::kNoDataSlot;
    for (int i = 0; i < legend.numGroups && value != NO_DATA_VALUE; ++i) {
      if (value >= legend.groups[static_cast<std::size_t>(i)].lower) group = i;
    }
    plain.Draw(node, legend.groups[static_cast<std::size_t>(group)].color);
  });
  EXPECT_EQ(Difference(*plain.image, *page.image), "");
  EXPECT_TRUE(plain.lines.str() == dir.Read("lines.txt"));

  page.DrawTitle();
  page.DrawLegend();
  page.DrawValueBox(map.GetDrawRoot()->GetChild(0));
  ASSERT_EQ(page.Save(), 1);
  int size = 0;
  const std::unique_ptr<void, decltype(&gdFree)> bytes(gdImageGifPtr(page.image, &size), &gdFree);
  const std::string_view encoded(static_cast<const char*>(bytes.get()),
                                 static_cast<std::size_t>(size));
  EXPECT_TRUE(encoded == dir.Read("page.gif"));
}

INSTANTIATE_TEST_SUITE_P(Gallery, Golden, testing::ValuesIn(kPages),
                         [](const auto& page) { return std::string(page.param.name); });

}  // namespace
}  // namespace vexel::test
