#include "cairo_objects.h"

#include <new>
#include <string>

#include "kit/request/error.h"

namespace vexel::print {

void CheckCairo(cairo_status_t status) {
  if (status == CAIRO_STATUS_SUCCESS) return;
  if (status == CAIRO_STATUS_NO_MEMORY) throw std::bad_alloc();
  throw Failed(std::string("the page cannot be drawn: ") + cairo_status_to_string(status));
}

void SetColor(cairo_t* context, std::uint32_t color) {
  constexpr double kMost = 255.0;
  const auto part = [=](unsigned shift) { return ((color >> shift) & 0xFFU) / kMost; };
  cairo_set_source_rgb(context, part(0), part(8), part(16));
}

}  // namespace vexel::print
