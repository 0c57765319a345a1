#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/common/terminal/terminal.h"

namespace tappora {

/// A colour of a terminal's cell.
struct CellColour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    bool operator==(const CellColour&) const = default;
};

/// One character of a drawing in characters.
struct TerminalCell {
    std::string text = " ";  ///< "" after a wide character
    std::optional<CellColour> ink = {};
    std::optional<CellColour> ground = {};

    bool operator==(const TerminalCell&) const = default;
};

/// A rectangle of cells to draw on. Drawing outside of it does nothing.
class CellGrid {
  public:
    CellGrid(std::size_t width, std::size_t height) : width_(width), cells_(width * height) {}

    /// The cell there, or null.
    TerminalCell* at(std::size_t x, std::size_t y);

    /// Writes a text from that cell to the right. The cells keep their ground.
    void write(std::string_view text, std::size_t x, std::size_t y, std::optional<CellColour> ink = {});

    /// All cells as lines of text with the escape codes of their colours. Empty cells at the end of a line,
    /// and empty lines at the end, are left out.
    std::string text(ColourDepth depth) const;

  private:
    std::string line(std::size_t start, std::size_t end, ColourDepth depth) const;

    std::size_t width_;
    std::vector<TerminalCell> cells_;
};

/// The beginning of a text that fits into so many columns.
std::string cut(std::string_view text, std::size_t columns);

}  // namespace tappora
