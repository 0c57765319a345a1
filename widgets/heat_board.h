#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/keyboard/board.h"
#include "core/keyboard/map_color.h"
#include "core/widget/widget_snapshot.h"
#include "drawing/node.h"

namespace tapwidgets {

/// The keys of a board, coloured by use.
struct HeatBoard {
    std::vector<tapcore::WidgetSnapshot::HeatKey> keys;
    tapcore::Board::Rect bounds;  ///< the whole board, in key units
    std::string label;            ///< of the whole, for assistive tools
    tapcore::MapColor color;

    /// The board as large as the room allows, in its middle: one element for assistive tools.
    drawing::Node drawing(const drawing::Rect& room) const;
};

/// What a key of that step is filled with: the ramp's colour, or the faintest foreground below 1. In accented
/// and vibrant rendering the steps differ by their opacity.
drawing::Style heatStyle(std::int64_t step, tapcore::MapColor color);

}  // namespace tapwidgets
