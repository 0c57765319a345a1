#pragma once

#include <optional>
#include <vector>

#include "drawing/path.h"

namespace drawing {

/// Upright rectangles that form one plate and turn as one, a key of a keyboard say, on a plane with units of
/// its own. Neighbours a unit apart show a gap: each part is drawn smaller by 0.06 units on every side, with
/// corners of 0.12.
struct Tile {
    static constexpr double gap = 0.06;

    std::vector<Rect> parts;                      ///< in the units of the plane
    double degrees = 0;                           ///< clockwise
    std::optional<double> aboutX = std::nullopt;  ///< what it turns about; the left of its box when not given
    std::optional<double> aboutY = std::nullopt;  ///< the top of its box when not given

    /// The smallest upright rectangle that holds the parts before they turn.
    Rect box() const;
    /// The joined parts, `unit` points to a unit, from the box's corner. A part too small for the gap is left
    /// out.
    Path outline(double unit) const;
    /// From the outline's plane to one in which `origin`, in units, is at 0.
    Transform placement(double unit, Point origin) const;

    bool operator==(const Tile&) const = default;
};

}  // namespace drawing
