#include "app/recorder/counting_clock.h"

#include <chrono>

#include "core/foundation/fatal.h"

namespace tappora {

using std::chrono::floor;
using tapcore::Instant;

bool CountingClock::advance(Instant now) {
    if (minute_ && now >= minute_->begins && now < minuteEnds()) return false;
    const bool ended = minute_.has_value();
    if (ended) book(paused_ ? 1 : 0);
    minute_ = minuteOf(now);
    return ended;
}

void CountingClock::finish() {
    if (minute_) book(0);
    minute_.reset();
}

void CountingClock::setCalendar(tapcore::Calendar calendar) {
    calendar_ = std::move(calendar);
    if (minute_) minute_ = minuteOf(minute_->begins);
}

Instant CountingClock::minuteEnds() const {
    if (!minute_) tapcore::fatal("the clock was not told the time");
    return minute_->begins + std::chrono::minutes(1);
}

CountingClock::Minute CountingClock::minuteOf(Instant now) const {
    const tapcore::LocalTime local = calendar_.local(now);
    return {.begins = floor<std::chrono::seconds>(now) - std::chrono::seconds(local.second),
            .day = {local.year, local.month, local.day},
            .hour = local.hour};
}

void CountingClock::book(std::int64_t pausedMinutes) {
    counter_.closeMinute();
    book_.add(minute_->day, counter_.drain(minute_->hour), pausedMinutes);
}

}  // namespace tappora
