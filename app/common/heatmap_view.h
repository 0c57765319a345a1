#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "app/common/data_folder.h"
#include "app/common/keyboard.h"
#include "app/common/period.h"
#include "core/keyboard/heatmap.h"
#include "core/keyboard/map_color.h"

namespace tappora {

/// What `tappora heatmap` is asked for.
struct HeatmapOptions {
    FolderOptions folder;
    PeriodOptions dates;
    KeyboardOptions keyboard;
    std::optional<std::string> color;
    bool dark = false;
    std::vector<std::string> leaveOut;
    bool counts = false;
    bool percent = false;
    bool names = true;
    std::optional<std::string> output;
    bool json = false;
};

void addHeatmapOptions(CLI::App& command, HeatmapOptions& options);

/// The amount written on each key.
enum class KeyAmount { none, count, percent };

/// A heat map, and how it is to be shown.
struct HeatmapView {
    static constexpr std::int64_t usualDays = 30;

    Period period;
    tapcore::Board board;
    LegendSet layout;
    tapcore::Heatmap heatmap;
    std::int64_t total = 0;  ///< the heat map's
    tapcore::MapColor color;
    bool dark = false;
    KeyAmount amount = KeyAmount::none;
    bool names = true;  ///< whether keys show names and signs too, not only letters and numbers
    std::vector<std::string> leftOut;  ///< the names of the keys left out

    /// The lines on a key's cap.
    std::vector<std::string> face(const tapcore::Heatmap::Cell& cell) const;
    /// The amount on a key: "" for none, for a key left out and for one never pressed.
    std::string amountText(const tapcore::Heatmap::Cell& cell) const;
};

/// The colour that --color names, else the settings ("appearance.mapColor"), else the usual one. UsageError
/// for one that is none.
tapcore::MapColor chosenColor(const std::optional<std::string>& option, const Environment& environment);

/// Reads the period's counts and lays them over the board. Problems with files are complained of.
HeatmapView heatmapView(const HeatmapOptions& options, const Environment& environment);

/// The board's maker and name.
std::string title(const tapcore::Board& board);
/// The period, the layout and the total, parted by dots or, in ASCII, by commas.
std::string subtitle(const HeatmapView& view, bool unicode = true);
/// What the map leaves out: keys, and presses that have no place on the board.
std::vector<std::string> notes(const HeatmapView& view);

/// "1,234 presses", "1 press".
std::string pressesText(std::int64_t count);

/// "4.2 %", of a total; "0 %" when there is none.
std::string percentText(std::int64_t count, std::int64_t total);

}  // namespace tappora
