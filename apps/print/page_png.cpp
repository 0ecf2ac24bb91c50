#include "page_png.h"

#include <algorithm>

#include "cairo_objects.h"
#include "kit/publish/raster.h"
#include "kit/request/error.h"
#include "kit/request/values.h"
#include "png_file.h"
#include "texts.h"

namespace vexel::print {

namespace {

// What Cairo can draw on, and 1 GiB of pixels.
constexpr double kMostOfSide = 32767.0;
constexpr double kMostOfAll = 1 << 28;

void CheckSize(const Drawing& drawing, double scale) {
  const double width = drawing.width * scale;
  const double height = drawing.height * scale;
  if (std::max(width, height) <= kMostOfSide && width * height <= kMostOfAll) return;
  throw WrongRequest("--size " + SizeText({drawing.width, drawing.height}) + " with --scale " +
                     NumberText(scale) +
                     " is more than a PNG can have: sides up to 32767 pixels, and 268435456 pixels"
                     " in all");
}

void DrawTextsOn(Pixels& picture, const Drawing& drawing, double scale) {
  if (drawing.texts.empty()) return;
  const CairoSurface surface(cairo_image_surface_create_for_data(
      reinterpret_cast<unsigned char*>(picture.data.data()), CAIRO_FORMAT_ARGB32, picture.width,
      picture.height, picture.width * static_cast<int>(sizeof(std::uint32_t))));
  CheckCairo(cairo_surface_status(surface.get()));
  const CairoContext context(cairo_create(surface.get()));
  cairo_scale(context.get(), scale, scale);
  DrawTexts(context.get(), drawing, TextForm::shapes);
  CheckCairo(cairo_status(context.get()));
  cairo_surface_flush(surface.get());
}

}  // namespace

std::string PagePng(const Drawing& drawing, double scale) {
  CheckSize(drawing, scale);
  Pixels picture = RasterOf(drawing, scale);
  DrawTextsOn(picture, drawing, scale);
  return PngBytes(picture);
}

}  // namespace vexel::print
