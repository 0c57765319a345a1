#include "core/practice/practice_record.h"

#include <algorithm>

#include "core/practice/practice_rules.h"

namespace tapcore {
namespace {

constexpr std::int64_t fewestTimed = 60;  // presses that a week's speed is taken from

/// The speed over the days from one up to another, without that one.
std::optional<std::int64_t> speed(const PracticeHistory& history, const Day& from, const Day& to) {
    PracticeHistory some;
    some.days.insert(history.days.lower_bound(from), history.days.lower_bound(to));
    const LetterStats all = sumOf(some.totals(std::nullopt));
    if (all.timed < fewestTimed) return std::nullopt;
    return PracticeRules::wpm(all);
}

std::int64_t longestStreak(const PracticeHistory& history, std::int64_t goalSeconds,
                           const Calendar& calendar) {
    std::int64_t longest = 0;
    std::int64_t running = 0;
    Day next;
    for (const auto& [day, practised] : history.days) {
        if (!history.reached(day, goalSeconds)) continue;
        running = running > 0 && day == next ? running + 1 : 1;
        next = day.adding(1, calendar);
        longest = std::max(longest, running);
    }
    return longest;
}

}  // namespace

PracticeRecord::PracticeRecord(const PracticeHistory& history, const Day& today, std::int64_t goalSeconds,
                               const Calendar& calendar) {
    const PracticeHistory past{{history.days.begin(), history.days.upper_bound(today)}};
    const Day weekStart = today.adding(1 - daysOfWeek, calendar);
    bestWPM = past.best(std::nullopt);
    longestStreak = tapcore::longestStreak(past, goalSeconds, calendar);
    for (auto day = past.days.lower_bound(weekStart); day != past.days.end(); ++day)
        if (past.reached(day->first, 0)) ++daysThisWeek;
    weekWPM = speed(past, weekStart, today.adding(1, calendar));
    const auto before = speed(past, weekStart.adding(-daysOfWeek, calendar), weekStart);
    if (weekWPM && before) weekChange = *weekWPM - *before;
}

std::int64_t PracticeRecord::streak(const PracticeHistory& history, const Day& today,
                                    std::int64_t goalSeconds, const Calendar& calendar) {
    Day day = history.reached(today, goalSeconds) ? today : today.adding(-1, calendar);
    std::int64_t days = 0;
    for (; history.reached(day, goalSeconds); day = day.adding(-1, calendar)) ++days;
    return days;
}

}  // namespace tapcore
