#include "widgets/views.h"

#include <string>
#include <utility>
#include <vector>

#include "widgets/view_parts.h"

namespace tapwidgets {
namespace {

using drawing::Font;
using drawing::Node;
using drawing::secondary;
using drawing::Text;

Font totalFont() {
    Font font = Font::largeTitle().withWeight(drawing::Weight::semibold).withMonospacedDigits();
    font.design = drawing::Design::rounded;
    return font;
}

/// The symbol with the widget's title beside it.
Node header(const Canvas& canvas) {
    const Font font = Font::caption();
    const double left = symbolAspect * font.size + 5;
    Node symbol = keyboardSymbol({0, (font.lineHeight() - font.size) / 2}, font.size, secondary);
    Node title =
        textLine(canvas.words.text("widget.today"), font, secondary, {left, 0}, canvas.size.width - left);
    return drawing::group({std::move(symbol), std::move(title)});
}

/// The total in one line whose bottom is at `bottom`.
Node total(std::int64_t today, const Canvas& canvas, double bottom) {
    const Font font = totalFont();
    return {Text{.text = canvas.words.number(today),
                 .font = font,
                 .style = drawing::Style{}.asAccentable(),
                 .at = {0, bottom - font.lineHeight() + font.ascent()},
                 .width = canvas.size.width,
                 .minimumScale = 0.5},
            {}};
}

std::string comparisonText(std::int64_t comparison, const tapcore::Words& words) {
    return words.text("panel.vs_avg",
                      {{"sign", comparison >= 0 ? "+" : ""}, {"n", std::to_string(comparison)}});
}

}  // namespace

std::optional<Node> TodayWidget::drawing() const {
    const Font small = Font::caption();
    std::vector<Node> parts = {header(canvas)};
    double bottom = canvas.size.height;
    std::optional<Node> comparison;
    if (snapshot.comparison) {
        bottom -= small.lineHeight();
        comparison = textLine(comparisonText(*snapshot.comparison, canvas.words), small, secondary,
                              {0, bottom}, canvas.size.width);
    }
    parts.push_back(total(snapshot.today, canvas, bottom));
    if (comparison) parts.push_back(*std::move(comparison));
    return drawing::combined(drawing::group(std::move(parts)));
}

}  // namespace tapwidgets
