#pragma once

#include <optional>
#include <span>

namespace drawing {

// Lengths are points (1/72 inch on paper, a pixel on a screen of scale 1); x grows to the right, y downwards.
// Everything here is a value without hidden state, and so is every picture: threads may share them as long as
// none of them changes one. Any number may be given, infinite ones and nan too: see isEmpty and isPaintable.

/// A place in the plane.
struct Point {
    double x = 0;
    double y = 0;

    bool operator==(const Point&) const = default;
};

/// How large something is. Below 0, nan and 0 mean nothing to see.
struct Size {
    double width = 0;
    double height = 0;

    bool operator==(const Size&) const = default;
};

/// An upright rectangle, by its left top corner.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    double right() const { return x + width; }
    double bottom() const { return y + height; }
    Point centre() const { return {x + width / 2, y + height / 2}; }
    /// True when nothing can be seen of it: no width or height, or no number.
    bool isEmpty() const { return !(width > 0 && height > 0 && right() > x && bottom() > y); }
    /// The same with so much taken off on every side, or added when `by` is below 0; empty when it was too
    /// small.
    Rect inset(double by) const { return {x + by, y + by, width - 2 * by, height - 2 * by}; }

    bool operator==(const Rect&) const = default;
};

/// The smallest rectangle that holds both, empty ones with their place too.
Rect united(const Rect& a, const Rect& b);

/// An affine map of the plane: (x, y) becomes (xx x + xy y + dx, yx x + yy y + dy).
struct Transform {
    double xx = 1;
    double yx = 0;
    double xy = 0;
    double yy = 1;
    double dx = 0;
    double dy = 0;

    static Transform moved(double x, double y) { return {.dx = x, .dy = y}; }
    static Transform scaled(double by) { return {.xx = by, .yy = by}; }
    /// Turned clockwise on screen about a point.
    static Transform turned(double degrees, Point about);

    Point operator()(Point point) const {
        return {xx * point.x + xy * point.y + dx, yx * point.x + yy * point.y + dy};
    }
    /// This transform first, then another.
    Transform then(const Transform& next) const;
    /// The one that takes it back, or nothing when it flattens the plane or is not finite.
    std::optional<Transform> inverse() const;

    bool operator==(const Transform&) const = default;
};

/// How far the plane reaches from its origin, in points, in each direction.
inline constexpr double furthest = 1e6;

/// Whether all points have a place in the plane once transformed: finite, and no further away than that.
bool isPaintable(std::span<const Point> points, const Transform& transform);

/// Whether anything is to be seen of what is drawn at that opacity; false for nan.
inline bool isVisible(double opacity) { return opacity > 0; }

}  // namespace drawing
