#include "kit/report/write_page.h"

#include <vexel/platform/file.h>

#include <string_view>
#include <utility>

#include "kit/files/files.h"
#include "kit/report/page_html.h"
#include "kit/report/report.h"
#include "kit/request/error.h"
#include "kit/request/json_request.h"
#include "kit/view/page.h"

namespace vexel {

namespace {

// Opens a file to be written, and tells when that is not possible.
void OpenOutput(CFile& file, const std::string& path) {
  if (file.Open(path.c_str(), CFile::modeCreate | CFile::modeWrite) == 0) {
    throw Failed(path, "cannot be opened for writing");
  }
}

// Makes sure that the file has taken everything, though it does not stand in its place yet.
void CheckWhole(CFile& file, const std::string& name) {
  if (!file.IsOpen()) return;
  file.Flush();
  if (file.HasFailed()) throw Failed(name, "cannot be written");
}

// Writes a text to a file that does not stand in its place yet. Standard output comes later.
void Fill(CFile& file, const std::string& name, std::string_view text) {
  if (name.empty() || IsStandard(name)) return;
  OpenOutput(file, name);
  file.Write(text.data(), text.size());
  CheckWhole(file, name);
}

void Finish(CFile& file, const std::string& name) {
  if (file.Close() == 0) throw Failed(name, "cannot be written");
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
  if (!files.html.empty()) {
    OpenOutput(htmlFile, html.Path());
    const std::string folder = IsStandard(files.html) ? "" : FolderOf(files.html);
    htmlFile.WriteString(HtmlHead(view, RelativeTo(files.picture, folder)));
    page.SetHtmlFile(&htmlFile);
  }
  page.Draw();
  if (!files.html.empty()) WriteHtmlTail(view, htmlFile);
  const std::string report = files.report.empty() ? "" : ReportText(view, page);
  const std::string request = files.view.empty() ? "" : JsonText(view.request) + '\n';
  CFile reportFile;
  CFile viewFile;
  Fill(reportFile, files.report, report);
  Fill(viewFile, files.view, request);
  CheckWhole(htmlFile, files.html);
  if (IsStandard(files.html)) {
    Finish(htmlFile, files.html);
    html.Collect();
  }

  view.listener.SetSubject(files.picture);
  if (page.Save() == 0) throw view.listener.LastError();
  picture.Collect();
  // The rest takes no memory: a file that stands in its place is not followed by a failure for want
  // of it.
  Finish(htmlFile, files.html);
  Finish(reportFile, files.report);
  Finish(viewFile, files.view);
  if (IsStandard(files.report)) WriteText("-", report);
  if (IsStandard(files.view)) WriteText("-", request);
  picture.Deliver();
  html.Deliver();
}

}  // namespace vexel
