#pragma once

#include <memory>
#include <string_view>

#include "drawing/text.h"

typedef struct _cairo cairo_t;

namespace drawing {

/// Lines of text by Pango, in the system's fonts. Copies share their fonts, and so belong to one thread.
class PangoText {
  public:
    PangoText();

    /// How wide a line of text is, in points.
    double width(std::string_view text, const Font& font) const;
    /// Draws a line in the context's colour.
    void draw(cairo_t* context, const FittedText& text, Alignment alignment) const;

  private:
    struct Fonts;
    std::shared_ptr<Fonts> fonts_;
};

}  // namespace drawing
