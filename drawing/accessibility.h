#pragma once

#include <string>
#include <vector>

#include "drawing/node.h"

namespace drawing {

/// A part of a picture as assistive tools know it.
struct Element {
    std::string label;
    std::string value;
    std::vector<Element> children;

    bool operator==(const Element&) const = default;
};

/// The elements that a node amounts to, in drawing order.
std::vector<Element> elementsOf(const Node& node);

}  // namespace drawing
