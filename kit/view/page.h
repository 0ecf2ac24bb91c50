// The GIF page of a view.

#ifndef VEXEL_KIT_VIEW_PAGE_H_
#define VEXEL_KIT_VIEW_PAGE_H_

#include <vexel/render/mapgif.h>

#include <string>
#include <vector>

#include "kit/view/view.h"

namespace vexel {

// A page laid out and with its image, in the size that the request says, on which nothing has been
// drawn yet. The view stays the caller's and must outlive it.
class VEXEL_API GifPage : public CMapGif {
 public:
  // `file` is where Save puts the picture.
  GifPage(View& view, const std::string& file);

  // Draws everything that the request asks for: areas, outlines, title, legend, boxes. With an HTML
  // file set, each area gets its line, whose link calls `show('…')` of the page with its codes.
  // Throws an Error for a map that cannot be drawn.
  void Draw();

 private:
  void DrawAreas();

  View& view_;
};

// Sentences on what of a page that has been laid out is cut off, does not fit, or comes with "?" in
// place of letters that the picture's fonts do not have.
VEXEL_API std::vector<std::string> PageNotes(View& view, const CMapGif& page);

// Draws the page; the bytes of its file.
VEXEL_API std::string GifText(View& view);

// Draws the page and writes it to a file, which takes its place only when it is whole. Throws an
// Error of kind failure.
VEXEL_API void WriteGif(View& view, const std::string& file);

}  // namespace vexel

#endif  // VEXEL_KIT_VIEW_PAGE_H_
