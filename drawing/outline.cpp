#include "drawing/outline.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <numbers>
#include <vector>

#include "drawing/contour.h"

namespace drawing {
namespace {

void goTo(Path& path, Point to) {
    if (path.points.empty())
        path.moveTo(to);
    else if (path.current() != to)
        path.lineTo(to);
}

/// Draws one rounded corner. Its own coordinates are along the side that comes in and the one that goes out,
/// from where they meet.
class RoundedCorner {
  public:
    RoundedCorner(const ContourCorner& corner, double radius, double reach)
        : corner_(corner), radius_(radius), reach_(reach) {
        eased_ = std::numbers::pi / 4 * (reach / radius - 1);
    }

    void draw(Path& path) const {
        const double handle = 4.0 / 3 * std::tan((std::numbers::pi / 2 - 2 * eased_) / 4) * radius_;
        const Point start = onArc(eased_);
        const Point end = {-start.y, -start.x};
        goTo(path, placed({-reach_, 0}));
        const bool isEased = eased_ > 1e-6;
        if (isEased) path.curveTo(placed({-bend() - lead(), 0}), placed({-bend(), 0}), placed(start));
        path.curveTo(placed(along(start, handle, eased_)),
                     placed(along(end, -handle, std::numbers::pi / 2 - eased_)), placed(end));
        if (isEased) path.curveTo(placed({0, bend()}), placed({0, bend() + lead()}), placed({0, reach_}));
    }

  private:
    /// The arc's point where the way has turned by an angle.
    Point onArc(double angle) const {
        return {radius_ * (std::sin(angle) - 1), radius_ * (1 - std::cos(angle))};
    }
    static Point along(Point from, double distance, double angle) {
        return {from.x + distance * std::cos(angle), from.y + distance * std::sin(angle)};
    }
    /// How far before the corner the arc's tangent leaves the side.
    double bend() const { return radius_ * (1 - std::tan(eased_ / 2)); }
    /// How far before that the handle stands which makes the curvature end as the arc's.
    double lead() const {
        const double tangent = std::tan(eased_ / 2);
        return 1.5 * radius_ * tangent * tangent / std::sin(eased_);
    }
    Point placed(Point own) const {
        const Point in = headings[corner_.in];
        const Point out = headings[corner_.out];
        return {corner_.at.x + own.x * in.x + own.y * out.x, corner_.at.y + own.x * in.y + own.y * out.y};
    }

    const ContourCorner& corner_;
    double radius_;
    double reach_;  ///< how much of each side the corner takes
    double eased_;  ///< by which angle the way turns before the arc begins
};

double length(const ContourCorner& from, const ContourCorner& to) {
    return std::abs(to.at.x - from.at.x) + std::abs(to.at.y - from.at.y);
}

Path drawn(const Contour& contour, double radius, CornerStyle style) {
    constexpr double continuousReach = 1.6;
    Path path;
    for (std::size_t index = 0; index < contour.size(); ++index) {
        const ContourCorner& corner = contour[index];
        const double before = length(contour[(index + contour.size() - 1) % contour.size()], corner);
        const double after = length(corner, contour[(index + 1) % contour.size()]);
        const double room = std::min(before, after) / 2;
        const double rounded = corner.pointsOutwards() ? std::min(radius, room) : 0;
        const double wish = style == CornerStyle::continuous ? continuousReach * rounded : rounded;
        if (rounded > 0)
            RoundedCorner(corner, rounded, std::min(wish, room)).draw(path);
        else
            goTo(path, corner.at);
    }
    return path.close();
}

}  // namespace

Path roundedUnion(std::span<const Rect> parts, double radius, CornerStyle style) {
    std::vector<Rect> seen;
    std::copy_if(parts.begin(), parts.end(), std::back_inserter(seen),
                 [](const Rect& part) { return !part.isEmpty(); });
    Path path;
    for (const Contour& contour : contoursOf(seen)) path.append(drawn(contour, radius, style));
    return path;
}

Path roundedRectangle(const Rect& rect, double radius, CornerStyle style) {
    return roundedUnion({&rect, 1}, radius, style);
}

Path circle(Point centre, double radius) {
    return roundedRectangle({centre.x - radius, centre.y - radius, 2 * radius, 2 * radius}, radius,
                            CornerStyle::circular);
}

}  // namespace drawing
