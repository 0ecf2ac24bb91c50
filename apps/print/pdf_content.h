// What a page of a PDF draws, as instructions, and how it comes into a file.

#ifndef VEXEL_APPS_PRINT_PDF_CONTENT_H_
#define VEXEL_APPS_PRINT_PDF_CONTENT_H_

#include <string>

#include "kit/publish/drawing.h"

namespace vexel::print {

inline constexpr double kPointsOfPixel = 72.0 / 96.0;

// All of a page but its texts, as vectors; the page's unit is a point.
std::string PdfContent(const Drawing& drawing);

// Has the one page of a file, as Cairo writes it, draw `content` under what it draws already. The
// file's own bytes stay, and what is new stands behind them, as the format provides for. Throws an
// Error of kind failure for a file of another kind.
void PutUnder(std::string& pdf, const std::string& content);

}  // namespace vexel::print

#endif  // VEXEL_APPS_PRINT_PDF_CONTENT_H_
