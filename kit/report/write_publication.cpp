#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "kit/files/files.h"
#include "kit/files/outputs.h"
#include "kit/publish/compose.h"
#include "kit/report/map_page.h"
#include "kit/report/report.h"
#include "kit/report/write_page.h"
#include "kit/request/json_request.h"

namespace vexel {

namespace {

CRect WholePixels(const PageArea& area) {
  const auto whole = [](double value) { return static_cast<int>(std::lround(value)); };
  return {whole(area.left), whole(area.top), whole(area.left + area.width),
          whole(area.top + area.height)};
}

PageRects RectsOf(const View& view, const Drawing& drawing) {
  return {view.map.GetDrawRoot()->GetBoundRect(), WholePixels(drawing.map),
          WholePixels(drawing.legend)};
}

}  // namespace

void WritePublication(View& view, const PageFiles& files, Painter paint) {
  const CurrentHost current(view.listener);
  const SignalHold hold;
  const Drawing drawing = Compose(view);
  std::array<TextOutput, 4> outputs{
      TextOutput{files.picture, paint(drawing, view.request.publication.scale)},
      TextOutput{files.html, ""}, TextOutput{files.report, ""}, TextOutput{files.view, ""}};
  auto& [picture, html, report, request] = outputs;
  if (!html.name.empty()) {
    const std::string folder = IsStandard(html.name) ? "" : FolderOf(html.name);
    html.text = MapPageText(view, drawing, RelativeTo(files.picture, folder));
  }
  if (!report.name.empty()) report.text = ReportText(view, RectsOf(view, drawing));
  if (!request.name.empty()) request.text = JsonText(view.request) + '\n';
  std::for_each(outputs.begin(), outputs.end(), [](TextOutput& output) { output.Write(); });
  // As with a GIF, the picture comes first, and the rest takes no memory.
  std::for_each(outputs.begin(), outputs.end(), [](TextOutput& output) { output.Deliver(); });
}

}  // namespace vexel
