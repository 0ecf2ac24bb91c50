// A page as GIF, with its web page and its report.

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>

#include "arguments.h"
#include "commands.h"
#include "failure.h"
#include "files.h"
#include "page_html.h"
#include "platform/exceptions.h"
#include "render/mapgif.h"
#include "report.h"
#include "summary.h"
#include "view.h"

namespace vexel::cli {

namespace {

struct Outputs {
  std::string picture;  // empty: after the data file
  std::string html;     // empty: none
  std::string report;
};

// Opens a file to be written, and tells when that is not possible.
void OpenOutput(CFile& file, const std::string& path) {
  if (file.Open(path.c_str(), CFile::modeCreate | CFile::modeWrite) == 0) {
    throw Failure(path, "cannot be opened for writing");
  }
}

// Makes sure that the file has taken everything, though it does not stand in its place yet.
void Settle(CFile& file, const std::string& name) {
  if (!file.IsOpen()) return;
  file.Flush();
  if (file.HasFailed()) throw Failure(name, "cannot be written");
}

void CheckOutputs(const Outputs& outputs, const ViewOptions& options) {
  const std::array<const std::string*, 5> names{&outputs.picture, &outputs.html, &outputs.report,
                                                &options.data, &options.map};
  for (std::size_t i = 0; i < 3; ++i) {
    if (names[i]->empty()) continue;
    const auto isSame = [&](const std::string* other) { return *other == *names[i]; };
    // Standard input and standard output go by one name and are two things.
    const std::size_t end = IsStandard(*names[i]) ? 3 : names.size();
    if (std::any_of(names.begin() + i + 1, names.begin() + end, isSame)) {
      throw UsageError(*names[i] + " cannot be written as two things");
    }
  }
  if (IsStandard(outputs.picture) && !outputs.html.empty()) {
    throw UsageError("--html needs a picture with a name: -o PAGE.gif");
  }
}

// The picture's name when none is given: that of the data file, in the working folder.
std::string PictureFor(const std::string& data) {
  if (IsStandard(data)) return "page.gif";
  return WithExtension(data.substr(FolderOf(data).size()), ".gif");
}

void DrawAreas(View& view, CMapGif& page) {
  try {
    page.DrawMap(view.map.GetDrawRoot(), CVELAString(kAreaUrl));
    for (CMapOb* area : view.outlines) page.DrawOutline(area);
  } catch (const CInvalidArgException&) {
    throw Failure("a polygon of the map has no points");
  }
}

void DrawPage(View& view, const ViewOptions& options, CMapGif& page) {
  DrawAreas(view, page);
  if (!options.noTitle) page.DrawTitle();
  if (!options.noLegend) page.DrawLegend();
  for (CMapOb* area : view.boxes) page.DrawValueBox(area);
}

// Every output is complete before the first of them takes its place.
void WritePage(View& view, const ViewOptions& options, const Outputs& outputs, CliHost& host) {
  const SignalHold hold;
  const LibraryOutput picture(outputs.picture);
  const LibraryOutput html(outputs.html);
  CMapGif page(&view.map, &view.legend, &view.data, CString(std::string_view(picture.Path())));
  page.PrepareCoords(options.width, options.height);
  page.ApplyCoords();

  CStdioFile htmlFile;
  if (!outputs.html.empty()) {
    OpenOutput(htmlFile, html.Path());
    const std::string folder = IsStandard(outputs.html) ? "" : FolderOf(outputs.html);
    htmlFile.WriteString(HtmlHead(view, options, RelativeTo(outputs.picture, folder)));
    page.SetHtmlFile(&htmlFile);
  }
  DrawPage(view, options, page);
  if (!outputs.html.empty()) WriteHtmlTail(view, host, htmlFile);
  CFile reportFile;
  const std::string report = outputs.report.empty() ? "" : ReportText(view, page, options, host);
  const bool reportHasFile = !outputs.report.empty() && !IsStandard(outputs.report);
  if (reportHasFile) {
    OpenOutput(reportFile, outputs.report);
    reportFile.Write(report.data(), report.size());
  }
  Settle(htmlFile, outputs.html);
  Settle(reportFile, outputs.report);

  host.SetSubject(outputs.picture);
  if (page.Save() == 0) throw Failure();
  if (htmlFile.Close() == 0) throw Failure(outputs.html, "cannot be written");
  if (reportFile.Close() == 0) throw Failure(outputs.report, "cannot be written");
  if (IsStandard(outputs.report)) WriteText(outputs.report, report);
  picture.Deliver();
  html.Deliver();
}

}  // namespace

int Render(int argc, const char* const* argv, CliHost& host) {
  ViewOptions options;
  Outputs outputs;
  Arguments arguments("render",
                      "Draw a map page as a GIF. Without -o the picture gets the name of DATA and"
                      " stands in the working folder; - is standard output.",
                      "vexel render counties.mdf --level 2 --var \"Unemployment rate 2009\" "
                      "-o page.gif --html page.html");
  arguments.Group("Output");
  arguments.Option("-o,--output", "FILE", "The picture", outputs.picture);
  arguments.Option("--html", "FILE", "A web page around the picture that tells each area's value",
                   outputs.html);
  arguments.Option("--report", "FILE", "What the page was made from, as JSON", outputs.report);
  AddViewOptions(arguments, options);
  if (!arguments.Parse(argc, argv)) return kDone;
  Settle(options);
  if (outputs.picture.empty()) outputs.picture = PictureFor(options.data);
  CheckOutputs(outputs, options);

  // Kept to the end of the process, whose memory goes faster as a whole than node by node.
  static View& view = *std::make_unique<View>().release();
  BuildView(view, options, host);
  WritePage(view, options, outputs, host);
  if (!options.quiet) std::fputs(SummaryText(view, host).c_str(), stderr);
  return kDone;
}

}  // namespace vexel::cli
