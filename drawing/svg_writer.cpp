#include <utility>

#include "drawing/accessibility.h"
#include "drawing/font_families.h"
#include "drawing/geometry.h"
#include "drawing/painter.h"
#include "drawing/svg_text.h"

namespace drawing {
namespace {

std::string attribute(std::string_view name, std::string_view value) {
    if (value.empty()) return "";
    return std::string(" ").append(name) + "=\"" + svgEscaped(value) + '"';
}

std::string element(std::string_view name, std::string_view text) {
    if (text.empty()) return "";
    return std::string("<").append(name) + '>' + svgEscaped(text) + "</" + std::string(name) + ">\n";
}

std::string opacityAttribute(std::string_view name, double opacity) {
    return opacity < 1 ? attribute(name, svgNumber(opacity, 3)) : "";
}

/// `name` and its opacity: fill and fill-opacity, or the stroke's.
std::string paintAttributes(const std::string& name, const Colour& colour) {
    return attribute(name, svgColour(colour)) + opacityAttribute(name + "-opacity", colour.alpha);
}

std::string_view anchorName(Alignment alignment) {
    switch (alignment) {
        case Alignment::leading:
            return "";
        case Alignment::centre:
            return "middle";
        case Alignment::trailing:
            return "end";
    }
    return "";
}

std::string fontAttributes(const Font& font) {
    std::string text = attribute("font-size", svgNumber(font.size));
    if (font.weight != Weight::regular)
        text += attribute("font-weight", std::to_string(static_cast<int>(font.weight)));
    if (font.design != Design::standard) text += attribute("font-family", families(font.design));
    if (font.monospacedDigits) text += attribute("style", "font-variant-numeric:tabular-nums");
    return text;
}

using Grouping = Accessibility::Grouping;

/// What a node is in the tree of elements for assistive tools.
struct Stand {
    std::string role = "";
    std::string title = "";
    std::string description = "";
    bool isHidden = false;

    bool isPlain() const { return role.empty() && title.empty() && !isHidden; }
};

/// A text speaks for itself, and so does a group that only holds others.
Stand standOf(const Node& node) {
    if (node.accessibility.grouping == Grouping::hidden) return {.isHidden = true};
    const bool isText = std::holds_alternative<Text>(node.content);
    if (isText && node.accessibility.label.empty()) return {};
    const bool holdsOthers =
        std::holds_alternative<Group>(node.content) && node.accessibility.grouping == Grouping::separate;
    if (holdsOthers)
        return node.accessibility.label.empty()
                   ? Stand{}
                   : Stand{"group", node.accessibility.label, node.accessibility.value};
    const std::vector<Element> elements = elementsOf(node);
    if (elements.empty()) return {};
    return {"img", elements.front().label, elements.front().value};
}

class Writer {
  public:
    Writer(const Appearance& appearance, const TextWidth& width) : appearance_(appearance), width_(width) {}

    std::string document(const Picture& picture) {
        if (!(picture.size.width <= furthest && picture.size.height <= furthest))
            throw PaintError("too large: no picture is wider or higher than 1,000,000 points");
        const std::string width = svgNumber(picture.size.width);
        const std::string height = svgNumber(picture.size.height);
        const Stand stand = standOf(picture.content);
        text_ = "<svg xmlns=\"http://www.w3.org/2000/svg\"" + attribute("width", width) +
                attribute("height", height) + attribute("viewBox", "0 0 " + width + ' ' + height) +
                attribute("role", stand.role == "img" ? "img" : "graphics-document") +
                attribute("font-family", families(Design::standard)) + ">\n";
        text_ += element("title", stand.title) + element("desc", stand.description);
        writeContent(picture.content);
        return std::move(text_) + "</svg>\n";
    }

  private:
    void write(const Node& node) {
        const Stand stand = standOf(node);
        if (stand.isPlain()) return writeContent(node);
        text_ +=
            "<g" + attribute("role", stand.role) + (stand.isHidden ? " aria-hidden=\"true\"" : "") + ">\n";
        text_ += element("title", stand.title) + element("desc", stand.description);
        writeContent(node);
        text_ += "</g>\n";
    }

    void writeContent(const Node& node) {
        std::visit([this](const auto& content) { writePart(content); }, node.content);
    }

    void writePart(const Group& group) {
        if (!isVisible(group.opacity) || !group.transform.then(transform_).inverse()) return;
        const Transform outer = std::exchange(transform_, group.transform.then(transform_));
        const std::string attributes = attribute("transform", svgTransform(group.transform)) +
                                       opacityAttribute("opacity", group.opacity);
        if (!attributes.empty()) text_ += "<g" + attributes + ">\n";
        for (const Node& child : group.children) write(child);
        if (!attributes.empty()) text_ += "</g>\n";
        transform_ = outer;
    }

    void writePart(const Shape& shape) {
        if (shape.path.steps.empty() || !isPaintable(shape.path.points, transform_)) return;
        text_ += "<path" + attribute("d", svgPath(shape.path));
        text_ += shape.fill ? paintAttributes("fill", resolved(*shape.fill, appearance_)) : " fill=\"none\"";
        if (shape.stroke)
            text_ += paintAttributes("stroke", resolved(shape.stroke->style, appearance_)) +
                     attribute("stroke-width", svgNumber(shape.stroke->width)) +
                     " stroke-linecap=\"round\" stroke-linejoin=\"round\"";
        text_ += "/>\n";
    }

    void writePart(const Text& text) {
        if (text.text.empty() || !isPaintable({&text.at, 1}, transform_)) return;
        const FittedText line = fitted(text, width_);
        text_ += "<text" + attribute("x", svgNumber(line.baseline.x)) +
                 attribute("y", svgNumber(line.baseline.y)) + fontAttributes(line.font) +
                 attribute("text-anchor", anchorName(text.alignment)) +
                 paintAttributes("fill", resolved(text.style, appearance_)) + '>' + svgEscaped(line.text) +
                 "</text>\n";
    }

    const Appearance& appearance_;
    const TextWidth& width_;
    Transform transform_;
    std::string text_;
};

}  // namespace

std::string svg(const Picture& picture, const Appearance& appearance, const TextWidth& width) {
    return Writer(appearance, width).document(picture);
}

}  // namespace drawing
