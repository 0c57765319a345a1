#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <vector>

#include "drawing/geometry.h"

namespace drawing {

/// A way along the plane's axes: 0 right, 1 down, 2 left, 3 up, clockwise on screen.
using Heading = std::size_t;

constexpr std::array<Point, 4> headings = {{{1, 0}, {0, 1}, {-1, 0}, {0, -1}}};
constexpr Heading rightOf(Heading heading) { return (heading + 1) % 4; }
constexpr Heading leftOf(Heading heading) { return (heading + 3) % 4; }

/// Where a contour turns.
struct ContourCorner {
    Point at;
    Heading in;   ///< of the side that ends here
    Heading out;  ///< of the one that begins

    bool pointsOutwards() const { return out == rightOf(in); }
};
using Contour = std::vector<ContourCorner>;

/// The borders of what upright rectangles cover together, which is to the right of who walks along them:
/// one contour around those that touch along a side, and one within for each hole. The rectangles must have
/// an extent. Time and memory grow with the square of their number.
std::vector<Contour> contoursOf(std::span<const Rect> parts);

}  // namespace drawing
