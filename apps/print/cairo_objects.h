// Cairo's and Pango's objects as values that end them, and their errors as exceptions.

#ifndef VEXEL_APPS_PRINT_CAIRO_OBJECTS_H_
#define VEXEL_APPS_PRINT_CAIRO_OBJECTS_H_

#include <cairo.h>
#include <glib-object.h>

#include <cstdint>
#include <memory>

namespace vexel::print {

struct CairoDeleter {
  void operator()(cairo_t* context) const { cairo_destroy(context); }
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
  void operator()(cairo_pattern_t* pattern) const { cairo_pattern_destroy(pattern); }
  void operator()(cairo_font_options_t* options) const { cairo_font_options_destroy(options); }
};
using CairoContext = std::unique_ptr<cairo_t, CairoDeleter>;
using CairoSurface = std::unique_ptr<cairo_surface_t, CairoDeleter>;
using CairoPattern = std::unique_ptr<cairo_pattern_t, CairoDeleter>;
using CairoFontOptions = std::unique_ptr<cairo_font_options_t, CairoDeleter>;

struct ObjectDeleter {
  void operator()(void* object) const { g_object_unref(object); }
};
template <typename T>
using Object = std::unique_ptr<T, ObjectDeleter>;

// Throws what has gone wrong: std::bad_alloc, or an Error of kind failure.
void CheckCairo(cairo_status_t status);

// Takes a colour of 0x00BBGGRR.
void SetColor(cairo_t* context, std::uint32_t color);

}  // namespace vexel::print

#endif  // VEXEL_APPS_PRINT_CAIRO_OBJECTS_H_
