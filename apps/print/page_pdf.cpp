#include "page_pdf.h"

#include <cairo-pdf.h>

#include <new>

#include "cairo_objects.h"
#include "pdf_content.h"
#include "texts.h"

namespace vexel::print {

namespace {

// Cairo hands on no exception.
cairo_status_t Append(void* bytes, const unsigned char* more, unsigned length) {
  try {
    static_cast<std::string*>(bytes)->append(reinterpret_cast<const char*>(more), length);
  } catch (const std::bad_alloc&) {
    return CAIRO_STATUS_NO_MEMORY;
  }
  return CAIRO_STATUS_SUCCESS;
}

// A page with the texts alone, as a file.
std::string TextsPdf(const Drawing& drawing) {
  std::string bytes;
  const CairoSurface surface(cairo_pdf_surface_create_for_stream(
      Append, &bytes, drawing.width * kPointsOfPixel, drawing.height * kPointsOfPixel));
  CheckCairo(cairo_surface_status(surface.get()));
  cairo_pdf_surface_restrict_to_version(surface.get(), CAIRO_PDF_VERSION_1_4);
  cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_TITLE, drawing.title.c_str());
  // No date, which would make another file of each run.
  cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_CREATE_DATE, "");
  {
    const CairoContext context(cairo_create(surface.get()));
    cairo_scale(context.get(), kPointsOfPixel, kPointsOfPixel);
    DrawTexts(context.get(), drawing, TextForm::letters);
    CheckCairo(cairo_status(context.get()));
  }
  cairo_surface_finish(surface.get());
  CheckCairo(cairo_surface_status(surface.get()));
  return bytes;
}

}  // namespace

// Vectors by Cairo would take several times as long, since it looks at each three times.
std::string PagePdf(const Drawing& drawing, double /*scale*/) {
  std::string pdf = TextsPdf(drawing);
  PutUnder(pdf, PdfContent(drawing));
  return pdf;
}

}  // namespace vexel::print
