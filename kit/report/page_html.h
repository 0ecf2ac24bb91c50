// The stand-alone web page around the area lines of a picture.

#ifndef VEXEL_KIT_REPORT_PAGE_HTML_H_
#define VEXEL_KIT_REPORT_PAGE_HTML_H_

#include <vexel/platform/file.h>

#include <string>

#include "kit/view/view.h"

namespace vexel {

// Everything up to the area lines. `picture` is the path of the picture as seen from the page.
VEXEL_API std::string HtmlHead(View& view, const std::string& picture);

// Writes everything behind the area lines. Throws CFileException when the file does not take it.
VEXEL_API void WriteHtmlTail(View& view, CStdioFile& file);

}  // namespace vexel

#endif  // VEXEL_KIT_REPORT_PAGE_HTML_H_
