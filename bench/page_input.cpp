#include "page_input.h"

#include <algorithm>
#include <map>
#include <memory>
#include <stdexcept>

#include "render/mapgif.h"

namespace vexel {

namespace {

constexpr int kRateColumn = 3;
constexpr int kGroups = 5;
constexpr int kBlue = 1;

// Reaches the polygon at work.
class Flattener : public CMapGif {
 public:
  explicit Flattener(PageInput& input) : CMapGif(&input.map, &input.legend, &input.data, "") {
    PrepareCoords(kPageWidth, kPageHeight);
    page_.width = kPageWidth;
    page_.height = kPageHeight;
  }

  FlatPage Flatten(const CMapOb& root) {
    Add(root);
    return std::move(page_);
  }

 private:
  void Add(const CMapOb& node) {
    for (int i = 0; node.IsDrawn() != 0 && i < node.GetNumPolygons(); ++i) {
      SetPolygon(node.GetPoly(i));
      Add(GetVertices(), ColorOf(node));
    }
    for (int i = 0; i < node.GetNumChildren(); ++i) Add(*node.GetChild(i));
  }

  void Add(std::span<const CPoint> vertices, int color) {
    page_.polygons.push_back(
        {static_cast<int>(page_.points.size()), static_cast<int>(vertices.size()), color});
    for (const CPoint& vertex : vertices) page_.points.push_back({vertex.x, vertex.y});
  }

  int ColorOf(const CMapOb& node) {
    const auto color = static_cast<std::uint32_t>(node.GetColor());
    const auto found = std::find(page_.colors.begin(), page_.colors.end(), color);
    const auto index = static_cast<int>(found - page_.colors.begin());
    if (found == page_.colors.end()) page_.colors.push_back(color);
    return index;
  }

  FlatPage page_;
};

}  // namespace

PageInput::PageInput(const Sample& sample) {
  map.data = &data;
  map.legend = &legend;
  data.map = &map;
  if (map.Build(CString(sample.compiled.c_str()), 0, 0) == 0 ||
      data.Build(CString(sample.data.c_str()), 0, 1) == 0) {
    throw std::runtime_error("cannot load " + sample.data.filename().string());
  }
  map.SetAreaDataPointers(&data);
  map.PrepareLevelDrawing(map.GetNumMapLevels() - 1);
  data.SetVar1Selected(kRateColumn);
  legend.numGroups = kGroups;
  legend.intervalType = CLegend::equalCounts;
  legend.palette = kBlue;
  legend.UpdateData(&map, &data);
}

PageInput& GetPageInput(int copies) {
  static std::map<int, std::unique_ptr<PageInput>> inputs;
  std::unique_ptr<PageInput>& input = inputs[copies];
  if (!input) input = std::make_unique<PageInput>(GetSample(copies));
  return *input;
}

FlatPage MakeFlatPage(PageInput& input) { return Flattener(input).Flatten(input.map); }

}  // namespace vexel
