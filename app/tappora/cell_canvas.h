#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/tappora/terminal_colour.h"

namespace tappora {

/// One character of a drawing in characters.
struct Cell {
    std::string text = " ";  ///< "" after a wide character
    std::optional<CellColour> ink = {};
    std::optional<CellColour> ground = {};

    bool operator==(const Cell&) const = default;
};

/// Lines of cells, to draw on. What lies outside is passed over.
class Canvas {
  public:
    Canvas(std::size_t width, std::size_t height) : width_(width), cells_(width * height) {}

    /// The cell there, or null.
    Cell* at(std::size_t x, std::size_t y);

    /// Writes a text from there on over the ground that lies there.
    void write(std::string_view text, std::size_t x, std::size_t y, std::optional<CellColour> ink = {});

    /// The lines, without what is empty at their ends and after the last; each change of colours is written
    /// once.
    std::string text(ColourDepth depth) const;

  private:
    std::string line(std::size_t start, std::size_t end, ColourDepth depth) const;

    std::size_t width_;
    std::vector<Cell> cells_;
};

/// As many characters of a text as have room.
std::string cut(std::string_view text, std::size_t columns);

}  // namespace tappora
