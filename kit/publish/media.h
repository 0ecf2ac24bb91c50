// The kinds of picture that a page can become.

#ifndef VEXEL_KIT_PUBLISH_MEDIA_H_
#define VEXEL_KIT_PUBLISH_MEDIA_H_

#include <vexel/platform/export.h>

#include <span>
#include <string>
#include <string_view>

#include "kit/publish/drawing.h"

namespace vexel {

struct Medium {
  std::string_view name;     // "svg": what --format takes, and with a dot how a file's name ends
  std::string_view program;  // that draws it, where it takes libraries of its own; else empty
};

// The first is what a page becomes when nothing is said. It is the engine's; all others draw a
// publication page.
VEXEL_API std::span<const Medium> Media();
VEXEL_API const Medium& DefaultMedium();

// Null where there is none of that name, or that ending, in whatever case.
VEXEL_API const Medium* FindMedium(std::string_view name);
VEXEL_API const Medium* MediumOfFile(std::string_view fileName);

// Makes the bytes of a file of a page, `scale` pixels for each of the page's where the medium has
// pixels. Throws an Error of kind failure.
using Painter = std::string (*)(const Drawing& drawing, double scale);

}  // namespace vexel

#endif  // VEXEL_KIT_PUBLISH_MEDIA_H_
