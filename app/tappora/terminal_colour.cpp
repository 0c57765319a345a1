#include "app/tappora/terminal_colour.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstddef>

namespace tappora {
namespace {

/// How far two colours are apart: the square of their distance.
int distance(const CellColour& a, const CellColour& b) {
    const int red = a.red - b.red;
    const int green = a.green - b.green;
    const int blue = a.blue - b.blue;
    return red * red + green * green + blue * blue;
}

constexpr std::array<std::uint8_t, 6> cubeLevels = {0, 95, 135, 175, 215, 255};

/// Xterm's colours from 16 to 255: a cube of 6 x 6 x 6, then 24 greys.
CellColour indexedColour(std::size_t index) {
    constexpr std::size_t firstGrey = 216;
    if (index >= firstGrey) {
        const auto grey = static_cast<std::uint8_t>(8 + 10 * (index - firstGrey));
        return {grey, grey, grey};
    }
    return {cubeLevels[index / 36], cubeLevels[index / 6 % 6], cubeLevels[index % 6]};
}

std::size_t nearestIndex(const CellColour& colour) {
    constexpr std::size_t count = 240;
    std::size_t nearest = 0;
    for (std::size_t index = 1; index < count; ++index)
        if (distance(indexedColour(index), colour) < distance(indexedColour(nearest), colour))
            nearest = index;
    return nearest + 16;
}

std::string code(int ground, const CellColour& colour, ColourDepth depth) {
    if (depth == ColourDepth::full)
        return fmt::format("{};2;{};{};{}", ground, colour.red, colour.green, colour.blue);
    return fmt::format("{};5;{}", ground, nearestIndex(colour));
}

}  // namespace

std::string foregroundCode(const CellColour& colour, ColourDepth depth) { return code(38, colour, depth); }
std::string backgroundCode(const CellColour& colour, ColourDepth depth) { return code(48, colour, depth); }

}  // namespace tappora
