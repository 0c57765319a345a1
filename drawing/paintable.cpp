#include "drawing/paintable.h"

#include <algorithm>
#include <cmath>

namespace drawing {

bool isPaintable(std::span<const Point> points, const Transform& transform) {
    return std::all_of(points.begin(), points.end(), [&](Point point) {
        const Point placed = transform(point);
        return std::abs(placed.x) <= furthest && std::abs(placed.y) <= furthest;
    });
}

}  // namespace drawing
