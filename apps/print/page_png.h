// A publication page as PNG.

#ifndef VEXEL_APPS_PRINT_PAGE_PNG_H_
#define VEXEL_APPS_PRINT_PAGE_PNG_H_

#include <string>

#include "kit/publish/drawing.h"

namespace vexel::print {

// The page with smooth edges, `scale` pixels for each of the drawing's. Throws an Error of kind
// request for a picture that would be too large, and of kind failure.
std::string PagePng(const Drawing& drawing, double scale);

}  // namespace vexel::print

#endif  // VEXEL_APPS_PRINT_PAGE_PNG_H_
