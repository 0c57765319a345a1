#include "app/paint/sheet.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "drawing/outline.h"

namespace tappora {
namespace {

using drawing::Font;
using drawing::Node;
using drawing::Style;
using drawing::Text;
using drawing::Transform;
using drawing::Weight;

constexpr double margin = 32;
constexpr double gap = 22;
constexpr double leastWidth = 560;
constexpr Style secondary{.role = Style::Role::secondary};

/// Puts one thing below another.
class Column {
  public:
    explicit Column(double width) : width_(width) {}

    void text(std::string text, const Font& font, const Style& style) {
        if (text.empty()) return;
        nodes_.push_back({Text{.text = std::move(text),
                               .font = font,
                               .style = style,
                               .at = {margin, bottom_ + font.ascent()},
                               .width = width_,
                               .minimumScale = 0.7},
                          {}});
        bottom_ += font.lineHeight();
    }

    void content(Node node, const drawing::Size& size) {
        const double left = margin + (width_ - size.width) / 2;
        nodes_.push_back(drawing::group({std::move(node)}, Transform::moved(left, bottom_)));
        bottom_ += size.height;
    }

    void space(double height) { bottom_ += height; }
    double bottom() const { return bottom_; }
    std::vector<Node> nodes() && { return std::move(nodes_); }

  private:
    double width_;
    double bottom_ = margin;
    std::vector<Node> nodes_;
};

}  // namespace

drawing::Picture pictureOf(Sheet sheet) {
    const double width = std::max(sheet.size.width, leastWidth);
    Column column(width);
    column.text(sheet.title, Font{.size = 20, .weight = Weight::semibold}, {});
    column.space(4);
    column.text(sheet.subtitle, Font::body().withMonospacedDigits(), secondary);
    column.space(gap);
    column.content(std::move(sheet.content), sheet.size);
    if (!sheet.notes.empty()) column.space(gap / 2);
    for (std::string& note : sheet.notes) column.text(std::move(note), Font{.size = 11}, secondary);
    const drawing::Size page{std::ceil(width + 2 * margin), std::ceil(column.bottom() + margin)};
    std::vector<Node> nodes = {drawing::filled(drawing::roundedRectangle({0, 0, page.width, page.height}, 0),
                                               {.role = Style::Role::background})};
    for (Node& node : std::move(column).nodes()) nodes.push_back(std::move(node));
    Node root = drawing::group(std::move(nodes));
    root.accessibility = {.label = std::move(sheet.title), .value = std::move(sheet.subtitle)};
    return {page, std::move(root)};
}

}  // namespace tappora
