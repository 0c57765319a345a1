#pragma once

#include <cstdint>
#include <optional>
#include <utility>

#include "app/recorder/day_book.h"
#include "core/counting/counter.h"
#include "core/counting/day.h"
#include "core/foundation/calendar.h"

namespace tappora {

/// Books what a counter counts into the day and hour it was counted in, minute by minute of the clock on the
/// wall.
///
/// It is told the time before each event; whatever the time does (minutes without an event, a sleeping
/// machine, a clock set forward or back, a change of summer time), what was counted up to then belongs to the
/// minute that had begun.
class CountingClock {
  public:
    CountingClock(tapcore::Calendar calendar, tapcore::Counter& counter, DayBook& book)
        : calendar_(std::move(calendar)), counter_(counter), book_(book) {}

    /// Goes to a moment. True when that ended a minute, so that there may be something to store.
    bool advance(tapcore::Instant now);

    /// Ends the current minute before its time.
    void finish();

    /// From the current minute on, days and hours are those of another time zone.
    void setCalendar(tapcore::Calendar calendar);

    /// A minute that ends while paused is a paused one. Nothing may be counted while paused.
    void setPaused(bool paused) { paused_ = paused; }

    /// Whether a minute has begun.
    bool hasBegun() const { return minute_.has_value(); }
    /// When the current minute ends; there must be one.
    tapcore::Instant minuteEnds() const;

  private:
    struct Minute {
        tapcore::Instant begins;
        tapcore::Day day;
        std::int64_t hour = 0;
    };

    Minute minuteOf(tapcore::Instant now) const;
    void book(std::int64_t pausedMinutes);

    tapcore::Calendar calendar_;
    tapcore::Counter& counter_;
    DayBook& book_;
    std::optional<Minute> minute_;
    bool paused_ = false;
};

}  // namespace tappora
