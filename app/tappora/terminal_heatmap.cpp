#include "app/tappora/terminal_heatmap.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

#include "app/tappora/board_raster.h"
#include "app/tappora/terminal_cells.h"
#include "core/foundation/characters.h"
#include "core/keyboard/heat_ramp.h"

namespace tappora {
namespace {

using tapcore::Board;
using tapcore::Heatmap;
namespace HeatRamp = tapcore::HeatRamp;

/// How many characters a key unit takes. A character is about twice as high as wide.
struct Scale {
    std::size_t across;
    std::size_t down;
};

Scale scaleFor(const Board::Rect& bounds, const Terminal& terminal) {
    const double fitting = std::floor(static_cast<double>(terminal.width) / bounds.w);
    const auto across = static_cast<std::size_t>(std::clamp(fitting, 2.0, 7.0));
    return {across, std::max<std::size_t>((across + 1) / 2, 2)};
}

std::size_t rounded(double place) { return static_cast<std::size_t>(std::max(std::lround(place), 0L)); }

/// The columns of a key, upright about its centre, the last of them left free as BoardRaster does.
struct Columns {
    std::size_t left;
    std::size_t count;

    Columns(const Board::Key& key, const Board::Rect& bounds, Scale scale) {
        const auto across = static_cast<double>(scale.across);
        const double start = (key.center().x - key.w / 2 - bounds.x) * across;
        const double end = start + key.w * across;
        constexpr double grain = 1e-6;
        left = rounded(std::ceil(start - 0.5 - grain));
        count = std::max(rounded(std::ceil(end - 1.5 - grain)), left + 1) - left;
    }
};

/// 1234 as "1.2k", 1234567 as "1.2M".
std::string shortCount(std::int64_t count) {
    if (count < 1000) return std::to_string(count);
    auto value = static_cast<double>(count);
    const char* sign = " kMGTPE";
    for (; value >= 999.5; value /= 1000) ++sign;
    return fmt::format("{:.{}f}{}", value, value < 9.95 ? 1 : 0, *sign);
}

/// A name that is too long for its key: of two words the first cut short, and the initial of the last
/// ("paU").
std::string shortened(const std::string& name, std::size_t columns) {
    const auto blank = name.rfind(' ');
    if (blank == std::string::npos || columns < 2) return cut(name, columns);
    return cut(name, columns - 1) + tapcore::uppercased(cut(name.substr(blank + 1), 1));
}

/// What is written on a key that has so many columns: its face, and the amount where it fits whole. A short
/// face may take the free column too rather than be cut.
std::vector<std::string> linesOn(const HeatmapView& view, const Heatmap::Cell& cell, std::size_t columns) {
    std::string face;
    for (const std::string& line : view.face(cell)) face += line;
    const std::size_t room = std::max<std::size_t>(columns, std::min<std::size_t>(columns + 1, 3));
    const bool isCut = tapcore::columnCount(face) > room;
    std::vector<std::string> lines = {isCut ? shortened(face, columns) : face};
    std::string amount = view.amountText(cell);
    if (amount.ends_with(" %")) amount.resize(amount.size() - 2);
    if (amount.size() > columns && view.amount == KeyAmount::count) amount = shortCount(cell.count);
    if (!amount.empty() && amount.size() <= columns) lines.push_back(std::move(amount));
    return lines;
}

std::uint8_t byte(double part) { return static_cast<std::uint8_t>(std::lround(part * 255)); }

/// A step's colour; a faint grey where it is not heated.
CellColour colourOf(std::int64_t step, const HeatmapView& view) {
    const auto hsb = HeatRamp::hsb(step, view.dark, false, view.color);
    if (!hsb) return view.dark ? CellColour{58, 58, 58} : CellColour{228, 228, 228};
    const HeatRamp::RGB rgb = HeatRamp::rgb(*hsb);
    return {byte(rgb.red), byte(rgb.green), byte(rgb.blue)};
}

/// A key's colour; none for one that is left out.
std::optional<CellColour> groundOf(const Heatmap::Cell& cell, const HeatmapView& view) {
    return cell.off ? std::nullopt : std::optional(colourOf(cell.step, view));
}

std::optional<CellColour> inkOn(const Heatmap::Cell& cell, const HeatmapView& view) {
    if (cell.off) return std::nullopt;
    if (cell.step < 1) return view.dark ? CellColour{170, 170, 170} : CellColour{90, 90, 90};
    const bool isWhite = HeatRamp::whiteText(cell.step, view.dark, view.color);
    return isWhite ? CellColour{255, 255, 255} : CellColour{0, 0, 0};
}

/// Two dots above each other in one character.
TerminalCell halves(std::optional<CellColour> upper, std::optional<CellColour> lower) {
    if (upper == lower) return {" ", {}, upper};
    if (!upper) return {"▄", lower, {}};
    return {"▀", upper, lower};
}

/// Keys in their colours and turned as they are, two dots to a character.
class ColouredBoard {
  public:
    ColouredBoard(const HeatmapView& view, Scale scale)
        : view_(view),
          scale_(scale),
          bounds_(view.board.bounds()),
          raster_(view.board, scale.across, 2 * scale.down),
          cells_(raster_.width(), (raster_.height() + 1) / 2) {}

    CellGrid draw() {
        for (std::size_t y = 0; 2 * y < raster_.height(); ++y)
            for (std::size_t x = 0; x < raster_.width(); ++x)
                *cells_.at(x, y) = halves(groundAt(x, 2 * y), groundAt(x, 2 * y + 1));
        for (const Heatmap::Cell& cell : view_.heatmap.cells) write(cell);
        return std::move(cells_);
    }

  private:
    std::optional<CellColour> groundAt(std::size_t x, std::size_t y) const {
        const std::size_t key = raster_.key(x, y);
        return key == BoardRaster::none ? std::nullopt : groundOf(view_.heatmap.cells[key], view_);
    }

    /// In the middle of the key; an amount only where a key has three lines.
    void write(const Heatmap::Cell& cell) {
        const Columns columns(cell.key, bounds_, scale_);
        std::vector<std::string> lines = linesOn(view_, cell, columns.count);
        if (scale_.down < 3 || cell.key.h < 1) lines.resize(1);
        const double middle = (cell.key.center().y - bounds_.y) * static_cast<double>(scale_.down) - 0.25;
        const std::size_t top = rounded(middle - static_cast<double>(lines.size()) / 2);
        for (std::size_t line = 0; line < lines.size(); ++line)
            writeLine(cell, lines[line], columns, top + line);
    }

    void writeLine(const Heatmap::Cell& cell, const std::string& text, const Columns& columns,
                   std::size_t y) {
        const std::size_t taken = tapcore::columnCount(text);
        const std::size_t x = columns.left + (std::max(columns.count, taken) - taken) / 2;
        for (std::size_t column = x; column < x + taken; ++column)
            if (TerminalCell* under = cells_.at(column, y)) *under = {" ", {}, groundOf(cell, view_)};
        cells_.write(text, x, y, inkOn(cell, view_));
    }

    const HeatmapView& view_;
    Scale scale_;
    Board::Rect bounds_;
    BoardRaster raster_;
    CellGrid cells_;
};

constexpr std::array<std::string_view, 6> blocks = {"·", "▁", "▂", "▄", "▆", "█"};
constexpr std::array<std::string_view, 6> signs = {".", "1", "2", "3", "4", "5"};

std::string_view mark(std::int64_t step, const Terminal& terminal) {
    const auto index = static_cast<std::size_t>(std::clamp<std::int64_t>(step, 0, Heatmap::steps));
    return terminal.unicode ? blocks[index] : signs[index];
}

/// Keys upright, each with its face above a bar of its step, and between them the amount where there are
/// three lines.
class PlainBoard {
  public:
    PlainBoard(const HeatmapView& view, Scale scale, const Terminal& terminal)
        : view_(view),
          terminal_(terminal),
          scale_(scale),
          bounds_(view.board.bounds()),
          down_(static_cast<double>(scale.down)),
          cells_(rounded(bounds_.w * static_cast<double>(scale.across)) + 1, rounded(bounds_.h * down_) + 1) {
    }

    CellGrid draw() {
        for (const Heatmap::Cell& cell : view_.heatmap.cells) write(cell);
        return std::move(cells_);
    }

  private:
    /// The face alone on a key too low for more; its bar then fills the rest of the line.
    void write(const Heatmap::Cell& cell) {
        const Columns columns(cell.key, bounds_, scale_);
        std::vector<std::string> lines = linesOn(view_, cell, columns.count);
        const std::size_t height = std::max<std::size_t>(rounded(std::min(cell.key.h, 1.0) * down_ - 0.1), 1);
        lines.resize(std::min(lines.size(), std::max<std::size_t>(height, 2) - 1));
        const double middle = (cell.key.center().y - bounds_.y) * down_;
        const std::size_t top = rounded(middle - static_cast<double>(height) / 2);
        const std::size_t bar =
            top + std::min<std::size_t>(height - 1, view_.amount == KeyAmount::none ? 1 : 2);
        for (std::size_t x = columns.left; x < columns.left + columns.count; ++x)
            cells_.write(cell.off ? " " : mark(cell.step, terminal_), x, bar);
        for (std::size_t line = 0; line < lines.size(); ++line)
            cells_.write(lines[line], columns.left, top + line);
    }

    const HeatmapView& view_;
    const Terminal& terminal_;
    Scale scale_;
    Board::Rect bounds_;
    double down_;
    CellGrid cells_;
};

bool showsColours(const Terminal& terminal) {
    return terminal.colours && terminal.unicode && terminal.depth != ColourDepth::basic;
}

}  // namespace

std::string heatBoard(const HeatmapView& view, const Terminal& terminal) {
    const Board::Rect bounds = view.board.bounds();
    if (!isDrawable(bounds)) return "";
    const Scale scale = scaleFor(bounds, terminal);
    if (showsColours(terminal)) return ColouredBoard(view, scale).draw().text(terminal.depth);
    return PlainBoard(view, scale, terminal).draw().text(terminal.depth);
}

std::string heatLegend(const HeatmapView& view, const Terminal& terminal) {
    constexpr std::size_t swatch = 3;
    CellGrid cells(46, 1);
    cells.write("unused", 0, 0);
    cells.write("less", 14, 0);
    for (std::int64_t step = 0; step <= Heatmap::steps; ++step)
        for (std::size_t column = 0; column < swatch; ++column) {
            const std::size_t x = (step == 0 ? 7 : 15 + 4 * static_cast<std::size_t>(step)) + column;
            if (showsColours(terminal)) cells.at(x, 0)->ground = colourOf(step, view);
            else cells.write(mark(step, terminal), x, 0);
        }
    cells.write("more", 39, 0);
    return cells.text(terminal.depth);
}

}  // namespace tappora
