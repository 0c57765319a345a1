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

TEST(Day, MovesByCalendarDaysAndRollsOver) {
    const Calendar utc("UTC");
    EXPECT_EQ(Day(2026, 3, 1).adding(-1, utc), Day(2026, 2, 28));
    EXPECT_EQ(Day(2023, 12, 31).adding(60, utc), Day(2024, 2, 29));
    EXPECT_EQ(Day(Day(2026, 2, 31).date(utc), utc), Day(2026, 3, 3));
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
