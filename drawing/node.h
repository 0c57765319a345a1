#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "drawing/path.h"
#include "drawing/style.h"
#include "drawing/text.h"

namespace drawing {

/// What assistive tools are told of a node.
struct Accessibility {
    enum class Grouping : std::uint8_t {
        separate,  ///< each part is an element of its own; with a label, within one for the whole
        combined,  ///< one element, whose label and value are those of its parts, joined by ", "
        single,    ///< one element with the label and value given; its parts are not told of
        hidden,    ///< none: decoration
    };

    std::string label;  ///< what it is; a text's is the text itself when none is given
    std::string value;  ///< how much it is, or its state
    Grouping grouping = Grouping::separate;

    bool operator==(const Accessibility&) const = default;
};

/// How a line is drawn along a path.
struct Stroke {
    Style style;
    double width = 1;  ///< in points; nothing is drawn for one that is not above 0

    bool operator==(const Stroke&) const = default;
};

/// A path that is filled, drawn along, or both.
struct Shape {
    Path path;
    std::optional<Style> fill;
    std::optional<Stroke> stroke;  ///< drawn after the fill, with round ends and joins

    bool operator==(const Shape&) const = default;
};

struct Node;

/// Parts drawn one above the other, moved and faded as one.
struct Group {
    std::vector<Node> children;
    Transform transform;  ///< from the plane of the children to that of the group
    double opacity = 1;   ///< 0 to 1, of all children together

    bool operator==(const Group&) const;
};

/// A part of a picture.
struct Node {
    std::variant<Group, Shape, Text> content;
    Accessibility accessibility;

    bool operator==(const Node&) const = default;
};

inline bool Group::operator==(const Group&) const = default;

// Nodes are made by these. Nothing is known of them to assistive tools but texts.

Node group(std::vector<Node> children, const Transform& transform = {}, double opacity = 1);
Node filled(Path path, const Style& style);
Node stroked(Path path, const Style& style, double width);
/// The same node with what assistive tools are told: one element of that label and value.
Node labelled(Node node, std::string label, std::string value = "");
/// The same node as decoration.
Node hidden(Node node);
/// The same node as one element that says what its parts say.
Node combined(Node node);

/// A picture as a value: the same for every theme, rendering mode and output. Nothing is painted outside its
/// size, which is in points and begins at the origin.
struct Picture {
    Size size;
    Node content;

    bool operator==(const Picture&) const = default;
};

}  // namespace drawing
