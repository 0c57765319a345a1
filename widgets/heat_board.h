#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/keyboard/board.h"
#include "core/keyboard/map_color.h"
#include "core/widget/widget_snapshot.h"
#include "drawing/node.h"
#include "drawing/tile.h"

namespace tapwidgets {

/// The keys of a board, coloured by use.
struct HeatBoard {
    std::vector<tapcore::WidgetSnapshot::HeatKey> keys;
    tapcore::Board::Rect bounds;  ///< the whole board, in key units
    std::string label;            ///< of the whole, for assistive tools
    tapcore::MapColor color;

    /// The board as large as the room, in points, allows, in its middle: one element for assistive tools. The
    /// bounds must have an extent.
    drawing::Node drawing(const drawing::Rect& room) const;
};

/// A rectangle of a board as one of a drawing, still in key units.
drawing::Rect rectOf(const tapcore::Board::Rect& rect);

/// A key as a tile: its rectangle, a second one joined to it where there is one, and how it is turned.
drawing::Tile tileOf(const tapcore::Board::Rect& rect, const std::optional<tapcore::Board::Rect>& second,
                     double degrees, std::optional<double> aboutX, std::optional<double> aboutY);

/// What a key of that step is filled with: the ramp's colour, or the faintest foreground below 1. In accented
/// and vibrant rendering the steps differ by their opacity.
drawing::Style heatStyle(std::int64_t step, tapcore::MapColor color);

}  // namespace tapwidgets
