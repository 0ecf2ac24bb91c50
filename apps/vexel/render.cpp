// vexel render: a page from a data file.

#include <algorithm>
#include <cstdio>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "arguments.h"
#include "commands.h"
#include "failure.h"
#include "files.h"
#include "page_html.h"
#include "render/mapgif.h"
#include "report.h"
#include "view.h"
#include "view_options.h"

namespace vexel::cli {

namespace {

struct Outputs {
  std::string picture;
  std::string html;
  std::string report;
};

using Pending = std::optional<PendingFile>;

Pending Open(const std::string& name) {
  return name.empty() ? Pending() : Pending(std::in_place, name);
}

// Draws the map, with its area lines in a web page when there is to be one.
void DrawMap(CliHost& host, View& view, const ViewOptions& options, const Outputs& outputs,
             CMapGif& page, PendingFile* html) {
  if (html == nullptr) {
    page.DrawMap(view.map.GetDrawRoot(), "");
    return;
  }
  // The page finds its picture from where it lies itself.
  const std::string picture = IsStandard(outputs.picture)
                                  ? "page.gif"
                                  : RelativeTo(outputs.picture, FolderOf(outputs.html));
  try {
    WritePageHead(*html, view, options, picture);
    page.SetHtmlFile(html);
    page.DrawMap(view.map.GetDrawRoot(), kAreaLink);
    page.SetHtmlFile(nullptr);
    WritePageTail(*html, host, view);
  } catch (const CFileException&) {
    throw Failure(outputs.html, "cannot be written");
  }
  html->Complete();
}

// Every output is complete before the first of them takes its place.
void DrawPage(CliHost& host, View& view, const ViewOptions& options, const Outputs& outputs) {
  const SignalHold hold;
  Pending html = Open(outputs.html);
  Pending report = Open(outputs.report);
  WriteThrough(outputs.picture, [&](const std::string& path) {
    CMapGif page(&view.map, &view.legend, &view.data, path.c_str());
    page.PrepareCoords(options.width, options.height);
    page.ApplyCoords();
    DrawMap(host, view, options, outputs, page, html ? &*html : nullptr);
    for (CMapOb* area : view.outlines) page.DrawOutline(area);
    if (!options.noTitle) page.DrawTitle();
    if (!options.noLegend) page.DrawLegend();
    for (CMapOb* area : view.boxes) page.DrawValueBox(area);
    if (report) {
      const std::string text = ReportText(view, page, options, host);
      report->Write(text.data(), text.size());
      report->Complete();
    }
    host.SetSubject(outputs.picture);
    if (page.Save() == 0) throw Failure();
  });
  if (html) html->Deliver();
  if (report) report->Deliver();
}

// The groups with their ranges and numbers of areas, and what found no place.
std::string Summary(const CliHost& host, const View& view) {
  const CLegend& legend = view.legend;
  std::size_t longest = 0;
  const auto row = [&](int i) -> const LegendGroup& {
    return legend.groups[static_cast<std::size_t>(i)];
  };
  const auto label = [&](const LegendGroup& group) {
    std::string text(group.rangeLabel.View());
    if (legend.useGroupNames != 0) text.append(" (").append(group.groupName.View()).append(")");
    return text;
  };
  for (int i = 0; i < legend.numGroups; ++i) longest = std::max(longest, label(row(i)).size());
  std::string text;
  const auto add = [&](std::string name, int count) {
    name.resize(std::max(longest, name.size()), ' ');
    std::string number = std::to_string(count);
    number.insert(0, number.size() < 8 ? 8 - number.size() : 0, ' ');
    text.append(name).append(number).append(" areas\n");
  };
  for (int i = 0; i < legend.numGroups; ++i) add(label(row(i)), row(i).count);
  if (legend.IsMissingData() != 0) add(std::string(legend.noDataText.View()), legend.numMissing);

  constexpr std::size_t kShown = 3;
  const auto& lost = host.GetLostRows();
  if (lost.empty()) return text;
  text += std::to_string(lost.size()) + " rows of the data file found no area:";
  for (std::size_t i = 0; i < std::min(kShown, lost.size()); ++i) {
    text.append(i == 0 ? " " : "; ").append(lost[i].codes).append(" ").append(lost[i].name);
  }
  return text.append(lost.size() > kShown ? "; ...\n" : "\n");
}

}  // namespace

int Render(CliHost& host, int argc, const char* const* argv) {
  Arguments arguments("render", "Draw a page from a data file.",
                      "vexel render us-counties.mdf --var \"Unemployment rate 2009\" --level 2 \\\n"
                      "      --html counties.html -o counties.gif");
  ViewOptions options;
  Outputs outputs;
  AddViewOptions(arguments, options);
  arguments.Group("Results");
  arguments.Option("-o,--output", "FILE", "Picture [the name of DATA with .gif]", outputs.picture);
  arguments.Option("--html", "FILE", "Web page around the picture, with an image map",
                   outputs.html);
  arguments.Option("--report", "FILE", "What the page was made from, as JSON", outputs.report);
  if (!arguments.Parse(argc, argv)) return kDone;
  Settle(options);
  if (outputs.picture.empty()) {
    outputs.picture = IsStandard(options.data) ? "page.gif" : WithExtension(options.data, ".gif");
  }
  View view;
  BuildView(view, options, host);
  DrawPage(host, view, options, outputs);
  if (!options.quiet) std::fputs(Summary(host, view).c_str(), stderr);
  return kDone;
}

}  // namespace vexel::cli
