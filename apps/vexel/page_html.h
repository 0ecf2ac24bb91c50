// The web page around the area lines of a picture.

#ifndef VEXEL_APPS_VEXEL_PAGE_HTML_H_
#define VEXEL_APPS_VEXEL_PAGE_HTML_H_

#include <string>
#include <string_view>

#include "host.h"
#include "view.h"
#include "view_options.h"

namespace vexel::cli {

// What the links of the area lines begin with: it opens the call and the quoted argument that an
// area line closes.
inline constexpr const char* kAreaUrl = "javascript:show('";

// Everything up to the area lines, and everything behind them. `picture` is the path of the picture
// as seen from the page.
std::string HtmlHead(View& view, const ViewOptions& options, const std::string& picture);
std::string HtmlTail(View& view, CliHost& host);

// A text as it stands in a page or in an attribute; a path as it stands in a link.
std::string HtmlEscaped(std::string_view text);
std::string UrlEscaped(std::string_view path);

}  // namespace vexel::cli

#endif  // VEXEL_APPS_VEXEL_PAGE_HTML_H_
