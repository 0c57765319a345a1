#include "app/recorder/report_keeper.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "core/foundation/file_io.h"
#include "core/foundation/file_lock.h"
#include "core/foundation/folder_listing.h"
#include "tests/support/environment.h"
#include "tests/support/temporary_folder.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

const tapcore::Day monday(2026, 9, 21);

class Reports : public testing::Test {
  protected:
    Reports() {
        save("both");
        disk.put("data/days/2026-08-14.org", "* Keys\n| 9 | 0 | 30 |\n");
        disk.put("data/Desk/.keys-mac", "");
        disk.put("data/Desk/days/2026-09-15.org", "* Keys\n| 9 | 0 | 20 |\n");
    }

    void save(const std::string& kinds) {
        disk.put("config/tappora/settings.json", "{\"reports.save\": \"" + kinds + "\"}");
    }
    /// The reports that are there after a look on a day.
    Names after(const tapcore::Day& today) {
        keeper.keepUp(today);
        return tapcore::namesIn(folder / "reports");
    }

    tapcore::TemporaryFolder disk;
    const fs::path folder = disk / "data";
    std::string told;
    ReportKeeper keeper{{.folder = folder.string(), .today = {}},
                        environmentWith({{"XDG_CONFIG_HOME", disk / "config"},
                                         {"XDG_RUNTIME_DIR", disk / "run"},
                                         {"TAPPORA_RESOURCES", RESOURCES}}),
                        [this](const std::string& text) { told += text + "\n"; }};
};

TEST_F(Reports, AreWrittenOnceOfThePeriodsThatEndedLast) {
    save("none");
    EXPECT_EQ(after(monday), Names{});
    save("week");
    EXPECT_EQ(after(monday), Names{"2026-W38.org"});
    save("month");
    EXPECT_EQ(after(monday), (Names{"2026-08.org", "2026-W38.org"}));
    fs::remove_all(folder / "reports");
    EXPECT_EQ(after(monday), Names{}) << "it has looked today";
    disk.put("data/reports/2026-08.md", "one's own words");
    save("both");
    EXPECT_EQ(after({2026, 9, 22}), (Names{"2026-08.md", "2026-W38.org"})) << "what is there stays";
    EXPECT_EQ(after({2026, 10, 5}), (Names{"2026-08.md", "2026-09.org", "2026-W38.org"}))
        << "nothing was typed in the last week of September";
    EXPECT_EQ(told, "");
}

TEST_F(Reports, WaitForAnotherProgramThatWrites) {
    {
        const auto other = tapcore::FileLock::acquireFolder(folder);
        EXPECT_EQ(after(monday), Names{});
    }
    EXPECT_EQ(after(monday), (Names{"2026-08.org", "2026-W38.org"}));
}

TEST_F(Reports, OfWhatCannotBeAddedUpAreRefusedOnceAndTheProgramGoesOn) {
    disk.put("data/days/2026-09-16.org", "* Keys\n| 9 | 0 | 9223372036854775000 |\n");
    disk.put("data/days/2026-09-17.org", "* Keys\n| 9 | 0 | 9223372036854775000 |\n");
    EXPECT_EQ(after(monday), Names{});
    EXPECT_EQ(after({2026, 9, 22}), Names{});
    EXPECT_EQ(told, "a report is not saved: " + folder.string() + ": counts too large to be added up\n");
    fs::remove(folder / "days/2026-09-17.org");
    disk.put("data/practice/2026-09-01.org",
             "* Letters\n| e | - | 1 | 0 | 1 | 1 |\n* Day\n| seconds | 9223372036854775807 |\n");
    EXPECT_EQ(after({2026, 9, 23}), Names{}) << "practice is read, too";
}

}  // namespace
}  // namespace tappora
