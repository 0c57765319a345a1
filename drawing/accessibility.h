#pragma once

#include <string>
#include <vector>

#include "drawing/node.h"

namespace drawing {

/// A part of a picture as assistive tools know it.
struct Element {
    std::string label;              ///< what it is; may be ""
    std::string value;              ///< how much it is, or its state; may be ""
    std::vector<Element> children;  ///< what it consists of

    bool operator==(const Element&) const = default;
};

/// The elements that a node amounts to, in drawing order; none for one that is hidden or says nothing.
std::vector<Element> elementsOf(const Node& node);

}  // namespace drawing
