#include "app/common/data_folder.h"

#include <gtest/gtest.h>

#include "tests/support/environment.h"

namespace tappora {
namespace {

using tapcore::Calendar;
using tapcore::Day;

TEST(DataFolder, IsTheOneOfTheOptionThenOfTheVariableThenTheUsualOne) {
    const Variables named = {{"HOME", "/nowhere"}, {"TAPPORA_FOLDER", "/usr"}};
    const Variables unnamed = {{"HOME", "/nowhere"}, {"TAPPORA_FOLDER", ""}};
    EXPECT_EQ(openStore({.folder = "/", .today = {}}, environmentWith(named)).root, "/");
    EXPECT_EQ(openStore({}, environmentWith(named)).root, "/usr");
    EXPECT_EQ(openStore({}, environmentWith(unnamed)).root, "/nowhere/Documents/Tappora");
}

TEST(DataFolder, TodayIsTheDayInTheEnvironmentsZoneUnlessNamed) {
    const Calendar farEast("Asia/Tokyo");  // 23:30 of the same day
    const Calendar farther("Pacific/Auckland");
    EXPECT_EQ(today({}, environmentWith({}), farEast), Day(2026, 9, 20));
    EXPECT_EQ(today({}, environmentWith({}), farther), Day(2026, 9, 21));
    EXPECT_EQ(today({.folder = {}, .today = "2026-02-03"}, environmentWith({}), farther), Day(2026, 2, 3));
}

TEST(DataFolder, OnlyTheDayThatIsUnderWayHasReachedAnHour) {
    const Calendar utc("UTC");
    EXPECT_EQ(hourReached({2026, 9, 20}, environmentWith({}), utc), 14);
    EXPECT_EQ(hourReached({2026, 9, 19}, environmentWith({}), utc), 23);
    EXPECT_EQ(hourReached({2026, 9, 20}, environmentWith({}), Calendar("Asia/Tokyo")), 23);
    EXPECT_EQ(hourReached({2026, 9, 21}, environmentWith({}), Calendar("Pacific/Auckland")), 2);
}

}  // namespace
}  // namespace tappora
