#include "widgets/view_parts.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "drawing/outline.h"

namespace tapwidgets {
namespace {

using drawing::Font;
using drawing::Node;
using drawing::Path;
using drawing::Point;
using drawing::Rect;
using drawing::secondary;
using drawing::Style;
using drawing::Text;

}  // namespace

Node textLine(std::string text, const Font& font, const Style& style, Point topLeft, double room) {
    return {Text{.text = std::move(text),
                 .font = font,
                 .style = style,
                 .at = {topLeft.x, topLeft.y + font.ascent()},
                 .width = std::max(room, 1.0),
                 .minimumScale = 0.7},
            {}};
}

Node caption(std::string text, double room) {
    return textLine(std::move(text), Font::caption(), secondary, {}, room);
}

Rect belowCaption(const drawing::Size& canvas) {
    const double top = Font::caption().lineHeight() + spacing;
    return {0, top, canvas.width, std::max(canvas.height - top, 0.0)};
}

std::string wholeNumber(double value, const tapcore::Words& words) {
    constexpr double limit = 9.2e18;
    return words.number(std::isnan(value) ? 0 : std::llround(std::clamp(value, -limit, limit)));
}

Node keyboardSymbol(Point topLeft, double height, const Style& style) {
    const double pen = 0.09 * height;
    const Rect body = Rect{0, 0, symbolAspect * height, height}.inset(pen / 2);
    Path keys;
    const double key = 0.11 * height;
    const auto add = [&](double column, double row, double width) {
        const double x = (0.25 + 0.2 * column) * height;
        const double y = (0.22 + 0.22 * row) * height;
        keys.append(drawing::roundedRectangle({x, y, width, key}, 0.2 * key));
    };
    for (int column = 0; column < 5; ++column) {
        add(column + 0.22, 0, key);
        add(column + 0.22, 1, key);
    }
    add(1.22, 2, 0.4 * height + key);
    Node symbol = drawing::group({drawing::stroked(drawing::roundedRectangle(body, 0.2 * height), style, pen),
                                  drawing::filled(std::move(keys), style)},
                                 drawing::Transform::moved(topLeft.x, topLeft.y));
    return drawing::hidden(std::move(symbol));
}

}  // namespace tapwidgets
