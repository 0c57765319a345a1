#pragma once

#include <cstdint>
#include <string>

#include "app/common/terminal/terminal.h"

namespace tappora {

/// A colour of a terminal's cell.
struct CellColour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    bool operator==(const CellColour&) const = default;
};

/// The parameters of "select graphic rendition" (ECMA-48, 8.3.117) for a colour in the foreground or the
/// background: itself at full depth, else the nearest among xterm's cube and greys.
std::string foregroundCode(const CellColour& colour, ColourDepth depth);
std::string backgroundCode(const CellColour& colour, ColourDepth depth);

}  // namespace tappora
