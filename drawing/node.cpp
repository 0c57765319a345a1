#include "drawing/node.h"

#include <utility>

namespace drawing {

Node group(std::vector<Node> children, const Transform& transform, double opacity) {
    return {Group{std::move(children), transform, opacity}, {}};
}

Node filled(Path path, const Style& style) { return {Shape{std::move(path), style, std::nullopt}, {}}; }

Node stroked(Path path, const Style& style, double width) {
    return {Shape{std::move(path), std::nullopt, Stroke{style, width}}, {}};
}

Node labelled(Node node, std::string label, std::string value) {
    node.accessibility = {std::move(label), std::move(value), Accessibility::Grouping::single};
    return node;
}

Node hidden(Node node) {
    node.accessibility.grouping = Accessibility::Grouping::hidden;
    return node;
}

Node combined(Node node) {
    node.accessibility.grouping = Accessibility::Grouping::combined;
    return node;
}

}  // namespace drawing
