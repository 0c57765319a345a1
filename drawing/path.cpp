#include "drawing/path.h"

#include <algorithm>

namespace drawing {

Path& Path::moveTo(Point to) {
    steps.push_back(Step::move);
    points.push_back(to);
    return *this;
}

Path& Path::lineTo(Point to) {
    steps.push_back(Step::line);
    points.push_back(to);
    return *this;
}

Path& Path::curveTo(Point handle1, Point handle2, Point to) {
    steps.push_back(Step::curve);
    points.insert(points.end(), {handle1, handle2, to});
    return *this;
}

Path& Path::close() {
    steps.push_back(Step::close);
    return *this;
}

Path& Path::append(const Path& other) {
    steps.insert(steps.end(), other.steps.begin(), other.steps.end());
    points.insert(points.end(), other.points.begin(), other.points.end());
    return *this;
}

std::optional<Rect> Path::bounds() const {
    if (points.empty()) return std::nullopt;
    const auto byX = [](Point a, Point b) { return a.x < b.x; };
    const auto byY = [](Point a, Point b) { return a.y < b.y; };
    const auto [left, right] = std::minmax_element(points.begin(), points.end(), byX);
    const auto [top, bottom] = std::minmax_element(points.begin(), points.end(), byY);
    return Rect{left->x, top->y, right->x - left->x, bottom->y - top->y};
}

Path line(Point from, Point to) { return Path().moveTo(from).lineTo(to); }

}  // namespace drawing
