#include "widgets/views.h"

#include <string>
#include <utility>
#include <vector>

#include "widgets/view_parts.h"

namespace tapwidgets {

using drawing::Font;
using drawing::Node;
using drawing::secondary;
using drawing::Text;

Node Waiting::drawing() const {
    const Font font = Font::caption();
    const double symbol = Font::title().size;
    std::string text = canvas.words.text("widget.waiting");
    const std::vector<std::string> lines = drawing::linesOf(text, font, canvas.size.width, width);
    const double height = symbol + spacing + static_cast<double>(lines.size()) * font.lineHeight();
    const double middle = canvas.size.width / 2;
    double y = (canvas.size.height - height) / 2;
    std::vector<Node> parts = {
        keyboardSymbol({middle - symbolAspect * symbol / 2, y}, symbol, drawing::Style{}.asAccentable())};
    y += symbol + spacing;
    for (const std::string& line : lines) {
        parts.push_back({Text{.text = line,
                              .font = font,
                              .style = secondary,
                              .at = {middle, y + font.ascent()},
                              .alignment = drawing::Alignment::centre,
                              .width = canvas.size.width,
                              .minimumScale = 0.7},
                         {}});
        y += font.lineHeight();
    }
    return drawing::labelled(drawing::group(std::move(parts)), std::move(text));
}

}  // namespace tapwidgets
