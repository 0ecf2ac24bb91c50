#include "kit/view/page.h"

#include <vexel/platform/exceptions.h>

#include <string_view>

#include "kit/request/error.h"

namespace vexel {

namespace {

// What the links of the areas begin with; each of them closes the argument and the call.
constexpr const char* kAreaUrl = "javascript:show('";

}  // namespace

GifPage::GifPage(View& view, const std::string& file)
    : CMapGif(&view.map, &view.legend, &view.data, CString(std::string_view(file))), view_(view) {
  PrepareCoords(view.request.size.width, view.request.size.height);
  ApplyCoords();
}

void GifPage::Draw() {
  const CurrentHost current(view_.listener);
  DrawAreas();
  if (!view_.request.noTitle) DrawTitle();
  if (!view_.request.noLegend) DrawLegend();
  for (CMapOb* area : view_.boxes) DrawValueBox(area);
}

void GifPage::DrawAreas() {
  try {
    DrawMap(view_.map.GetDrawRoot(), kAreaUrl);
    for (CMapOb* area : view_.outlines) DrawOutline(area);
  } catch (const CInvalidArgException&) {
    throw Failed("a polygon of the map has no points");
  }
}

std::string GifText(View& view) {
  const CurrentHost current(view.listener);
  GifPage page(view, "");
  page.Draw();
  const std::vector<unsigned char> bytes = page.GetFileBytes();
  return {bytes.begin(), bytes.end()};
}

void WriteGif(View& view, const std::string& file) {
  const CurrentHost current(view.listener);
  GifPage page(view, file);
  page.Draw();
  view.listener.SetSubject(file);
  if (page.Save() == 0) throw view.listener.LastError();
}

}  // namespace vexel
