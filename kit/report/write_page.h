// A page with its web page and its report, as files.

#ifndef VEXEL_KIT_REPORT_WRITE_PAGE_H_
#define VEXEL_KIT_REPORT_WRITE_PAGE_H_

#include <string>

#include "kit/publish/media.h"
#include "kit/view/view.h"

namespace vexel {

// Names of files; "-" is standard output, empty means none. A web page needs a picture with a name.
struct PageFiles {
  std::string picture;
  std::string html;
  std::string report;
  std::string view;  // the request, as JSON
};

// Draws and writes them. Each is complete before the first of them takes its place; a failure
// leaves earlier files of these names as they were and throws an Error of kind failure.
VEXEL_API void WritePage(View& view, const PageFiles& files);

// The same with a publication page, of which `paint` makes the picture.
VEXEL_API void WritePublication(View& view, const PageFiles& files, Painter paint);

}  // namespace vexel

#endif  // VEXEL_KIT_REPORT_WRITE_PAGE_H_
