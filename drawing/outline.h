#pragma once

#include <span>

#include "drawing/path.h"

namespace drawing {

/// How a corner of radius r begins and ends: `circular` with its arc; `continuous` with a curvature that
/// grows from nothing to the arc's, over 1.6 r of each side, or what room there is.
enum class CornerStyle { circular, continuous };

/// The outline of upright rectangles joined: one contour for those that touch, clockwise, holes the other way
/// round. Corners that point outwards are rounded, by at most half of their shorter side; those that point
/// inwards stay sharp. Empty rectangles do not count. Meant for few: time and memory grow with the square of
/// their number.
Path roundedUnion(std::span<const Rect> parts, double radius, CornerStyle style = CornerStyle::continuous);

/// The outline of one rectangle; an empty path for an empty one.
Path roundedRectangle(const Rect& rect, double radius, CornerStyle style = CornerStyle::continuous);

}  // namespace drawing
