#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/foundation/calendar.h"

namespace tapcore {

inline constexpr std::int64_t daysOfWeek = 7;

/// A calendar date, whose text is "2026-09-20".
struct Day {
    std::int64_t year = 0;
    std::int64_t month = 0;
    std::int64_t day = 0;

    Day() = default;
    Day(std::int64_t ofYear, std::int64_t ofMonth, std::int64_t ofDay)
        : year(ofYear), month(ofMonth), day(ofDay) {}
    /// The date of a moment; the calendar's zone decides.
    Day(Instant moment, const Calendar& calendar);

    /// Three integers of 4, 2 and 2 characters between "-", the month 1 to 12 and the day 1 to 31; else
    /// nothing. The day is not checked against the month: 31 February is read, and rolls over when it becomes
    /// a moment.
    static std::optional<Day> parse(std::string_view text);

    /// "2026-09-20": names day files.
    std::string description() const;
    /// "2026-09": names month rollups.
    std::string monthName() const;

    /// The day's start in the calendar.
    Instant date(const Calendar& calendar) const;
    /// The day so many calendar days later, or earlier when negative. Every calendar is the Gregorian one:
    /// its time zone does not matter, even where its clocks once skipped a day.
    Day adding(std::int64_t days, const Calendar& calendar) const;
    /// How many days later than `other` this one is; negative for an earlier one.
    std::int64_t daysSince(const Day& other) const;
    /// The day of the week, from 0 for Sunday.
    std::size_t weekday() const;

    auto operator<=>(const Day&) const = default;
};

}  // namespace tapcore
