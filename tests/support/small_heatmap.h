#pragma once

#include "app/common/keyboard/heatmap_view.h"

namespace tappora {

/// Three keys in a row, with their presses: A, which was pressed often, S, which never was, and Tab, which is
/// left out.
inline HeatmapView smallHeatmap(bool dark) {
    const auto key = [](std::string id, tapcore::KeyCode code, double x) {
        return tapcore::Board::Key{.id = std::move(id), .keyCode = code, .x = x};
    };
    tapcore::Board board{
        .id = "small", .name = "Small", .keys = {key("a", 0, 0), key("s", 1, 1), key("tab", 48, 2)}};
    BoardCounts on{.period = {.first = {2026, 9, 20}, .last = {2026, 9, 20}, .days = 1},
                   .board = std::move(board),
                   .layout = {"x", "X", {{0, {"a", "A"}}, {1, {"s", "S"}}, {48, {"tab"}}}},
                   .counts = {{0, 1'234'567'890}, {48, 5}},
                   .leftOutCodes = {48},
                   .config = {},
                   .color = tapcore::MapColor::rust,
                   .dark = dark};
    tapcore::Heatmap heatmap(on.board, on.layout.legends, on.counts, on.leftOutCodes);
    return {std::move(on), std::move(heatmap), 1'234'567'890, KeyAmount::count, true};
}

}  // namespace tappora
