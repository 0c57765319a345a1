#pragma once

#include <span>

#include "drawing/geometry.h"

namespace drawing {

/// Whether all points have a place in the plane once transformed: finite, and no further than 1,000,000
/// points away.
bool isPaintable(std::span<const Point> points, const Transform& transform);

/// Whether anything is to be seen of what is drawn at that opacity; false for nan.
inline bool isVisible(double opacity) { return opacity > 0; }

}  // namespace drawing
