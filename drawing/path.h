#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "drawing/geometry.h"

namespace drawing {

/// Lines and cubic curves, in points. Filled by the non-zero rule. A path begins with a move; what a line or
/// a curve draws before one begins at the origin.
struct Path {
    enum class Step : std::uint8_t {
        move,   ///< takes one point
        line,   ///< takes one
        curve,  ///< takes three: the two handles, then the end
        close,  ///< takes none
    };

    std::vector<Step> steps;
    std::vector<Point> points;  ///< what the steps take, in order

    // Each adds a step, and gives this path.

    /// Begins another line, without drawing.
    Path& moveTo(Point to);
    Path& lineTo(Point to);
    Path& curveTo(Point handle1, Point handle2, Point to);
    /// Draws a line back to where the last move went.
    Path& close();
    /// Adds all steps of another path.
    Path& append(const Path& other);

    /// Where the pen is after the last step that takes a point; the origin at the start.
    Point current() const { return points.empty() ? Point{} : points.back(); }
    /// The smallest rectangle that holds all points, handles too; nothing for an empty path.
    std::optional<Rect> bounds() const;

    bool operator==(const Path&) const = default;
};

/// Calls `visit(step, points)` for each step, `points` being the first of those it takes. The path must have
/// the points that its steps take.
template <class Visit>
void walk(const Path& path, Visit visit) {
    const Point* at = path.points.data();
    for (const Path::Step step : path.steps) {
        visit(step, at);
        at += step == Path::Step::curve ? 3 : step == Path::Step::close ? 0 : 1;
    }
}

/// A straight line.
Path line(Point from, Point to);

}  // namespace drawing
