#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "core/counting/day.h"
#include "core/counting/tally.h"
#include "core/files/day_file.h"

namespace tapcore {

/// A period of days added up: what reports, widgets and the assistant take their figures from.
struct Summary {
    struct DayTotal {
        Day day;
        std::int64_t keystrokes = 0;

        bool operator==(const DayTotal&) const = default;
    };

    std::int64_t keystrokes = 0;
    std::int64_t activeHours = 0;    ///< hours with a press, summed over the days
    std::int64_t peakPerMinute = 0;  ///< the busiest minute of any day
    Tally::Hourly<std::int64_t> byHour{};
    std::vector<DayTotal> byDay;  ///< one for each day added, in that order
    Tally::KeyCounts byKey;
    Tally::ChordCounts byChord;
    Tally::Hourly<Tally::MouseHour> mouse;

    /// Adds one day. The same day twice counts twice and gives two entries: who wants one merges the files
    /// first.
    void add(const Day& day, const DayFile& file);

    /// Whether nothing was pressed, clicked, scrolled or moved.
    bool isEmpty() const { return keystrokes == 0 && byChord.empty() && mouseTotal().isEmpty(); }
    /// Keystrokes per active hour, truncated; 0 when no hour is active.
    std::int64_t averagePerActiveHour() const;
    /// Clicks of all buttons.
    std::int64_t clicks() const;
    Tally::Hourly<std::int64_t> clicksByHour() const;
    Tally::MouseHour mouseTotal() const;
    double movedMetres() const;
    /// What part of all presses and clicks the keystrokes are, in whole per cent, rounded half away from
    /// zero; nothing when there are neither.
    std::optional<std::int64_t> keyboardShare() const;

    /// This summary with key codes reported as remapped; counts that meet under one code add up. Unchanged
    /// without a map.
    Summary remapped(const std::optional<KeyRemap>& remap) const;

    bool operator==(const Summary&) const = default;
};

}  // namespace tapcore
