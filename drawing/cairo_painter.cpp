#include <cairo-pdf.h>
#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/foundation/owned.h"
#include "drawing/geometry.h"
#include "drawing/painter.h"
#include "drawing/pango_text.h"

namespace drawing {
namespace {

using Surface = tapcore::Owned<cairo_surface_t, cairo_surface_destroy>;
using Context = tapcore::Owned<cairo_t, cairo_destroy>;

void require(cairo_status_t status) {
    if (status != CAIRO_STATUS_SUCCESS) throw PaintError(cairo_status_to_string(status));
}

/// Paints nodes on a context, whose transform it keeps in step with its own.
class Painter {
  public:
    Painter(cairo_t* context, const Appearance& appearance) : context_(context), appearance_(appearance) {}

    void paint(const Node& node) {
        std::visit([this](const auto& content) { paintContent(content); }, node.content);
    }

  private:
    void paintContent(const Group& group) {
        if (!isVisible(group.opacity) || !group.transform.then(transform_).inverse()) return;
        const Transform& own = group.transform;
        const Transform outer = std::exchange(transform_, own.then(transform_));
        const cairo_matrix_t matrix = {own.xx, own.yx, own.xy, own.yy, own.dx, own.dy};
        const bool isFaded = group.opacity < 1;
        cairo_save(context_);
        cairo_transform(context_, &matrix);
        if (isFaded) cairo_push_group(context_);
        for (const Node& child : group.children) paint(child);
        if (isFaded) {
            cairo_pop_group_to_source(context_);
            cairo_paint_with_alpha(context_, group.opacity);
        }
        cairo_restore(context_);
        transform_ = outer;
    }

    void paintContent(const Shape& shape) {
        if (!isPaintable(shape.path.points, transform_)) return;
        cairo_new_path(context_);
        trace(shape.path);
        if (shape.fill && takeColour(*shape.fill)) cairo_fill_preserve(context_);
        if (shape.stroke && shape.stroke->width > 0 && takeColour(shape.stroke->style)) {
            cairo_set_line_width(context_, shape.stroke->width);
            cairo_stroke_preserve(context_);
        }
        cairo_new_path(context_);
    }

    void paintContent(const Text& text) {
        if (!isPaintable({&text.at, 1}, transform_) || !takeColour(text.style)) return;
        const auto width = [this](std::string_view part, const Font& font) {
            return text_.width(part, font);
        };
        text_.draw(context_, fitted(text, width), text.alignment);
    }

    void trace(const Path& path) {
        walk(path, [this](Path::Step step, const Point* to) {
            switch (step) {
                case Path::Step::move:
                    return cairo_move_to(context_, to->x, to->y);
                case Path::Step::line:
                    return cairo_line_to(context_, to->x, to->y);
                case Path::Step::curve:
                    return cairo_curve_to(context_, to[0].x, to[0].y, to[1].x, to[1].y, to[2].x, to[2].y);
                case Path::Step::close:
                    return cairo_close_path(context_);
            }
        });
    }

    /// False when there is nothing to be seen in that style.
    bool takeColour(const Style& style) {
        const Colour colour = resolved(style, appearance_);
        cairo_set_source_rgba(context_, colour.red, colour.green, colour.blue, colour.alpha);
        return isVisible(colour.alpha);
    }

    cairo_t* context_;
    const Appearance& appearance_;
    Transform transform_;
    PangoText text_;
};

cairo_status_t appendTo(void* bytes, const unsigned char* data, unsigned int length) {
    static_cast<std::string*>(bytes)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

void requirePaintable(const Size& size, double scale) {
    constexpr double mostPixels = 64e6;
    constexpr double longestSide = 32000;
    const double width = size.width * scale;
    const double height = size.height * scale;
    if (width > 0 && height > 0 && width <= longestSide && height <= longestSide &&
        width * height <= mostPixels)
        return;
    throw PaintError("too large or too small for this kind of picture");
}

}  // namespace

void paint(cairo_t* context, const Picture& picture, const Appearance& appearance) {
    cairo_save(context);
    cairo_rectangle(context, 0, 0, picture.size.width, picture.size.height);
    cairo_clip(context);
    cairo_set_line_cap(context, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(context, CAIRO_LINE_JOIN_ROUND);
    Painter(context, appearance).paint(picture.content);
    cairo_restore(context);
    require(cairo_status(context));
}

std::string png(const Picture& picture, const Appearance& appearance, double scale) {
    requirePaintable(picture.size, scale);
    const auto pixels = [&](double points) { return static_cast<int>(std::ceil(points * scale - 1e-6)); };
    const Surface surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32,
                                                     std::max(pixels(picture.size.width), 1),
                                                     std::max(pixels(picture.size.height), 1)));
    const Context context(cairo_create(surface.get()));
    cairo_scale(context.get(), scale, scale);
    paint(context.get(), picture, appearance);
    std::string bytes;
    require(cairo_surface_write_to_png_stream(surface.get(), appendTo, &bytes));
    return bytes;
}

std::string pdf(const Picture& picture, const Appearance& appearance) {
    return pdf(std::span(&picture, 1), appearance);
}

std::string pdf(std::span<const Picture> pages, const Appearance& appearance) {
    for (const Picture& page : pages) requirePaintable(page.size, 1);
    if (pages.empty()) throw PaintError("no pages");
    std::string bytes;
    const Size first = pages.front().size;
    const Surface surface(cairo_pdf_surface_create_for_stream(appendTo, &bytes, first.width, first.height));
    const std::string& title = pages.front().content.accessibility.label;
    if (!title.empty())
        cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_TITLE, title.c_str());
    const Context context(cairo_create(surface.get()));
    for (const Picture& page : pages) {
        cairo_pdf_surface_set_size(surface.get(), page.size.width, page.size.height);
        paint(context.get(), page, appearance);
        if (pages.size() > 1) cairo_show_page(context.get());
    }
    cairo_surface_finish(surface.get());
    require(cairo_surface_status(surface.get()));
    return bytes;
}

}  // namespace drawing
