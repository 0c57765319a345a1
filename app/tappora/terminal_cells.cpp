#include "app/tappora/terminal_cells.h"

#include <fmt/format.h>

#include <array>
#include <utility>

#include "core/foundation/characters.h"

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

/// The parameters of "select graphic rendition" (ECMA-48, 8.3.117) for a colour in the foreground, 38, or the
/// background, 48: itself at full depth, else the nearest among xterm's cube and greys.
std::string code(int ground, const CellColour& colour, ColourDepth depth) {
    if (depth == ColourDepth::full)
        return fmt::format("{};2;{};{};{}", ground, colour.red, colour.green, colour.blue);
    return fmt::format("{};5;{}", ground, nearestIndex(colour));
}

std::string codes(const TerminalCell& cell, ColourDepth depth) {
    std::string codes = cell.ink ? code(38, *cell.ink, depth) : "";
    if (cell.ground) codes += (codes.empty() ? "" : ";") + code(48, *cell.ground, depth);
    return codes;
}

}  // namespace

TerminalCell* CellGrid::at(std::size_t x, std::size_t y) {
    return x < width_ && y * width_ < cells_.size() ? &cells_[y * width_ + x] : nullptr;
}

void CellGrid::write(std::string_view text, std::size_t x, std::size_t y, std::optional<CellColour> ink) {
    for (const std::string_view character : tapcore::characters(text)) {
        const std::size_t columns = tapcore::columnCount(character);
        TerminalCell* const first = at(x, y);
        TerminalCell* const last = at(x + columns - 1, y);
        if (first && last) {
            last->text.clear();
            first->text = character;
            first->ink = ink;
        }
        x += columns;
    }
}

std::string CellGrid::text(ColourDepth depth) const {
    std::string result;
    std::string gap;
    for (std::size_t start = 0; start < cells_.size(); start += width_) {
        std::size_t end = start + width_;
        while (end > start && cells_[end - 1] == TerminalCell{}) --end;
        if (end > start) result += std::exchange(gap, "") + line(start, end, depth) + "\n";
        else gap += "\n";
    }
    return result;
}

std::string CellGrid::line(std::size_t start, std::size_t end, ColourDepth depth) const {
    std::string result;
    std::string current;
    for (std::size_t at = start; at < end; ++at) {
        std::string wanted = codes(cells_[at], depth);
        if (wanted != current) result += "\033[0" + (wanted.empty() ? "" : ";" + wanted) + "m";
        current = std::move(wanted);
        result += cells_[at].text;
    }
    return result + (current.empty() ? "" : "\033[0m");
}

std::string cut(std::string_view text, std::size_t columns) {
    std::string result;
    std::size_t taken = 0;
    for (const std::string_view character : tapcore::characters(text)) {
        taken += tapcore::columnCount(character);
        if (taken > columns) break;
        result += character;
    }
    return result;
}

}  // namespace tappora
