#include "drawing/outline.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <vector>

namespace drawing {
namespace {

/// Right, down, left, up: clockwise on screen.
constexpr std::array<Point, 4> headings = {{{1, 0}, {0, 1}, {-1, 0}, {0, -1}}};
using Heading = std::size_t;

constexpr Heading rightOf(Heading heading) { return (heading + 1) % 4; }
constexpr Heading leftOf(Heading heading) { return (heading + 3) % 4; }

struct Corner {
    Point at;
    Heading in;   ///< the heading of the side that ends here
    Heading out;  ///< and of the one that begins

    bool pointsOutwards() const { return out == rightOf(in); }
};
using Contour = std::vector<Corner>;

std::vector<double> sortedEdges(std::vector<double> edges) {
    std::sort(edges.begin(), edges.end());
    edges.erase(std::unique(edges.begin(), edges.end()), edges.end());
    return edges;
}

/// The plane cut along all sides of the rectangles, and which of the cells they cover.
class Grid {
  public:
    explicit Grid(std::span<const Rect> parts) {
        for (const Rect& part : parts) {
            xs_.insert(xs_.end(), {part.x, part.right()});
            ys_.insert(ys_.end(), {part.y, part.bottom()});
        }
        xs_ = sortedEdges(std::move(xs_));
        ys_ = sortedEdges(std::move(ys_));
        covered_.resize(xs_.size() * ys_.size());
        for (const Rect& part : parts) cover(part);
    }

    /// The borders of what is covered, which lies to the right of who walks along them.
    std::vector<Contour> contours() {
        borders_.resize(covered_.size());
        for (std::size_t row = 0; row < ys_.size(); ++row)
            for (std::size_t column = 0; column < xs_.size(); ++column) markBorders(column, row);
        std::vector<Contour> result;
        for (std::size_t row = 0; row < ys_.size(); ++row)
            for (std::size_t column = 0; column < xs_.size(); ++column)
                if (border(column, row)[0]) result.push_back(traced(column, row));
        return result;
    }

  private:
    using Borders = std::array<bool, 4>;  ///< which sides begin at a crossing, by heading

    void cover(const Rect& part) {
        for (std::size_t row = 0; row < ys_.size(); ++row)
            for (std::size_t column = 0; column < xs_.size(); ++column)
                if (xs_[column] >= part.x && xs_[column] < part.right() && ys_[row] >= part.y &&
                    ys_[row] < part.bottom())
                    covered_[row * xs_.size() + column] = true;
    }

    /// Whether the cell right below a crossing is covered; false outside. Indices may wrap below 0.
    bool isCovered(std::size_t column, std::size_t row) const {
        return column < xs_.size() && row < ys_.size() && covered_[row * xs_.size() + column];
    }

    Borders& border(std::size_t column, std::size_t row) { return borders_[row * xs_.size() + column]; }

    void markBorders(std::size_t column, std::size_t row) {
        const bool here = isCovered(column, row);
        const bool left = isCovered(column - 1, row);
        const bool above = isCovered(column, row - 1);
        const bool across = isCovered(column - 1, row - 1);
        border(column, row) = {here && !above, left && !here, across && !left, above && !across};
    }

    Contour traced(std::size_t column, std::size_t row) {
        Contour contour;
        Heading heading = 0;
        while (border(column, row)[heading]) {
            border(column, row)[heading] = false;
            column += heading == 0 ? 1 : heading == 2 ? static_cast<std::size_t>(-1) : 0;
            row += heading == 1 ? 1 : heading == 3 ? static_cast<std::size_t>(-1) : 0;
            const Heading next = nextHeading(border(column, row), heading);
            if (next != heading) contour.push_back({{xs_[column], ys_[row]}, heading, next});
            heading = next;
        }
        return contour;
    }

    /// Turns right where it can, so that cells which only share a corner stay apart. Back at the start
    /// nothing is left to take but the first side again, and that one went right.
    static Heading nextHeading(const Borders& sides, Heading heading) {
        for (const Heading next : {rightOf(heading), heading, leftOf(heading)})
            if (sides[next]) return next;
        return 0;
    }

    std::vector<double> xs_;
    std::vector<double> ys_;
    std::vector<bool> covered_;
    std::vector<Borders> borders_;
};

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
    RoundedCorner(const Corner& corner, double radius, double reach)
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

    const Corner& corner_;
    double radius_;
    double reach_;  ///< how much of each side the corner takes
    double eased_;  ///< by which angle the way turns before the arc begins
};

double length(const Corner& from, const Corner& to) {
    return std::abs(to.at.x - from.at.x) + std::abs(to.at.y - from.at.y);
}

Path drawn(const Contour& contour, double radius, CornerStyle style) {
    constexpr double continuousReach = 1.6;
    Path path;
    for (std::size_t index = 0; index < contour.size(); ++index) {
        const Corner& corner = contour[index];
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
    for (const Contour& contour : Grid(seen).contours()) path.append(drawn(contour, radius, style));
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
