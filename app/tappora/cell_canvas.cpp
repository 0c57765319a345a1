#include "app/tappora/cell_canvas.h"

#include <utility>

#include "core/foundation/characters.h"

namespace tappora {
namespace {

std::string codes(const Cell& cell, ColourDepth depth) {
    std::string codes = cell.ink ? foregroundCode(*cell.ink, depth) : "";
    if (cell.ground) codes += (codes.empty() ? "" : ";") + backgroundCode(*cell.ground, depth);
    return codes;
}

}  // namespace

Cell* Canvas::at(std::size_t x, std::size_t y) {
    return x < width_ && y * width_ < cells_.size() ? &cells_[y * width_ + x] : nullptr;
}

void Canvas::write(std::string_view text, std::size_t x, std::size_t y, std::optional<CellColour> ink) {
    for (const std::string_view character : tapcore::characters(text)) {
        const std::size_t columns = tapcore::columnCount(character);
        Cell* const first = at(x, y);
        Cell* const last = at(x + columns - 1, y);
        if (first && last) {
            last->text.clear();
            first->text = character;
            first->ink = ink;
        }
        x += columns;
    }
}

std::string Canvas::text(ColourDepth depth) const {
    std::string result;
    std::string gap;
    for (std::size_t start = 0; start < cells_.size(); start += width_) {
        std::size_t end = start + width_;
        while (end > start && cells_[end - 1] == Cell{}) --end;
        if (end > start) result += std::exchange(gap, "") + line(start, end, depth) + "\n";
        else gap += "\n";
    }
    return result;
}

std::string Canvas::line(std::size_t start, std::size_t end, ColourDepth depth) const {
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
