#include "kit/report/write_page.h"

#include <vexel/platform/exceptions.h>
#include <vexel/platform/file.h>

#include <string_view>
#include <utility>

#include "kit/files/files.h"
#include "kit/files/outputs.h"
#include "kit/report/page_html.h"
#include "kit/report/report.h"
#include "kit/request/error.h"
#include "kit/request/json_request.h"
#include "kit/view/page.h"

namespace vexel {

namespace {

// Draws the page, which writes its areas to the web page between head and tail.
void DrawWithHtml(View& view, GifPage& page, CStdioFile& file, const PageFiles& files) {
  const std::string folder = IsStandard(files.html) ? "" : FolderOf(files.html);
  try {
    file.WriteString(HtmlHead(view, RelativeTo(files.picture, folder)));
    page.SetHtmlFile(&file);
    page.Draw();
    WriteHtmlTail(view, file);
  } catch (const CFileException&) {
    ThrowUnwritten(file, files.html);
  }
}

}  // namespace

void WritePage(View& view, const PageFiles& files) {
  const CurrentHost current(view.listener);
  const SignalHold hold;
  LibraryOutput picture(files.picture);
  LibraryOutput html(files.html);
  GifPage page(view, picture.Path());
  for (std::string& note : PageNotes(view, page)) view.notes.push_back(std::move(note));

  CStdioFile htmlFile;
  if (files.html.empty()) {
    page.Draw();
  } else {
    OpenOutput(htmlFile, html.Path());
    DrawWithHtml(view, page, htmlFile, files);
  }
  TextOutput report{files.report, files.report.empty() ? "" : ReportText(view, page)};
  TextOutput request{files.view, files.view.empty() ? "" : JsonText(view.request) + '\n'};
  report.Write();
  request.Write();
  CheckWhole(htmlFile, files.html);
  if (IsStandard(files.html)) {
    Finish(htmlFile, files.html);
    html.Collect();
  }

  view.listener.SetSubject(files.picture);
  if (page.Save() == 0) throw view.listener.LastError();
  picture.Collect();
  // Every file is whole now, and the others follow the picture into their places at once. They are
  // no unit for whoever kills the process in between: the system moves one file at a time. The
  // picture comes first, as it is what was asked for; what tells of it may then be older than it,
  // until the command is run again, but never torn. The signals that ask for an end wait for the
  // last.
  //
  // The rest takes no memory: a file that stands in its place is not followed by a failure for want
  // of it.
  Finish(htmlFile, files.html);
  report.Deliver();
  request.Deliver();
  picture.Deliver();
  html.Deliver();
}

}  // namespace vexel
