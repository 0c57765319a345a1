#include "drawing/tile.h"

#include "drawing/outline.h"

namespace drawing {
namespace {

constexpr double radius = 0.12;

/// Where along a side of the box the centre is; at its start when the box has no extent.
double anchor(std::optional<double> about, double start, double extent) {
    return extent > 0 ? about.value_or(start) - start : 0;
}

}  // namespace

Rect Tile::box() const {
    if (parts.empty()) return {};
    Rect result = parts.front();
    for (const Rect& part : parts) result = united(result, part);
    return result;
}

Path Tile::outline(double unit) const {
    const Rect whole = box();
    std::vector<Rect> drawn;
    for (const Rect& part : parts) {
        const Rect placed{unit * (part.x - whole.x), unit * (part.y - whole.y), unit * part.width,
                          unit * part.height};
        drawn.push_back(placed.inset(unit * gap));
    }
    return roundedUnion(drawn, unit * radius);
}

Transform Tile::placement(double unit, Point origin) const {
    const Rect whole = box();
    const Transform move = Transform::moved(unit * (whole.x - origin.x), unit * (whole.y - origin.y));
    if (degrees == 0) return move;
    const Point centre{unit * anchor(aboutX, whole.x, whole.width),
                       unit * anchor(aboutY, whole.y, whole.height)};
    return Transform::turned(degrees, centre).then(move);
}

}  // namespace drawing
