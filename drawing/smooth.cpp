#include "drawing/smooth.h"

#include <cmath>
#include <cstddef>
#include <vector>

namespace drawing {
namespace {

std::vector<double> slopesBetween(std::span<const Point> points) {
    std::vector<double> slopes;
    for (std::size_t i = 0; i + 1 < points.size(); ++i)
        slopes.push_back((points[i + 1].y - points[i].y) / (points[i + 1].x - points[i].x));
    return slopes;
}

/// The line's steepness at each point: the mean of its neighbours', 0 where they differ in direction, and
/// then no more than keeps the curve between its ends.
std::vector<double> tangents(const std::vector<double>& slopes) {
    std::vector<double> result(slopes.size() + 1);
    result.front() = slopes.front();
    result.back() = slopes.back();
    for (std::size_t i = 1; i < slopes.size(); ++i)
        result[i] = slopes[i - 1] * slopes[i] > 0 ? (slopes[i - 1] + slopes[i]) / 2 : 0;
    for (std::size_t i = 0; i < slopes.size(); ++i) {
        if (slopes[i] == 0) {
            result[i] = result[i + 1] = 0;
            continue;
        }
        const double ahead = result[i] / slopes[i];
        const double behind = result[i + 1] / slopes[i];
        const double size = std::hypot(ahead, behind);
        if (size <= 3) continue;
        result[i] = 3 / size * ahead * slopes[i];
        result[i + 1] = 3 / size * behind * slopes[i];
    }
    return result;
}

}  // namespace

Path smoothLine(std::span<const Point> points) {
    Path path;
    if (points.size() < 2) return path;
    const std::vector<double> steepness = tangents(slopesBetween(points));
    path.moveTo(points.front());
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
        const double third = (points[i + 1].x - points[i].x) / 3;
        path.curveTo({points[i].x + third, points[i].y + third * steepness[i]},
                     {points[i + 1].x - third, points[i + 1].y - third * steepness[i + 1]}, points[i + 1]);
    }
    return path;
}

Path areaUnder(std::span<const Point> points, double base) {
    Path path = smoothLine(points);
    if (path.steps.empty()) return path;
    return path.lineTo({points.back().x, base}).lineTo({points.front().x, base}).close();
}

}  // namespace drawing
