// The web page around a picture and its image map.

#ifndef VEXEL_APPS_VEXEL_PAGE_HTML_H_
#define VEXEL_APPS_VEXEL_PAGE_HTML_H_

#include <string>

#include "host.h"
#include "platform/file.h"
#include "view.h"
#include "view_options.h"

namespace vexel::cli {

// What the links of the area lines begin with; the lines close the call.
inline constexpr const char* kAreaLink = "javascript:show('";

// Everything before the area lines, and everything behind them. The page stands alone but for the
// picture, which it names as it is given.
void WritePageHead(CStdioFile& file, View& view, const ViewOptions& options,
                   const std::string& picture);
void WritePageTail(CStdioFile& file, CliHost& host, View& view);

}  // namespace vexel::cli

#endif  // VEXEL_APPS_VEXEL_PAGE_HTML_H_
