#include "core/foundation/calendar.h"

#include <utility>

#include "core/foundation/civil_date.h"

namespace tapcore {
namespace {

using std::chrono::days;
using std::chrono::floor;
using std::chrono::hours;
using std::chrono::minutes;
using std::chrono::seconds;

/// The moment at which clocks in Greenwich show `time`.
Instant inGreenwich(const LocalTime& time) {
    return Instant(days(dayNumber({time.year, time.month, time.day}))) + hours(time.hour) +
           minutes(time.minute) + seconds(time.second);
}

}  // namespace

Calendar::Calendar(Offset offset) : offset_(std::move(offset)) {}

LocalTime Calendar::local(Instant moment) const {
    const auto shown = floor<seconds>(moment) + offset_(moment);
    const auto day = floor<days>(shown);
    const CivilDate date = civilDate(day.time_since_epoch().count());
    const std::chrono::hh_mm_ss time(shown - day);
    return {date.year,
            date.month,
            date.day,
            time.hours().count(),
            time.minutes().count(),
            time.seconds().count()};
}

Instant Calendar::moment(const LocalTime& time) const {
    // No clock is further from Greenwich than this, so what holds a day and more before and after is what
    // holds before and after a change that is near.
    constexpr hours farEnough{26};
    const Instant greenwich = inGreenwich(time);
    const seconds before = offset_(greenwich - farEnough);
    const seconds after = offset_(greenwich + farEnough);
    const Instant first = greenwich - before;
    const Instant second = greenwich - after;
    const bool isSecond = offset_(first) != before && offset_(second) == after;
    return isSecond ? second : first;
}

}  // namespace tapcore
