// The area at a pixel of a page.

#include <vexel/messages/messages.h>

#include <algorithm>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "arguments.h"
#include "commands.h"
#include "kit/files/printable.h"
#include "kit/request/error.h"
#include "kit/request/json_text.h"
#include "kit/view/area_finder.h"
#include "kit/view/view.h"

namespace vexel::cli {

namespace {

CPoint ParsePixel(std::string_view text) {
  const std::vector<std::string_view> parts = Split(text, ',');
  const std::optional<int> x = ParseInt(parts.front());
  const std::optional<int> y = ParseInt(parts.back());
  if (parts.size() == 2 && x && y) return {*x, *y};
  throw WrongRequest("\"" + std::string(text) + "\" is no pixel such as 400,300");
}

void PrintArea(const View& view, const CMapOb& area, bool asJson, CliHost& host) {
  const std::string value =
      ValueText(view, area, host.GetSeparators(), std::string(MessageText(Message::noData)));
  std::string line;
  if (asJson) {
    line += "{\"key\": ";
    AppendJson(line, area.GetArea());
    line += ", \"name\": ";
    AppendJson(line, area.GetName().View());
    line += ", \"value\": ";
    AppendJson(line, ValueOf(view, area));
    line += ", \"text\": ";
    AppendJson(line, std::string_view(value));
    line += '}';
  } else {
    line.append(KeyText(area.GetArea())).append("\t");
    line.append(Printable(area.GetName().View())).append("\t").append(Printable(value));
  }
  std::puts(line.c_str());
}

}  // namespace

int Locate(int argc, const char* const* argv, CliHost& host) {
  Request request;
  std::string pixelText;
  bool asJson = false;
  Arguments arguments("vexel locate",
                      "Tell which area the page shows at a pixel, counted from 0 at the top left:"
                      " its codes, name and value, with tabs between. The options of the page are"
                      " those of render.",
                      "vexel locate counties.mdf 400,300 --level 2 --size 1000x700");
  arguments.RequestOptions(request);
  arguments.Positional("PIXEL", "The pixel, as in 400,300", pixelText);
  arguments.Group("Output");
  arguments.Flag("--json", "Print JSON", asJson);
  if (!arguments.Parse(argc, argv)) return kDone;
  GroupingOf(request);
  const CPoint pixel = ParsePixel(pixelText);

  View view(request, &host);
  const CMapOb* area = AreaAt(view, pixel);
  if (area == nullptr) throw Failed(pixelText, "no area is there");
  PrintArea(view, *area, asJson, host);
  return kDone;
}

}  // namespace vexel::cli
