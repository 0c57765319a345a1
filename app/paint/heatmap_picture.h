#pragma once

#include "app/common/keyboard/heatmap_view.h"
#include "drawing/node.h"

namespace tappora {

/// A heat map as a picture for either theme: its board, every key with what it prints and an element for
/// assistive tools, the steps of its colour, the period and the total.
drawing::Picture heatmapPicture(const HeatmapView& view);

/// The keys of a view alone, from their 0, and how large they are together.
struct KeysDrawing {
    drawing::Node node;
    drawing::Size size;
};
KeysDrawing keysDrawing(const HeatmapView& view);

}  // namespace tappora
