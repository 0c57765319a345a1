#pragma once

#include <span>

#include "drawing/geometry.h"

namespace drawing {

/// How far the plane reaches, in points.
inline constexpr double furthest = 1e6;

/// Whether all points have a place in the plane once transformed: finite, and no further away than that.
bool isPaintable(std::span<const Point> points, const Transform& transform);

/// Whether anything is to be seen of what is drawn at that opacity; false for nan.
inline bool isVisible(double opacity) { return opacity > 0; }

}  // namespace drawing
