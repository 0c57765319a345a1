#pragma once

#include <string>

#include "app/common/keyboard/heatmap_view.h"
#include "app/common/terminal/terminal.h"

namespace tappora {

/// A heat map's board drawn in characters, as large as the terminal's width allows: where colours and half
/// blocks can be shown, keys in the colours of their steps, turned as they are; elsewhere each key upright,
/// with a bar below its face that says the step. "" for a board that is too large for it.
std::string heatBoard(const HeatmapView& view, const Terminal& terminal);

/// What the steps look like there, in one line.
std::string heatLegend(const HeatmapView& view, const Terminal& terminal);

}  // namespace tappora
