#include "texts.h"

#include <pango/pangocairo.h>

#include <algorithm>
#include <memory>

#include "cairo_objects.h"
#include "kit/request/error.h"

namespace vexel::print {

namespace {

// Of all texts in pixels, before they are made as large as they are to be: a font that is looked
// for in one size only is found sooner.
constexpr double kLayoutSize = 64.0;

constexpr const char* kFamilies = "Helvetica Neue,Helvetica,Arial,Liberation Sans,sans-serif";

struct PangoDeleter {
  void operator()(PangoFontDescription* face) const { pango_font_description_free(face); }
  void operator()(PangoAttrList* attributes) const { pango_attr_list_unref(attributes); }
};
using FontDescription = std::unique_ptr<PangoFontDescription, PangoDeleter>;
using AttributeList = std::unique_ptr<PangoAttrList, PangoDeleter>;

class TextPainter {
 public:
  TextPainter(cairo_t* context, TextForm form)
      : context_(context),
        form_(form),
        pango_(pango_font_map_create_context(pango_cairo_font_map_get_default())),
        layout_(pango_layout_new(pango_.get())),
        face_(pango_font_description_from_string(kFamilies)) {
    // Without hints a text has the same form at every scale.
    const CairoFontOptions options(cairo_font_options_create());
    cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
    cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
    pango_cairo_context_set_font_options(pango_.get(), options.get());
    pango_context_set_round_glyph_positions(pango_.get(), FALSE);
    pango_layout_set_single_paragraph_mode(layout_.get(), TRUE);
    // Letters of their own can be searched for in every PDF, ligatures only in some.
    const AttributeList attributes(pango_attr_list_new());
    pango_attr_list_insert(attributes.get(), pango_attr_font_features_new("liga=0,clig=0"));
    pango_layout_set_attributes(layout_.get(), attributes.get());
    cairo_set_line_join(context, CAIRO_LINE_JOIN_ROUND);
    pango_font_description_set_absolute_size(face_.get(), kLayoutSize * PANGO_SCALE);
    const Object<PangoFont> font(pango_context_load_font(pango_.get(), face_.get()));
    if (font == nullptr) throw Failed("no font is installed that a page could be written in");
  }

  void Draw(const TextLine& text) {
    PangoLayoutLine* const line = SetText(text);
    PangoRectangle extents;
    pango_layout_line_get_extents(line, nullptr, &extents);
    const double width = extents.width / static_cast<double>(PANGO_SCALE);
    if (width <= 0.0) return;
    const double scale = text.size / kLayoutSize;
    const double scaleAcross = text.room > 0.0 ? std::min(scale, text.room / width) : scale;
    const double before = text.anchor == TextAnchor::start    ? 0.0
                          : text.anchor == TextAnchor::middle ? width / 2.0
                                                              : width;
    cairo_save(context_);
    cairo_translate(context_, text.x, text.y);
    cairo_scale(context_, scaleAcross, scale);
    cairo_translate(context_, -before, 0.0);
    cairo_move_to(context_, 0.0, 0.0);
    if (text.halo) DrawHalo(line, *text.halo);
    SetColor(context_, text.color);
    if (form_ == TextForm::letters) {
      pango_cairo_show_layout_line(context_, line);
    } else {
      pango_cairo_layout_line_path(context_, line);
      cairo_fill(context_);
    }
    cairo_restore(context_);
  }

 private:
  PangoLayoutLine* SetText(const TextLine& text) {
    pango_font_description_set_weight(face_.get(),
                                      text.isBold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_layout_set_font_description(layout_.get(), face_.get());
    pango_layout_set_text(layout_.get(), text.text.data(), static_cast<int>(text.text.size()));
    return pango_layout_get_line_readonly(layout_.get(), 0);
  }

  void DrawHalo(PangoLayoutLine* line, std::uint32_t color) {
    pango_cairo_layout_line_path(context_, line);
    SetColor(context_, color);
    cairo_set_line_width(context_, kLayoutSize * kHaloWidth);
    cairo_stroke(context_);
    cairo_move_to(context_, 0.0, 0.0);
  }

  cairo_t* context_;
  TextForm form_;
  Object<PangoContext> pango_;  // with the fonts of this thread, which others do not share
  Object<PangoLayout> layout_;
  FontDescription face_;
};

}  // namespace

// Pango loads the configuration of fonts in a thread of its own, from the first font map on.
void PrepareFonts() { pango_cairo_font_map_get_default(); }

void DrawTexts(cairo_t* context, const Drawing& drawing, TextForm form) {
  if (drawing.texts.empty()) return;
  TextPainter painter(context, form);
  for (const TextLine& text : drawing.texts) painter.Draw(text);
}

}  // namespace vexel::print
