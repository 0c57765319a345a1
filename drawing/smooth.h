#pragma once

#include <span>

#include "drawing/path.h"

namespace drawing {

/// A smooth line through points whose x ascends. Between two points it stays between their heights, so that
/// it never dips below the data, and it is flat where the data turn: the monotone interpolation of Fritsch
/// and Carlson (1980), as cubic curves. One point, or none, gives no line.
Path smoothLine(std::span<const Point> points);

/// The area between that line and the height `base`, as a closed path.
Path areaUnder(std::span<const Point> points, double base);

}  // namespace drawing
