#include "app/common/folder/data_folder.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "core/foundation/folder_listing.h"
#include "tests/support/environment.h"
#include "tests/support/temporary_folder.h"

namespace tappora {
namespace {

using tapcore::Calendar;
using tapcore::Day;

TEST(DataFolder, TodayIsTheDayInTheEnvironmentsZoneUnlessNamed) {
    const Calendar farEast("Asia/Tokyo");  // 23:30 of the same day
    const Calendar farther("Pacific/Auckland");
    EXPECT_EQ(today({}, environmentWith({}), farEast), Day(2026, 9, 20));
    EXPECT_EQ(today({}, environmentWith({}), farther), Day(2026, 9, 21));
    EXPECT_EQ(today({.folder = {}, .today = "2026-02-03"}, environmentWith({}), farther), Day(2026, 2, 3));
}

TEST(DataFolder, OnlyTheCurrentDayHasReachedAnHour) {
    const Calendar utc("UTC");
    EXPECT_EQ(hoursPassed({2026, 9, 20}, environmentWith({}), utc), 14.5);
    EXPECT_EQ(hoursPassed({2026, 9, 19}, environmentWith({}), utc), 24);
    EXPECT_EQ(hoursPassed({2026, 9, 20}, environmentWith({}), Calendar("Asia/Tokyo")), 23.5);
    EXPECT_EQ(hoursPassed({2026, 9, 21}, environmentWith({}), Calendar("Pacific/Auckland")), 2.5);
}

TEST(DataFolder, TwoProcessesThatShareItAtOneMomentMakeOneSubfolder) {
    for (int round = 0; round < 20; ++round) {
        const tapcore::TemporaryFolder folder;
        std::filesystem::create_directory(folder / "data");
        const auto environment = environmentWith({{"HOME", folder.path()},
                                                  {"XDG_RUNTIME_DIR", folder.path()},
                                                  {"TAPPORA_FOLDER", folder / "data"}});
        int gate[2];
        ASSERT_EQ(::pipe(gate), 0);
        for (int process = 0; process < 2; ++process) {
            if (::fork() != 0) continue;
            ::close(gate[1]);
            char byte;
            if (::read(gate[0], &byte, 1) != 0) std::_Exit(2);  // until the parent opens it for both
            const LockedStore locked({}, environment, true);
            std::_Exit(locked.store.mac ? 0 : 1);
        }
        ::close(gate[1]);
        for (int process = 0, status = 1; process < 2; ++process) {
            ::wait(&status);
            EXPECT_EQ(status, 0);
        }
        ::close(gate[0]);
        EXPECT_EQ(tapcore::namesIn(folder / "data").size(), 1U);
    }
}

}  // namespace
}  // namespace tappora
