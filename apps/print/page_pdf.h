// A publication page as PDF.

#ifndef VEXEL_APPS_PRINT_PAGE_PDF_H_
#define VEXEL_APPS_PRINT_PAGE_PDF_H_

#include <string>

#include "kit/publish/drawing.h"

namespace vexel::print {

// One page on which a pixel of the drawing is 1/96 inch, areas as paths and texts as texts. The
// same drawing gives the same bytes. `scale` counts for nothing. Throws an Error of kind failure.
std::string PagePdf(const Drawing& drawing, double scale);

}  // namespace vexel::print

#endif  // VEXEL_APPS_PRINT_PAGE_PDF_H_
