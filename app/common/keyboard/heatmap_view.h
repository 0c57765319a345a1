#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "app/common/keyboard/board_counts.h"
#include "core/keyboard/heatmap.h"

namespace tappora {

/// What `tappora heatmap` is asked for.
struct HeatmapOptions : BoardCountsOptions {
    bool counts = false;
    bool percent = false;
    std::optional<bool> names;  ///< nothing: as the data folder says
};

void addHeatmapOptions(CommandSyntax& command, HeatmapOptions& options);

/// The amount written on each key.
enum class KeyAmount { none, count, percent };

/// A heat map, and how it is to be shown.
struct HeatmapView : BoardCounts {
    tapcore::Heatmap heatmap;
    std::int64_t total = 0;  ///< the heat map's
    KeyAmount amount = KeyAmount::none;
    bool names = false;  ///< whether keys show names and signs too, not only letters and numbers

    /// The lines on a key's cap.
    std::vector<std::string> face(const tapcore::Heatmap::Cell& cell) const;
    /// The amount on a key: "" for none, for a key left out and for one never pressed.
    std::string amountText(const tapcore::Heatmap::Cell& cell) const;
};

/// Reads the period's counts and lays them over the board. Problems with files are complained of.
HeatmapView heatmapView(const HeatmapOptions& options, const Environment& environment);

/// What the map leaves out: keys, and presses that have no place on the board.
std::vector<std::string> notes(const HeatmapView& view);

}  // namespace tappora
