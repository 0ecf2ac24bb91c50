#include "kit/report/write_page.h"

#include <vexel/platform/exceptions.h>
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

[[noreturn]] void ThrowUnwritten(const CFile& file, const std::string& name) {
  const std::string reason = file.GetReason();
  throw Failed(name, "cannot be written" + (reason.empty() ? "" : ": " + reason));
}

// Makes sure that the file has taken everything, though it does not stand in its place yet.
void CheckWhole(CFile& file, const std::string& name) {
  if (!file.IsOpen()) return;
  file.Flush();
  if (file.HasFailed()) ThrowUnwritten(file, name);
}

// Writes a text to a file that does not stand in its place yet. Standard output comes later.
void Fill(CFile& file, const std::string& name, std::string_view text) {
  if (name.empty() || IsStandard(name)) return;
  OpenOutput(file, name);
  file.Write(text.data(), text.size());
  CheckWhole(file, name);
}

void Finish(CFile& file, const std::string& name) {
  if (file.Close() == 0) ThrowUnwritten(file, name);
}

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
  // Every file is whole now, and the others follow the picture into their places at once. They are
  // no unit for whoever kills the process in between: the system moves one file at a time. The
  // picture comes first, as it is what was asked for; what tells of it may then be older than it,
  // until the command is run again, but never torn. The signals that ask for an end wait for the
  // last.
  //
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
