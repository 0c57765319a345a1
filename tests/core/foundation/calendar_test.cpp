#include "core/foundation/calendar.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "core/counting/day.h"

namespace tapcore {
namespace {

using std::chrono::hours;

TEST(Calendar, ZoneDecidesTheDayAndTheHour) {
    const Instant moment =
        Calendar("UTC").moment({.year = 2026, .month = 9, .day = 20, .hour = 22, .minute = 30});
    EXPECT_EQ(Day(moment, Calendar("Europe/Berlin")), Day(2026, 9, 21));
    EXPECT_EQ(Calendar("America/New_York").local(moment).hour, 18);
    EXPECT_THROW(Calendar("Europe/Nowhere"), std::invalid_argument);
    EXPECT_THROW(Calendar(""), std::invalid_argument);
}

TEST(Calendar, DaysAreAsLongAsTheZoneMakesThem) {
    const Calendar berlin("Europe/Berlin");
    const Day spring(2026, 3, 29);
    EXPECT_EQ(spring.adding(1, berlin).date(berlin) - spring.date(berlin), hours(23));
    const Day autumn(2026, 10, 25);
    EXPECT_EQ(autumn.adding(1, berlin).date(berlin) - autumn.date(berlin), hours(25));
    // Clocks in Santiago jump from midnight to one: the day starts at one.
    const Calendar santiago("America/Santiago");
    EXPECT_EQ(santiago.local(Day(2026, 9, 6).date(santiago)).hour, 1);
}

TEST(Calendar, OfATimeThatComesTwiceTheFirstIsMeant) {
    const Calendar berlin("Europe/Berlin");
    const Instant first = berlin.moment({.year = 2026, .month = 10, .day = 25, .hour = 2, .minute = 30});
    EXPECT_EQ(first, Calendar("UTC").moment({.year = 2026, .month = 10, .day = 25, .hour = 0, .minute = 30}));
}

TEST(Calendar, FindsTheMomentOfEachLocalTimeAroundAChange) {
    const Calendar utc("UTC");
    const struct {
        const char* zone;
        LocalTime time, shownInUTC;
    } cases[] = {
        {"Europe/Berlin", {2026, 3, 29, 1, 59, 59}, {2026, 3, 29, 0, 59, 59}},
        {"Europe/Berlin", {2026, 3, 29, 2, 30, 0}, {2026, 3, 29, 1, 30, 0}},  // skipped
        {"Europe/Berlin", {2026, 3, 29, 3, 0, 0}, {2026, 3, 29, 1, 0, 0}},
        {"Europe/Berlin", {2026, 10, 25, 2, 0, 0}, {2026, 10, 25, 0, 0, 0}},  // the first of two
        {"Europe/Berlin", {2026, 10, 25, 3, 0, 0}, {2026, 10, 25, 2, 0, 0}},
        {"Pacific/Apia", {2011, 12, 29, 23, 0, 0}, {2011, 12, 30, 9, 0, 0}},
        {"Pacific/Apia", {2011, 12, 30, 12, 0, 0}, {2011, 12, 30, 22, 0, 0}},  // skipped
        {"Pacific/Apia", {2011, 12, 31, 0, 0, 0}, {2011, 12, 30, 10, 0, 0}},
        {"Asia/Kathmandu", {2026, 9, 20, 5, 45, 0}, {2026, 9, 20, 0, 0, 0}},
        {"UTC", {2026, 2, 31, 25, 61, 61}, {2026, 3, 4, 2, 2, 1}},
    };
    for (const auto& [zone, time, shownInUTC] : cases)
        EXPECT_EQ(utc.local(Calendar(zone).moment(time)), shownInUTC)
            << zone << ' ' << time.day << ' ' << time.hour;
}

TEST(Day, MovesByCalendarDaysAndRollsOver) {
    const Calendar utc("UTC");
    EXPECT_EQ(Day(2026, 3, 1).adding(-1, utc), Day(2026, 2, 28));
    EXPECT_EQ(Day(2023, 12, 31).adding(60, utc), Day(2024, 2, 29));
    EXPECT_EQ(Day(Day(2026, 2, 31).date(utc), utc), Day(2026, 3, 3));
}

TEST(Day, CountsTheCalendarsDaysWhateverAZoneOnceSkipped) {
    const Calendar apia("Pacific/Apia");  // had no 30 December 2011
    const Day saturday(2011, 12, 31);
    EXPECT_EQ(saturday.adding(-1, apia), Day(2011, 12, 30));
    EXPECT_EQ(Day(2011, 12, 29).adding(2, apia), saturday);
    EXPECT_EQ(saturday.daysSince({2011, 12, 28}), 3);
    EXPECT_EQ(Day(2011, 12, 30).weekday(), 5);
    EXPECT_EQ(Day(Day(2011, 12, 30).date(apia), apia), saturday);
}

TEST(Day, NumbersEachDateOnceOverFourHundredYearsAndBeforeOurEra) {
    const Calendar utc("UTC");
    for (const Day from : {Day(-1, 12, 28), Day(1599, 12, 31), Day(9999, 1, 1)}) {
        Day expected = from;
        for (std::int64_t days = 0; days <= 146'100; ++days) {
            ASSERT_EQ(from.adding(days, utc), expected);
            ASSERT_EQ(expected.daysSince(from), days);
            const bool isLeap =
                expected.year % 4 == 0 && (expected.year % 100 != 0 || expected.year % 400 == 0);
            const std::int64_t lengths[] = {31, isLeap ? 29 : 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
            if (++expected.day > lengths[expected.month - 1])
                expected = {expected.year, expected.month + 1, 1};
            if (expected.month > 12) expected = {expected.year + 1, 1, 1};
        }
    }
}

TEST(Day, ReadsItsKeyAndNothingElse) {
    const struct {
        std::string_view text;
        std::optional<Day> day;
    } cases[] = {{"2026-09-05", Day(2026, 9, 5)},
                 {"2026-02-31", Day(2026, 2, 31)},
                 {"-2026--09-05-", Day(2026, 9, 5)},
                 {"2026-9-20", {}},
                 {"2026-13-01", {}},
                 {"2026-02-00", {}},
                 {"2026-02-32", {}},
                 {"2026-09", {}},
                 {"2026-09-05-01", {}},
                 {"2026-09-0x", {}},
                 {"٢٠٢٦-09-05", {}},
                 {"", {}}};
    for (const auto& [text, day] : cases) EXPECT_EQ(Day::parse(text), day) << text;
    EXPECT_EQ(Day(2026, 9, 5).description(), "2026-09-05");
    EXPECT_EQ(Day(2026, 9, 5).monthName(), "2026-09");
}

}  // namespace
}  // namespace tapcore
