#include "app/recorder/counting_clock.h"

#include <gtest/gtest.h>

#include <map>
#include <stdexcept>
#include <string>

#include "app/common/system/moment.h"

namespace tappora {
namespace {

using tapcore::Calendar;
using tapcore::Day;

/// A clock in Berlin, whose counter is pressed at given times.
struct Berlin {
    Calendar calendar{"Europe/Berlin"};
    tapcore::Counter counter;
    DayBook book;
    CountingClock clock{calendar, counter, book};

    bool goTo(const std::string& time) { return clock.advance(momentOf(time, calendar).value()); }
    void press(const std::string& time) {
        goTo(time);
        counter.press(0, {});
    }
    /// "DAY HOUR" by what was pressed in it.
    std::map<std::string, std::int64_t> hours() const {
        std::map<std::string, std::int64_t> found;
        for (const auto& [day, counts] : book.days())
            for (std::size_t hour = 0; hour < 24; ++hour)
                if (const auto presses = counts.tally.byHour()[hour])
                    found[day.description() + " " + std::to_string(hour)] = presses;
        return found;
    }
};

TEST(CountingClock, BooksEachPressIntoTheHourAndDayItWasMade) {
    Berlin berlin;
    for (const char* time :
         {"2026-09-20T10:59:59", "2026-09-20T11:00:00", "2026-09-20T23:59:59", "2026-09-21T00:00:00",
          "2026-09-24T07:00:00",   // slept for days
          "2026-09-20T10:30:00"})  // the clock set back
        berlin.press(time);
    berlin.clock.finish();
    EXPECT_EQ(berlin.hours(), (std::map<std::string, std::int64_t>{{"2026-09-20 10", 2},
                                                                   {"2026-09-20 11", 1},
                                                                   {"2026-09-20 23", 1},
                                                                   {"2026-09-21 0", 1},
                                                                   {"2026-09-24 7", 1}}));
}

TEST(CountingClock, CountsTheHourThatComesTwiceAsOne) {
    Berlin berlin;
    berlin.press("2026-10-25T02:30:00");
    berlin.clock.advance(momentOf("2026-10-25T02:30:00", berlin.calendar).value() + std::chrono::hours(1));
    berlin.counter.press(0, {});
    berlin.press("2026-10-25T03:00:00");
    berlin.clock.finish();
    EXPECT_EQ(berlin.hours(),
              (std::map<std::string, std::int64_t>{{"2026-10-25 2", 2}, {"2026-10-25 3", 1}}));
}

TEST(CountingClock, KeepsTheBusiestMinuteOfEachDay) {
    Berlin berlin;
    for (const char* time :
         {"2026-09-20T10:00:00", "2026-09-20T10:00:59", "2026-09-20T10:01:00", "2026-09-20T23:59:58",
          "2026-09-20T23:59:59", "2026-09-20T23:59:59", "2026-09-21T00:00:00"})
        berlin.press(time);
    berlin.clock.finish();
    EXPECT_EQ(berlin.book.days().at(Day(2026, 9, 20)).peakPerMinute, 3);
    EXPECT_EQ(berlin.book.days().at(Day(2026, 9, 21)).peakPerMinute, 1);
}

TEST(CountingClock, BooksThePausedMinutesOfEachDay) {
    Berlin berlin;
    berlin.press("2026-09-20T23:56:30");
    berlin.clock.setPaused(true);
    for (const char* time : {"2026-09-20T23:57:00", "2026-09-20T23:58:00", "2026-09-20T23:59:00",
                             "2026-09-21T00:00:00", "2026-09-21T00:01:00"})
        EXPECT_TRUE(berlin.goTo(time));
    EXPECT_FALSE(berlin.goTo("2026-09-21T00:01:30"));
    berlin.clock.setPaused(false);
    berlin.goTo("2026-09-21T00:02:00");
    berlin.clock.finish();
    EXPECT_EQ(berlin.book.days().at(Day(2026, 9, 20)).pausedMinutes, 4);
    EXPECT_EQ(berlin.book.days().at(Day(2026, 9, 21)).pausedMinutes, 1);
    EXPECT_EQ(berlin.book.days().at(Day(2026, 9, 20)).tally.total(), 1);
}

TEST(DayBook, KeepsWhatCouldNotBeStoredAndStoresTheRest) {
    DayBook book;
    tapcore::Counter counter;
    for (const std::int64_t day : {20, 21, 22}) {
        counter.press(0, {});
        book.add(Day(2026, 9, day), counter.drain(9), 0);
    }
    std::string stored;
    const auto write = [&](bool failing) {
        return [&stored, failing](const Day& day, const DayCounts&) {
            if (failing && day.day < 22) throw std::runtime_error("no space for " + day.description());
            stored += day.description() + " ";
        };
    };
    try {
        book.store(write(true));
        FAIL() << "no error";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "no space for 2026-09-20");
    }
    EXPECT_EQ(stored, "2026-09-22 ");
    book.store(write(false));
    EXPECT_EQ(stored, "2026-09-22 2026-09-20 2026-09-21 ");
    EXPECT_TRUE(book.days().empty());
}

TEST(LocalTime, IsATimeThatClocksShow) {
    const Calendar berlin("Europe/Berlin");
    EXPECT_EQ(momentOf("2026-09-20T09:00:00", berlin)->time_since_epoch(), std::chrono::seconds(1789887600));
    for (const char* none : {"", "2026-09-20", "2026-09-20 09:00:00", "2026-09-20T09:00",
                             "2026-09-20T24:00:00", "2026-09-20T09:60:00", "2026-09-20T-1:00:00",
                             "2026-02-31T09:00:00", "2026-03-29T02:30:00", "2026-09-20T09:00:00Z"})
        EXPECT_EQ(momentOf(none, berlin), std::nullopt) << none;
}

}  // namespace
}  // namespace tappora
