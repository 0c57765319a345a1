#include "app/recorder/folder_writer.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "app/common/folder/waiting_place.h"
#include "app/common/program.h"
#include "core/files/folder_config.h"
#include "core/foundation/file_io.h"
#include "core/foundation/file_lock.h"
#include "tests/support/environment.h"
#include "tests/support/refused_locks.h"
#include "tests/support/temporary_folder.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;
using Wait = FolderWriter::Wait;
using tapcore::Day;

const Day day(2026, 9, 20);

/// A recorder's writer into a folder that things happen to.
class Writer : public testing::Test {
  protected:
    tapcore::TemporaryFolder disk;
    fs::path folder = disk / "data";
    std::string told;
    int pauses = 0;
    std::function<void()> inPause = [] {};
    FolderWriter writer = anotherWriter();

    ~Writer() override { refusedLocks = RefusedLocks::none; }

    FolderWriter anotherWriter() {
        fs::create_directories(folder);
        WritingOptions options;
        options.folder = {.folder = folder.string(), .today = "2026-10-02"};
        options.pause = [this] { ++pauses, inPause(); };
        return {{folder, tapcore::FileFormat::org},
                options,
                environmentWith({{"XDG_RUNTIME_DIR", disk / "run"}}),
                [this](const std::string& text) { told += text; }};
    }

    /// "" when a press was stored, else why not.
    std::string press(const Day& on = day, Wait wait = Wait::no) {
        DayCounts counts;
        counts.tally.add(tapcore::KeyCode{0}, 9, 1);
        try {
            writer.write(on, counts, wait);
            return "";
        } catch (const Failure& failure) {
            const std::string text = failure.what();
            return text.starts_with(folder.string()) ? text.substr(folder.string().size()) : text;
        }
    }
    std::int64_t stored() const {
        return tapcore::Store(folder, tapcore::FileFormat::org).read(day).tally.total();
    }
};

TEST_F(Writer, WritesIntoTheFolderThatItOpenedAlone) {
    writer.hold();
    EXPECT_EQ(press(), "");
    fs::rename(folder, disk / "away");
    EXPECT_EQ(press(), ": the folder is gone");
    fs::create_directories(folder / "days");  // what a mount point shows when its disk is gone
    EXPECT_EQ(press(), ": another folder has taken its place");
    EXPECT_TRUE(fs::is_empty(folder / "days"));
    fs::remove_all(folder);
    fs::rename(disk / "away", folder);
    EXPECT_EQ(press(), "");
    EXPECT_EQ(stored(), 2);
}

TEST_F(Writer, GoesOnInACopyAndIsTheOneRecorderThere) {
    writer.hold();
    EXPECT_EQ(press(), "");
    fs::copy(folder, disk / "copy", fs::copy_options::recursive);
    fs::remove_all(folder);
    fs::rename(disk / "copy", folder);
    EXPECT_EQ(press(), "");
    EXPECT_EQ(stored(), 2);
    FolderWriter second = anotherWriter();
    EXPECT_THAT([&] { second.hold(); },
                testing::ThrowsMessage<Failure>(testing::EndsWith("another recorder is counting into it")));
}

TEST_F(Writer, LooksAgainWhatFolderThereIsOnceItHasWaitedForTheLock) {
    writer.hold();
    duringNextLock = [&] {
        fs::rename(folder, disk / "away");
        fs::create_directories(folder);
    };
    EXPECT_EQ(press(), ": another folder has taken its place");
    EXPECT_TRUE(fs::is_empty(folder));
}

TEST_F(Writer, IsNotInItsOwnWayWhereALockIsAFileOfTheFoldersName) {
    refusedLocks = RefusedLocks::ofFolders;
    writer.hold();
    EXPECT_EQ(press(), "");
    fs::copy(folder / "days", disk / "copy");
    fs::remove_all(folder / "days");
    fs::rename(disk / "copy", folder / "days");
    EXPECT_EQ(press(), "");
    EXPECT_EQ(stored(), 2);
}

TEST_F(Writer, StartsNoDaysInPlaceOfThoseThatWentAway) {
    (void)tapcore::writeFile(folder / "days/2026-09-19.md", "");
    writer.hold();
    fs::rename(folder / "days", disk / "away");
    EXPECT_EQ(press(), "/days: the folder is gone");
    fs::create_directories(folder / "days");
    EXPECT_EQ(press(), "/days: another folder has taken its place");
    EXPECT_TRUE(fs::is_empty(folder / "days"));
    fs::remove(folder / "days");
    fs::rename(disk / "away", folder / "days");
    EXPECT_EQ(press(), "");
    EXPECT_EQ(told, "");
}

TEST_F(Writer, SaysThatItTakesAnotherFolderForOneThatHeldNothing) {
    writer.hold();
    fs::rename(folder, disk / "away");
    fs::create_directories(folder / "days");
    EXPECT_EQ(press(), "");
    EXPECT_EQ(press(), "");
    EXPECT_EQ(told, folder.string() +
                        ": another folder has taken its place; nothing was stored yet, so counts go there");
}

TEST_F(Writer, WaitsAWhileForAnotherProgramAndNoLongerHoweverManyDaysThereAre) {
    writer.hold();
    std::optional other = tapcore::FileLock::acquireFolder(folder);
    inPause = [&] {
        if (pauses == 3) other.reset();
    };
    EXPECT_EQ(press(day, Wait::aWhile), "");
    other = tapcore::FileLock::acquireFolder(folder);
    for (const Day& on : {day, Day(2026, 9, 21)})
        EXPECT_EQ(press(on, Wait::aWhile), ": another program is writing in it");
    EXPECT_EQ(pauses, FolderWriter::mostPauses);
}

TEST_F(Writer, WritesInTheFormatThatTheFolderHasNow) {
    writer.hold();
    EXPECT_EQ(press(), "");
    tapcore::FolderConfig config;
    config.format = tapcore::FileFormat::markdown;
    config.write(folder).requireSafe();
    EXPECT_EQ(press(), "");
    EXPECT_TRUE(fs::exists(folder / "days/2026-09-20.md"));
    EXPECT_FALSE(fs::exists(folder / "days/2026-09-20.org"));
    EXPECT_EQ(stored(), 2);
}

TEST_F(Writer, WritesNothingWhileItCannotTellTheFormat) {
    writer.hold();
    fs::create_directories(folder / ".keys/config.json");
    EXPECT_EQ(press(), "/.keys/config.json: Is a directory");
    EXPECT_TRUE(fs::is_empty(folder / "days"));
    fs::remove(folder / ".keys/config.json");
    EXPECT_EQ(press(), "");
}

TEST_F(Writer, SumsAMonthAgainThatFailedAndTellsWhyOnce) {
    const fs::path inTheWay = folder / "days/2026-09-05.org";
    fs::create_directories(inTheWay);
    EXPECT_EQ(press(), "");
    for (int minute = 0; minute < 3; ++minute) writer.refreshMonths(Wait::no);
    EXPECT_EQ(told, inTheWay.string() + ": 2026-09 is not summed without it: Is a directory");
    fs::remove(inTheWay);
    writer.refreshMonths(Wait::no);
    EXPECT_FALSE(tapcore::Store(folder, tapcore::FileFormat::org).isOutOfDate("2026-09", Day(2026, 10, 2)));
}

TEST_F(Writer, TakesEachPastDayIntoItsMonthHoweverLateItIsStored) {
    const tapcore::Store store(folder, tapcore::FileFormat::org);
    for (const Day& on : {Day(2026, 9, 20), Day(2026, 9, 20), Day(2026, 10, 1)}) {
        EXPECT_EQ(press(on), "");
        writer.refreshMonths(Wait::no);
        EXPECT_FALSE(store.isOutOfDate(on.monthName(), Day(2026, 10, 2)));
    }
    EXPECT_EQ(told, "");
}

TEST_F(Writer, TakesInWhatWaitsForAFolderThatWasChosenBefore) {
    const Environment environment =
        environmentWith({{"XDG_RUNTIME_DIR", disk / "run"}, {"XDG_STATE_HOME", disk / "state"}});
    const auto waitsFor = [&](const fs::path& root) {
        fs::create_directories(root);
        const tapcore::Store store(root, tapcore::FileFormat::org);
        tapcore::DayFile counts;
        counts.tally.add(tapcore::KeyCode{0}, 9, 4);
        store.waitingIn(madeWaitingPlace(environment, root)).addWaiting({day, 9}, counts);
        return store;
    };
    const auto before = waitsFor(disk / "before");
    (void)waitsFor(disk / "gone");
    fs::remove_all(disk / "gone");
    const auto tell = [this](const std::string& text) { told += text; };
    for (int start = 0; start < 2; ++start) {
        told.clear();
        FolderWriter({folder, tapcore::FileFormat::org}, {}, environment, tell).takeInElsewhere();
        EXPECT_EQ(before.read(day).tally.total(), 4);
        EXPECT_EQ(told, "hours wait on: " + (disk / "gone").string() + ": no such folder");
    }
}

TEST_F(Writer, RefusesADayThatIsTooLargeToAddToAndStoresOthers) {
    (void)tapcore::writeFile(folder / "days/2026-09-20.md", "# Keys\n| 9 | 0 | 9223372036854775807 |\n");
    EXPECT_EQ(press(), "/days/2026-09-20.md: counts too large to be added up");
    EXPECT_EQ(press(Day(2026, 9, 21)), "");
}

TEST_F(Writer, StoresNoDayThatNoFileCanBeNamedAfter) {
    EXPECT_EQ(press(Day(10000, 1, 1)), "10000-01-01: years have four digits in the names of files");
    EXPECT_EQ(press(Day(9999, 12, 31)), "");
}

}  // namespace
}  // namespace tappora
