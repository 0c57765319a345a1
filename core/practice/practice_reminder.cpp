#include "core/practice/practice_reminder.h"

#include <algorithm>

#include "core/counting/day.h"

namespace tapcore::PracticeReminder {
namespace {

constexpr std::int64_t most = 10;
constexpr std::int64_t morning = 9 * 60;
constexpr std::int64_t evening = 18 * 60;

}  // namespace

std::vector<std::int64_t> minutes(std::int64_t count) {
    const std::int64_t times = std::clamp<std::int64_t>(count, 0, most);
    std::vector<std::int64_t> minutes;
    for (std::int64_t i = 0; i < times; ++i)
        minutes.push_back(times == 1 ? evening : morning + i * (evening - morning) / (times - 1));
    return minutes;
}

std::vector<Instant> plan(Instant now, std::int64_t count, bool todayDone, std::int64_t days,
                          const Calendar& calendar) {
    const Day today(now, calendar);
    std::vector<Instant> plan;
    for (std::int64_t i = todayDone ? 1 : 0; i < days; ++i) {
        const Day day = today.adding(i, calendar);
        for (const std::int64_t minute : minutes(count)) {
            const Instant moment = calendar.moment({.year = day.year,
                                                    .month = day.month,
                                                    .day = day.day,
                                                    .hour = minute / 60,
                                                    .minute = minute % 60});
            const bool isOfDay = Day(moment, calendar) == day;  // clocks may have skipped it
            if (isOfDay && moment > now) plan.push_back(moment);
        }
    }
    return plan;
}

}  // namespace tapcore::PracticeReminder
