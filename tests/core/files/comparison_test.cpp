#include "core/files/comparison.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>

namespace tapcore {
namespace {

/// A day's presses by hour, from those hours that have any.
Comparison::ByHour hours(const std::map<std::size_t, std::int64_t>& presses) {
    Comparison::ByHour byHour{};
    for (const auto& [hour, count] : presses) byHour[hour] = count;
    return byHour;
}

TEST(Comparison, IsTheDifferenceFromTheMeanOfTheSameHoursInWholePerCent) {
    const auto usual = std::vector{hours({{8, 100}, {20, 900}}), hours({{8, 50}}), hours({{9, 30}, {23, 1}})};
    struct Case {
        const char* what;
        std::map<std::size_t, std::int64_t> today;
        double hours;
        std::optional<std::int64_t> percent;
    };
    const Case cases[] = {
        {"up to the hour: 60 against 180 / 3", {{8, 60}}, 10, 0},
        {"of the hour under way its part: 60 against 150 / 3 + 10 / 2", {{8, 60}}, 9.5, 9},
        {"what is typed in it counts whole: 55 against the same", {{8, 50}, {9, 5}}, 9.5, 0},
        {"hours to come do not count on either side", {{8, 60}, {11, 999}}, 10, 0},
        {"more than usual", {{0, 75}}, 10, 25},
        {"less than usual", {{0, 45}}, 10, -25},
        {"nothing yet", {}, 10, -100},
        {"days without a press in these hours count among the usual ones: 50 against 150 / 3",
         {{8, 50}},
         9,
         0},
        {"nobody types by then", {{0, 10}}, 8, std::nullopt},
        {"a day that is over: 1081 against 1081 / 3", {{8, 81}, {23, 1000}}, 24, 200},
        {"a figure past 64 bits", {{8, std::numeric_limits<std::int64_t>::max()}}, 10, std::nullopt},
    };
    for (const Case& each : cases)
        EXPECT_EQ(Comparison::percent(hours(each.today), usual, each.hours), each.percent) << each.what;
}

TEST(Comparison, RoundsAHalfAwayFromZero) {
    const std::vector usual(3, hours({{8, 200}}));
    EXPECT_EQ(Comparison::percent(hours({{8, 201}}), usual, 24), 1);
    EXPECT_EQ(Comparison::percent(hours({{8, 199}}), usual, 24), -1);
}

TEST(Comparison, NeedsThreeDaysWithTyping) {
    const auto typed = hours({{8, 10}});
    const auto untouched = hours({});
    EXPECT_EQ(Comparison::percent(typed, {typed, untouched, typed}, 24), std::nullopt);
    EXPECT_EQ(Comparison::percent(typed, {typed, untouched, typed, typed}, 24), 0);
}

}  // namespace
}  // namespace tapcore
