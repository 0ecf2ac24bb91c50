// The web page around the area lines of a picture.

#ifndef VEXEL_APPS_VEXEL_PAGE_HTML_H_
#define VEXEL_APPS_VEXEL_PAGE_HTML_H_

#include <string>

#include "host.h"
#include "platform/file.h"
#include "view.h"
#include "view_options.h"

namespace vexel::cli {

// What the links of the area lines begin with: it opens the call and the quoted argument that an
// area line closes.
inline constexpr const char* kAreaUrl = "javascript:show('";

// Everything up to the area lines. `picture` is the path of the picture as seen from the page.
std::string HtmlHead(View& view, const ViewOptions& options, const std::string& picture);

// Writes everything behind the area lines. Throws CFileException when the file does not take it.
void WriteHtmlTail(View& view, CliHost& host, CStdioFile& file);

}  // namespace vexel::cli

#endif  // VEXEL_APPS_VEXEL_PAGE_HTML_H_
