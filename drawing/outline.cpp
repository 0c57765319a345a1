#include "drawing/outline.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <numbers>
#include <vector>

#include "drawing/contour.h"

namespace drawing {
namespace {

void goTo(Path& path, Point to) {
    if (path.points.empty()) path.moveTo(to);
    else if (path.current() != to) path.lineTo(to);
}

/// A rounded corner in coordinates along the side that comes in and the one that goes out, from where they
/// meet.
class RoundedCorner {
  public:
    RoundedCorner() = default;
    RoundedCorner(double radius, double reach) : radius_(radius), reach_(reach) {
        // By which angle the way turns before the arc begins.
        const double eased = std::numbers::pi / 4 * (reach / radius - 1);
        const double sine = std::sin(eased);
        const double cosine = std::cos(eased);
        const double handle = 4.0 / 3 * std::tan((std::numbers::pi / 2 - 2 * eased) / 4) * radius;
        const Point start = {radius * (sine - 1), radius * (1 - cosine)};
        const Point end = {-start.y, -start.x};
        const Point afterStart = {start.x + handle * cosine, start.y + handle * sine};
        const Point beforeEnd = {end.x - handle * sine, end.y - handle * cosine};
        if (eased <= 1e-6) {
            add(afterStart, beforeEnd, end);
            return;
        }
        // How far before the corner the arc's tangent leaves the side, and how far before that the handle
        // stands which makes the curvature end as the arc's.
        const double tangent = std::tan(eased / 2);
        const double bend = radius * (1 - tangent);
        const double lead = 1.5 * radius * tangent * tangent / sine;
        add({-bend - lead, 0}, {-bend, 0}, start);
        add(afterStart, beforeEnd, end);
        add({0, bend}, {0, bend + lead}, {0, reach});
    }

    bool isOf(double radius, double reach) const { return radius == radius_ && reach == reach_; }

    void draw(Path& path, const ContourCorner& corner) const {
        const Point in = headings[corner.in];
        const Point out = headings[corner.out];
        const auto placed = [&](Point own) -> Point {
            return {corner.at.x + own.x * in.x + own.y * out.x, corner.at.y + own.x * in.y + own.y * out.y};
        };
        goTo(path, placed({-reach_, 0}));
        for (std::size_t i = 0; i < count_; i += 3)
            path.curveTo(placed(points_[i]), placed(points_[i + 1]), placed(points_[i + 2]));
    }

  private:
    void add(Point handle1, Point handle2, Point to) {
        for (const Point point : {handle1, handle2, to}) points_[count_++] = point;
    }

    double radius_ = 0;
    double reach_ = 0;  ///< how much of each side the corner takes
    std::array<Point, 9> points_;
    std::size_t count_ = 0;  ///< of the points: three to a curve
};

double length(const ContourCorner& from, const ContourCorner& to) {
    return std::abs(to.at.x - from.at.x) + std::abs(to.at.y - from.at.y);
}

Path drawn(const Contour& contour, double radius, CornerStyle style) {
    constexpr double continuousReach = 1.6;
    constexpr std::size_t mostSteps = 4;  // a line and three curves to a corner
    RoundedCorner shape;
    Path path;
    path.steps.reserve(mostSteps * contour.size() + 1);
    path.points.reserve((3 * mostSteps - 2) * contour.size());
    for (std::size_t index = 0; index < contour.size(); ++index) {
        const ContourCorner& corner = contour[index];
        const double before = length(contour[(index + contour.size() - 1) % contour.size()], corner);
        const double after = length(corner, contour[(index + 1) % contour.size()]);
        const double room = std::min(before, after) / 2;
        const double rounded = corner.pointsOutwards() ? std::min(radius, room) : 0;
        const double wish = style == CornerStyle::continuous ? continuousReach * rounded : rounded;
        if (rounded <= 0) {
            goTo(path, corner.at);
            continue;
        }
        const double reach = std::min(wish, room);
        // The corners of a rectangle are all alike.
        if (!shape.isOf(rounded, reach)) shape = RoundedCorner(rounded, reach);
        shape.draw(path, corner);
    }
    return path.close();
}

}  // namespace

Path roundedUnion(std::span<const Rect> parts, double radius, CornerStyle style) {
    std::vector<Rect> seen;
    std::copy_if(parts.begin(), parts.end(), std::back_inserter(seen),
                 [](const Rect& part) { return !part.isEmpty(); });
    const std::vector<Contour> contours = contoursOf(seen);
    if (contours.size() == 1) return drawn(contours.front(), radius, style);
    Path path;
    for (const Contour& contour : contours) path.append(drawn(contour, radius, style));
    return path;
}

Path roundedRectangle(const Rect& rect, double radius, CornerStyle style) {
    return roundedUnion({&rect, 1}, radius, style);
}

}  // namespace drawing
