// What a page was made from, as JSON.

#ifndef VEXEL_APPS_VEXEL_REPORT_H_
#define VEXEL_APPS_VEXEL_REPORT_H_

#include <string>

#include "host.h"
#include "render/mapgif.h"
#include "view.h"
#include "view_options.h"

namespace vexel::cli {

// The whole text, for a page that has been prepared in the size that the options say.
std::string ReportText(View& view, const CMapGif& page, const ViewOptions& options, CliHost& host);

}  // namespace vexel::cli

#endif  // VEXEL_APPS_VEXEL_REPORT_H_
