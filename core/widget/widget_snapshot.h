#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/counting/day.h"
#include "core/counting/tally.h"
#include "core/files/summary.h"
#include "core/keyboard/board.h"
#include "core/keyboard/heatmap.h"
#include "core/keyboard/map_color.h"

namespace tapcore {

/// Everything that the desktop widgets show: the one record that passes to them, as a file of JSON.
struct WidgetSnapshot {
    /// A bar of the week's chart.
    struct DayBar {
        std::string label;  ///< the weekday's abbreviated name in the snapshot's locale
        std::int64_t keystrokes = 0;
        bool today = false;

        bool operator==(const DayBar&) const = default;
    };

    /// A key of the heat board, which brings its own geometry: what the same-named fields of Board::Key mean.
    struct HeatKey {
        double x = 0;
        double y = 0;
        double w = 0;
        double h = 0;
        double r = 0;
        std::optional<double> rx = {};
        std::optional<double> ry = {};
        std::optional<Board::Rect> second = {};
        std::int64_t step = 0;  ///< 0 for a key without presses or left out

        bool operator==(const HeatKey&) const = default;
    };

    /// The folders in which the system keeps what programs share; each is absent where it has none.
    struct SharedFolders {
        /// The container of a group of programs.
        std::function<std::optional<std::filesystem::path>(const std::string& groupID)> container;
        std::optional<std::filesystem::path> applicationSupport;  ///< the user's own
    };

    std::string day;                         ///< whose counts these are: "2026-09-20"
    std::int64_t today = 0;                  ///< that day's keystrokes, the sum of byHour
    std::vector<std::int64_t> byHour;        ///< from midnight; 24 of them as built
    std::optional<std::int64_t> comparison;  ///< today against the usual, in per cent
    std::vector<DayBar> week;                ///< in the summary's order
    std::optional<std::string> boardName;    ///< maker, a blank, name
    std::optional<Board::Rect> bounds;       ///< of the whole board
    std::vector<HeatKey> heat;               ///< in the order of the heat map's cells
    std::string language;                    ///< code of the texts' language
    std::optional<MapColor> mapColor;        ///< the usual one when absent

    WidgetSnapshot() = default;
    /// Today's figures; `heatmap` and `board` may be null. `locale` gives the names of the weekdays, which
    /// are those of the dates in any zone's calendar. The colour is left to the caller. Fatal when the day's
    /// presses leave 64 bits.
    WidgetSnapshot(const Day& day, const Tally& today, std::optional<std::int64_t> comparison,
                   const Summary& week, const Heatmap* heatmap, const Board* board, std::string_view locale,
                   std::string language, const Calendar& calendar);

    static constexpr std::string_view fileName = "widget.json";
    /// More hours, days or keys than anything has: they would only take long to draw.
    static constexpr std::size_t longestList = 1000;

    /// Where the file is: in the group's container, else in the folder Tappora of the application support
    /// folder; nothing when there is neither.
    static std::optional<std::filesystem::path> url(const std::optional<std::string>& groupID,
                                                    const SharedFolders& folders);

    /// The record as one line of JSON, members sorted and absent ones left out; empty when it cannot be
    /// written so, a number not being finite or a text not UTF-8.
    std::string data() const;

    /// The record of such a text, or nothing. Members that it does not know are ignored. Nothing is checked
    /// but types and the length of lists: counts may be negative, numbers of any size.
    static std::optional<WidgetSnapshot> decode(std::string_view data);

    bool operator==(const WidgetSnapshot&) const = default;
};

}  // namespace tapcore
