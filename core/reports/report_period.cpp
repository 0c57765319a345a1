#include "core/reports/report_period.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "core/foundation/civil_date.h"

namespace tapcore {
namespace {

std::int64_t numberOf(const Day& day) { return dayNumber({day.year, day.month, day.day}); }

Day dayOf(std::int64_t number) {
    const CivilDate date = civilDate(number);
    return {date.year, date.month, date.day};
}

Day lastOfMonth(std::int64_t year, std::int64_t month) { return dayOf(dayNumber({year, month + 1, 0})); }

/// The Monday of a day's week.
Day mondayOf(const Day& day) {
    const std::size_t weekday = day.weekday();  // from 0 for Sunday
    return daysLater(day, -static_cast<std::int64_t>((weekday + 6) % 7));
}

/// A week of ISO 8601: the year of its Thursday, and its number in it.
struct IsoWeek {
    std::int64_t year = 0;
    std::int64_t number = 0;
};

IsoWeek isoWeek(const Day& monday) {
    const Day thursday = daysLater(monday, 3);
    return {thursday.year, thursday.daysSince({thursday.year, 1, 1}) / 7 + 1};
}

/// The Monday of a week by its number; past the year's last week, the last one.
Day mondayOf(const IsoWeek& week) {
    const Day first = mondayOf(Day(week.year, 1, 4));  // 4 January is always in week 1
    const Day monday = daysLater(first, (week.number - 1) * 7);
    return isoWeek(monday).year == week.year ? monday : daysLater(monday, -7);
}

/// The same date a year earlier.
Day yearEarlier(const Day& day) {
    const Day lastThen = lastOfMonth(day.year - 1, day.month);
    return {day.year - 1, day.month, std::min(day.day, lastThen.day)};
}

std::string padded(std::int64_t value, int width) {
    std::array<char, 24> text{};
    std::snprintf(text.data(), text.size(), "%0*lld", width, static_cast<long long>(value));
    return text.data();
}

}  // namespace

Day daysLater(const Day& day, std::int64_t days) { return dayOf(numberOf(day) + days); }

ReportPeriod ReportPeriod::containing(Kind kind, const Day& day) {
    switch (kind) {
        case Kind::week:
            return {kind, mondayOf(day), daysLater(mondayOf(day), 6)};
        case Kind::month:
            return {kind, {day.year, day.month, 1}, lastOfMonth(day.year, day.month)};
        case Kind::year:
            return {kind, {day.year, 1, 1}, {day.year, 12, 31}};
        default:
            return {Kind::day, day, day};
    }
}

std::int64_t ReportPeriod::weekNumber() const { return isoWeek(mondayOf(first)).number; }

std::string ReportPeriod::name() const {
    switch (kind) {
        case Kind::week: {
            const IsoWeek week = isoWeek(first);
            return padded(week.year, 4) + "-W" + padded(week.number, 2);
        }
        case Kind::month:
            return first.monthName();
        case Kind::year:
            return padded(first.year, 4);
        case Kind::span:
            return first.description() + "_" + last.description();
        default:
            return first.description();
    }
}

ReportPeriod ReportPeriod::previous() const {
    const Day before = daysLater(first, -1);
    if (kind == Kind::span) return span(daysLater(before, 1 - days()), before);
    return containing(kind, before);
}

ReportPeriod ReportPeriod::yearBefore() const {
    if (kind == Kind::span) return span(yearEarlier(first), yearEarlier(last));
    if (kind != Kind::week) return containing(kind, yearEarlier(first));
    const IsoWeek week = isoWeek(first);
    return containing(kind, mondayOf(IsoWeek{week.year - 1, week.number}));
}

Stretch Stretch::earlier(std::int64_t days) const {
    return {daysLater(first, -days), daysLater(last, -days), hoursOfLast};
}

std::optional<Stretch> passedOf(const ReportPeriod& period, const Day& today, std::int64_t hoursPassed) {
    if (today > period.last) return Stretch{period.first, period.last};
    const bool countsToday = hoursPassed > 0;
    const Day last = countsToday ? today : daysLater(today, -1);
    if (last < period.first) return std::nullopt;
    return Stretch{period.first, last, countsToday ? hoursPassed : 24};
}

Stretch sameStretch(const ReportPeriod& period, const ReportPeriod& of, const Stretch& stretch) {
    if (stretch == Stretch{of.first, of.last}) return {period.first, period.last};
    const Day last = daysLater(period.first, stretch.days() - 1);
    if (last > period.last) return {period.first, period.last};
    return {period.first, last, stretch.hoursOfLast};
}

}  // namespace tapcore
