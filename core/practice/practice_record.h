#pragma once

#include <cstdint>
#include <optional>

#include "core/counting/day.h"
#include "core/foundation/calendar.h"
#include "core/practice/practice_history.h"

namespace tapcore {

/// The figures of recent practice and of the best. A week is the seven days up to and including today, so
/// that it is never cut short by a Monday.
struct PracticeRecord {
    std::int64_t bestWPM = 0;
    std::int64_t longestStreak = 0;          ///< most days in a row that reached the goal
    std::int64_t daysThisWeek = 0;           ///< days of this week with any practice
    std::optional<std::int64_t> weekChange;  ///< this week's speed less that of the week before
    std::optional<std::int64_t> weekWPM;     ///< over all timed presses; nothing when they are few

    PracticeRecord() = default;
    PracticeRecord(const PracticeHistory& history, const Day& today, std::int64_t goalSeconds,
                   const Calendar& calendar);

    /// How many days in a row reached the goal, up to today. A day that is not over breaks nothing: when
    /// today has not reached it yet, the days up to yesterday count.
    static std::int64_t streak(const PracticeHistory& history, const Day& today, std::int64_t goalSeconds,
                               const Calendar& calendar);

    bool operator==(const PracticeRecord&) const = default;
};

}  // namespace tapcore
