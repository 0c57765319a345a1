#pragma once

#include <span>
#include <stdexcept>
#include <string>

#include "drawing/node.h"
#include "drawing/style.h"
#include "drawing/text.h"

typedef struct _cairo cairo_t;

namespace drawing {

/// A picture that cannot be painted: too large, or the output failed.
class PaintError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Each call paints with fonts of its own, so that threads may paint at the same time, each onto a context of
// its own. What has no place in the plane (coordinates that are not finite, or beyond 1,000,000 points) is
// left out; a glyph or a font that the system lacks is replaced by the nearest it has.

/// Paints at the context's origin, one unit a point: in a window, say.
void paint(cairo_t* context, const Picture& picture, const Appearance& appearance);

/// A PNG file's bytes, `scale` pixels to the point, on a transparent ground. At most 64 million pixels.
std::string png(const Picture& picture, const Appearance& appearance, double scale);

/// A PDF file's bytes: one page of the picture's size, its text as text. The title is the picture's label.
std::string pdf(const Picture& picture, const Appearance& appearance);

/// The same of several pictures, a page each.
std::string pdf(std::span<const Picture> pages, const Appearance& appearance);

/// An SVG file's text: the elements for assistive tools as title, desc and roles, and text as text. It is the
/// same for the same picture and the same widths. A picture larger than the plane is not painted.
std::string svg(const Picture& picture, const Appearance& appearance, const TextWidth& width);

/// Measures with the system's fonts, which it looks up at the first question. Its copies share those: they
/// all belong to one thread.
TextWidth systemTextWidth();

}  // namespace drawing
