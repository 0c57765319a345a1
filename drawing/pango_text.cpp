#include "drawing/pango_text.h"

#include <pango/pangocairo.h>

#include <algorithm>

#include "core/foundation/owned.h"
#include "drawing/font_families.h"
#include "drawing/painter.h"

#ifdef __SANITIZE_ADDRESS__
// Fontconfig refers to what it keeps by distances, which the leak checker cannot follow.
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig"; }
extern "C" const char* __lsan_default_options() { return "print_suppressions=0"; }
#endif

namespace drawing {
namespace {

using tapcore::Owned;
using Context = Owned<PangoContext, g_object_unref>;
using Layout = Owned<PangoLayout, g_object_unref>;
using Description = Owned<PangoFontDescription, pango_font_description_free>;
using Attributes = Owned<PangoAttrList, pango_attr_list_unref>;
using FontOptions = Owned<cairo_font_options_t, cairo_font_options_destroy>;

/// Letters at their true shapes and places, so that a line is as wide at every scale.
Context makeContext() {
    Context context(pango_font_map_create_context(pango_cairo_font_map_get_default()));
    const FontOptions options(cairo_font_options_create());
    cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
    cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
    pango_cairo_context_set_font_options(context.get(), options.get());
    pango_context_set_round_glyph_positions(context.get(), FALSE);
    return context;
}

Description description(const Font& font) {
    constexpr double largest = 10000;
    Description result(pango_font_description_new());
    pango_font_description_set_family_static(result.get(), families(font.design));
    pango_font_description_set_weight(result.get(), static_cast<PangoWeight>(font.weight));
    pango_font_description_set_absolute_size(result.get(), std::min(font.size, largest) * PANGO_SCALE);
    return result;
}

Attributes attributes(const Font& font) {
    Attributes result(pango_attr_list_new());
    if (font.monospacedDigits) pango_attr_list_insert(result.get(), pango_attr_font_features_new("tnum=1"));
    return result;
}

}  // namespace

struct PangoText::Fonts {
    Context context = makeContext();
    Layout layout{pango_layout_new(context.get())};

    PangoLayoutLine* line(std::string_view text, const Font& font) const {
        pango_layout_set_single_paragraph_mode(layout.get(), TRUE);
        pango_layout_set_font_description(layout.get(), description(font).get());
        pango_layout_set_attributes(layout.get(), attributes(font).get());
        pango_layout_set_text(layout.get(), text.data(), static_cast<int>(text.size()));
        return pango_layout_get_line_readonly(layout.get(), 0);
    }

    static double widthOf(PangoLayoutLine* line) {
        PangoRectangle logical;
        pango_layout_line_get_extents(line, nullptr, &logical);
        return static_cast<double>(logical.width) / PANGO_SCALE;
    }
};

PangoText::PangoText() : fonts_(std::make_shared<Fonts>()) {}

double PangoText::width(std::string_view text, const Font& font) const {
    return font.size > 0 ? Fonts::widthOf(fonts_->line(text, font)) : 0;
}

void PangoText::draw(cairo_t* context, const FittedText& text, Alignment alignment) const {
    if (!(text.font.size > 0) || text.text.empty()) return;
    PangoLayoutLine* const line = fonts_->line(text.text, text.font);
    const double share = alignment == Alignment::leading ? 0 : alignment == Alignment::centre ? 0.5 : 1;
    cairo_move_to(context, text.baseline.x - share * Fonts::widthOf(line), text.baseline.y);
    pango_cairo_show_layout_line(context, line);
}

TextWidth systemTextWidth() {
    const auto fonts = std::make_shared<std::unique_ptr<PangoText>>();
    return [fonts](std::string_view text, const Font& font) {
        if (!*fonts) *fonts = std::make_unique<PangoText>();
        return (*fonts)->width(text, font);
    };
}

}  // namespace drawing
