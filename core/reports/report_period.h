#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/counting/day.h"
#include "core/foundation/raw_values.h"

namespace tapcore {

/// Some days in a row that a report is about.
struct ReportPeriod {
    enum class Kind { day, week, month, year, span };
    static constexpr RawValues<Kind, 5> kinds{{"day", "week", "month", "year", "span"}};

    Kind kind = Kind::day;
    Day first;
    Day last;

    /// The day, week, month or year that a day is in. Weeks are those of ISO 8601: from Monday to Sunday.
    /// `kind` is not `span`.
    static ReportPeriod containing(Kind kind, const Day& day);
    /// Any days in a row; `first` is not after `last`.
    static ReportPeriod span(const Day& first, const Day& last) { return {Kind::span, first, last}; }

    /// What names its file and sorts by time: "2026-09-20", "2026-W38", "2026-09", "2026" or
    /// "2026-09-01_2026-09-14". The year of a week is the one that most of its days are in.
    std::string name() const;
    /// Of a week, its number in the year that most of its days are in.
    std::int64_t weekNumber() const;
    /// How many days it has, first and last included.
    std::int64_t days() const { return last.daysSince(first) + 1; }
    bool contains(const Day& day) const { return first <= day && day <= last; }
    /// Whether the two have a day in common.
    bool meets(const ReportPeriod& other) const { return first <= other.last && other.first <= last; }

    /// The one of the same kind, or of the same length, that ends on the day before.
    ReportPeriod previous() const;
    /// The period of a year ago: the same dates, or the week with the same number; 29 February becomes 28
    /// February, and week 53 becomes 52 in a year that has none.
    ReportPeriod yearBefore() const;

    bool operator==(const ReportPeriod&) const = default;
};

/// Days in a row of which the last may count in part: what is over of a period, or as much of another one.
struct Stretch {
    Day first;
    Day last;
    std::int64_t hoursOfLast = 24;  ///< of the last day, its first so many hours count

    /// The stretch that starts so many days earlier, or later when negative.
    Stretch earlier(std::int64_t days) const;
    std::int64_t days() const { return last.daysSince(first) + 1; }

    bool operator==(const Stretch&) const = default;
};

/// What is over of a period when the clocks show `hoursPassed` whole hours of `today`; nothing when none of
/// it is.
std::optional<Stretch> passedOf(const ReportPeriod& period, const Day& today, std::int64_t hoursPassed);

/// As much of a period as `stretch` is of the period `of`: its first so many days, or all of it when the
/// stretch is all of `of`, however long the two are.
Stretch sameStretch(const ReportPeriod& period, const ReportPeriod& of, const Stretch& stretch);

/// The day so many days later, or earlier when negative.
Day daysLater(const Day& day, std::int64_t days);

}  // namespace tapcore
