// Pixels as the bytes of a PNG file.

#ifndef VEXEL_APPS_PRINT_PNG_FILE_H_
#define VEXEL_APPS_PRINT_PNG_FILE_H_

#include <string>

#include "kit/publish/pixels.h"

namespace vexel::print {

// Without loss: with a palette where the picture has at most 256 colours, else with three parts for
// each pixel, or four where some of them are not opaque. Throws an Error of kind failure.
std::string PngBytes(const Pixels& picture);

}  // namespace vexel::print

#endif  // VEXEL_APPS_PRINT_PNG_FILE_H_
