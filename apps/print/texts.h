// The texts of a page, by Pango.

#ifndef VEXEL_APPS_PRINT_TEXTS_H_
#define VEXEL_APPS_PRINT_TEXTS_H_

#include <cairo.h>

#include "kit/publish/drawing.h"

namespace vexel::print {

enum class TextForm {
  letters,  // as text, which a reader can select and search
  shapes,   // as outlines, whose places are not rounded to pixels
};

// Begins to load the fonts in the background, so that less is to be waited for where texts are
// drawn later on. Need not be called.
void PrepareFonts();

// Draws all texts of the drawing; a unit of the context is a page pixel. Nothing of the fonts is
// loaded when there are none. Throws an Error of kind failure where no font is installed.
void DrawTexts(cairo_t* context, const Drawing& drawing, TextForm form);

}  // namespace vexel::print

#endif  // VEXEL_APPS_PRINT_TEXTS_H_
