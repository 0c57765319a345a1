#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>

#include "core/counting/day.h"
#include "core/files/day_file.h"
#include "core/files/summary.h"
#include "core/reports/report_period.h"

namespace tapcore {

/// The days that have a file, all machines added. A day that is not among them is a gap: nobody counted.
using TypingDays = std::map<Day, DayFile>;

/// What days of a stretch add up to.
struct StretchFigures {
    /// By weekday from 0 for Sunday, by hour.
    using WeekdayHours = std::array<Tally::Hourly<std::int64_t>, 7>;

    Summary summary;  ///< `byDay` names only days that have a file
    WeekdayHours byWeekdayAndHour{};
    std::array<std::int64_t, 7> countedDays{};  ///< how many days of each weekday have a file
    std::int64_t typingDays = 0;                ///< days with a press
    std::int64_t spannedHours = 0;  ///< of those days, the hours from the first with a press to the last

    /// Hours from the first press of a day to its last, on average; 0 without typing.
    double dayLength() const;
    /// When half of all presses are made, in hours from 0 to 24 counted from 4 in the morning, where days of
    /// typing are taken to begin; nothing without typing.
    std::optional<double> middleOfTyping() const;
    /// The hour of the day with the most presses, the first of several; nothing without typing.
    std::optional<std::int64_t> busiestHour() const;
    std::int64_t weekendKeystrokes() const;
};

/// Adds up the days of a stretch that are in `days`.
StretchFigures figuresOf(const TypingDays& days, const Stretch& stretch);

}  // namespace tapcore
