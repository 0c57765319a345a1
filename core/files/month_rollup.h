#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "core/counting/day.h"
#include "core/counting/tally.h"
#include "core/files/day_file.h"
#include "core/files/file_format.h"

namespace tapcore {

/// A month's finished days of one machine, summed: for people, the assistant and other programs, which need
/// not open every day file. No figure of Tappora's own comes from it. It keeps a line for each day and the
/// month's keys and chords, and neither hours nor the mouse by hour.
struct MonthRollup {
    struct DayLine {
        Day day;
        std::int64_t keystrokes = 0;
        std::int64_t activeHours = 0;
        std::int64_t peakPerMinute = 0;
        std::int64_t clicks = 0;  ///< that day's, of all buttons

        bool operator==(const DayLine&) const = default;
    };

    std::vector<DayLine> days;  ///< one a day, ascending
    Tally::KeyCounts keys;
    Tally::ChordCounts chords;

    MonthRollup() = default;
    explicit MonthRollup(const std::map<Day, DayFile>& files);
    /// Reads a rollup's text, in either format or tab-separated, and never fails: rows that cannot be used
    /// are left out, and listed in `skipped` when it is given. Numbers are kept as they are read; a fifth
    /// cell that is missing or no number is 0 clicks. Repeated rows of keys and chords add up.
    explicit MonthRollup(std::string_view text, std::vector<SkippedRow>* skipped = nullptr);

    /// The file's text; `month` is "2026-09".
    std::string text(FileFormat format, std::string_view month) const;

    /// Two machines' rollups of one month as one: keystrokes, clicks, keys and chords add; of active hours
    /// and peaks, which may overlap, the larger is kept.
    MonthRollup merged(const MonthRollup& other) const;

    bool operator==(const MonthRollup&) const = default;
};

}  // namespace tapcore
