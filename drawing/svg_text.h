#pragma once

#include <string>
#include <string_view>

#include "drawing/geometry.h"
#include "drawing/path.h"
#include "drawing/style.h"

namespace drawing {

// The small texts that an SVG file is made of. All are the same on every machine, whatever its locale. A
// number that is not finite is written as 0.

/// A number of at most so many decimals, without trailing zeros: "12.5", "-0.04", "7". Halves are rounded
/// away from 0.
std::string svgNumber(double value, int decimals = 2);

/// Path data in relative steps of hundredths of a point: "M1 2h30v4.5z". Rounding does not add up.
std::string svgPath(const Path& path);

/// The value of a transform attribute: "translate(1 2)" or "matrix(…)"; "" for the one that changes nothing.
std::string svgTransform(const Transform& transform);

/// "#a1b2c3", without the opacity.
std::string svgColour(const Colour& colour);

/// Text for an element or an attribute: & < > " are written as entities, and what XML does not allow as
/// U+FFFD.
std::string svgEscaped(std::string_view text);

}  // namespace drawing
