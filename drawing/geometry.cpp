#include "drawing/geometry.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace drawing {

Rect united(const Rect& a, const Rect& b) {
    const double x = std::min(a.x, b.x);
    const double y = std::min(a.y, b.y);
    return {x, y, std::max(a.right(), b.right()) - x, std::max(a.bottom(), b.bottom()) - y};
}

Transform Transform::turned(double degrees, Point about) {
    const double angle = degrees * std::numbers::pi / 180;
    const double cosine = std::cos(angle);
    const double sine = std::sin(angle);
    return {.xx = cosine,
            .yx = sine,
            .xy = -sine,
            .yy = cosine,
            .dx = about.x - cosine * about.x + sine * about.y,
            .dy = about.y - sine * about.x - cosine * about.y};
}

Transform Transform::then(const Transform& next) const {
    const Point moved = next({dx, dy});
    return {.xx = next.xx * xx + next.xy * yx,
            .yx = next.yx * xx + next.yy * yx,
            .xy = next.xx * xy + next.xy * yy,
            .yy = next.yx * xy + next.yy * yy,
            .dx = moved.x,
            .dy = moved.y};
}

std::optional<Transform> Transform::inverse() const {
    const double determinant = xx * yy - xy * yx;
    const auto isUsable = [](double value) { return value != 0 && std::isfinite(value); };
    if (!isUsable(determinant) || !isUsable(1 / determinant) || !std::isfinite(dx + dy)) return std::nullopt;
    const Transform turned{
        .xx = yy / determinant, .yx = -yx / determinant, .xy = -xy / determinant, .yy = xx / determinant};
    const Point back = turned({dx, dy});
    Transform result = turned;
    result.dx = -back.x;
    result.dy = -back.y;
    return result;
}

bool isPaintable(std::span<const Point> points, const Transform& transform) {
    return std::all_of(points.begin(), points.end(), [&](Point point) {
        const Point placed = transform(point);
        return std::abs(placed.x) <= furthest && std::abs(placed.y) <= furthest;
    });
}

}  // namespace drawing
