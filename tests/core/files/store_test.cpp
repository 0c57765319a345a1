#include "core/files/store.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "core/files/file_copies.h"
#include "tests/support/temporary_folder.h"

namespace tapcore {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const Day day(2026, 9, 20);

Tally pressed(KeyCode code, std::int64_t count, std::int64_t hour = 9) {
    Tally tally;
    tally.add(code, hour, count);
    return tally;
}

std::string dayText(KeyCode code, std::int64_t count, FileFormat format = FileFormat::org) {
    DayFile file;
    file.tally = pressed(code, count);
    return file.text(format, day);
}

class StoreTest : public testing::Test {
  protected:
    TemporaryFolder folder;
    Store alone{folder.path(), FileFormat::org};
    Store studio{folder.path(), FileFormat::org, "Studio"};

    /// A folder that two machines share, with a file at its top from before.
    void share() {
        folder.put("Studio/.keys-mac", "{}");
        folder.put("Studio/days/2026-09-20.org", dayText(0, 1));
        folder.put("Air/.keys-mac", "not JSON");
        folder.put("Air/days/2026-09-20.md", dayText(0, 10, FileFormat::markdown));
        folder.put("Air/days/2026-09-21.md", dayText(0, 1000, FileFormat::markdown));
        folder.put("days/2026-09-20.org", dayText(0, 100));
        folder.put("Photos/days/2026-09-20.org", dayText(0, 5000));
    }
};

TEST_F(StoreTest, AFreshFolderReadsAsEmpty) {
    const Store store(folder / "not there", FileFormat::org);
    EXPECT_THAT(store.days(), IsEmpty());
    EXPECT_EQ(store.read(day), DayFile{});
    EXPECT_FALSE(store.hasData());
    EXPECT_EQ(store.readRollup("2026-09"), std::nullopt);
    EXPECT_TRUE(store.refreshRollups(day));
    EXPECT_THAT(folder.files(), IsEmpty());
}

TEST_F(StoreTest, AFolderOfOneMachineHasOnePartAndNoNames) {
    EXPECT_THAT(alone.macs(), IsEmpty());
    ASSERT_EQ(alone.parts().size(), 1U);
    EXPECT_EQ(alone.parts()[0].root, folder.path());
    EXPECT_THAT(studio.macs(), IsEmpty())
        << "its own sub-folder is the only part, though it is not there yet";
}

TEST_F(StoreTest, ASharedFolderIsReadAsOneAndWrittenInOnePlace) {
    share();
    EXPECT_THAT(studio.macs(), ElementsAre("Air", "Studio"));
    EXPECT_THAT(studio.days(), ElementsAre(day, Day(2026, 9, 21)));
    EXPECT_EQ(studio.read(day).tally.total(), 111);
    EXPECT_EQ(studio.readOwn(day).tally.total(), 1);

    auto expected = folder.files();
    DayFile own;
    own.tally = pressed(0, 3);
    own.peakPerMinute = 42;
    own.board = "planck";
    expected["Studio/days/2026-09-20.org"] = own.text(FileFormat::org, day);
    studio.add(pressed(0, 2), 42, 0, "planck", std::nullopt, day);
    EXPECT_EQ(folder.files(), expected);
    EXPECT_THAT(alone.macs(), ElementsAre("Air", "Studio")) << "the top is a part, and no machine";
}

TEST_F(StoreTest, ALinkToAMachinesFolderDoesNotCountItTwice) {
    share();
    std::filesystem::create_directory_symlink("Air", folder / "Luft");
    EXPECT_THAT(studio.macs(), ElementsAre("Air", "Studio"));
    const Store byLink(folder.path(), FileFormat::org, "Luft");
    EXPECT_EQ(byLink.read(day).tally.total(), 111);
}

TEST_F(StoreTest, BoardLayoutAndOtherRowsComeFromTheFirstPartThatHasThem) {
    folder.put("A/.keys-mac", "{}");
    folder.put("A/days/2026-09-20.org", "* Day\n| layout | us |\n| paused | 0:10 |\n| peak | 3 |\n");
    folder.put("B/.keys-mac", "{}");
    folder.put("B/days/2026-09-20.md",
               "# Day\n| layout | de |\n| board | iso |\n| note | b |\n| paused | 0:05 |\n| peak | 9 |\n");
    const DayFile file = Store(folder.path(), FileFormat::org, "A").read(day);
    EXPECT_EQ(file.layout, "us");
    EXPECT_EQ(file.board, "iso");
    EXPECT_EQ(file.otherMeta.at("note"), "b");
    EXPECT_EQ(file.pausedMinutes, 15);
    EXPECT_EQ(file.peakPerMinute, 9);
}

TEST_F(StoreTest, AllCopiesOfADayCountAndBecomeOneWhenWritten) {
    folder.put("days/2026-09-20.org", dayText(0, 1));
    folder.put("days/2026-09-20.md", dayText(0, 10, FileFormat::markdown));
    folder.put("days/2026-09-20.tsv", "# Keys\n9\t0\t100\n");
    EXPECT_EQ(alone.copies("days", "2026-09-20").size(), 3U);
    EXPECT_EQ(alone.read(day).tally.total(), 111);
    alone.add(pressed(0, 1000), 0, 0, {}, {}, day);
    EXPECT_EQ(folder.files(),
              (std::map<std::string, std::string>{{"days/2026-09-20.org", dayText(0, 1111)}}));
}

TEST_F(StoreTest, NamesOnlyWhatIsADataFile) {
    for (const char* name : {"2026-09-18.org", "2026-09-19.md", "2026-09-19.org", ".2026-09-17.org.icloud",
                             "2026-09-16.tsv", "notes.md", "2026-09-20.txt", ".DS_Store",
                             "2026-09-20.sync-conflict-1.md", "2026-09-20 2.md", ".2026-09-15.icloud"})
        folder.put("days/" + std::string(name), "");
    EXPECT_THAT(alone.names("days"), ElementsAre("2026-09-17", "2026-09-18", "2026-09-19", "2026-09-20 2",
                                                 "2026-09-20.sync-conflict-1", "notes"));
    EXPECT_THAT(alone.days(), ElementsAre(Day(2026, 9, 17), Day(2026, 9, 18), Day(2026, 9, 19)));
}

TEST_F(StoreTest, AsksForWhatTheCloudHoldsAndNeverReplacesIt) {
    folder.put("days/.2026-09-20.md.icloud", "placeholder");
    std::vector<std::string> asked;
    const Store store = alone.fetching([&](const auto& url) { asked.push_back(url.filename().string()); });
    EXPECT_EQ(store.read(day).tally.total(), 0);
    EXPECT_THAT(asked, ElementsAre("2026-09-20.md"));
    try {
        store.add(pressed(0, 1), 0, 0, {}, {}, day);
        FAIL() << "the day in the cloud would have been replaced";
    } catch (const std::filesystem::filesystem_error& error) {
        EXPECT_EQ(error.path1(), folder / "days/2026-09-20.md");
        EXPECT_EQ(error.code().message(), "not yet downloaded from iCloud Drive");
    }
    EXPECT_THROW(store.resetHeatmap(), std::filesystem::filesystem_error);
    EXPECT_EQ(folder.files().size(), 1U);
}

TEST_F(StoreTest, WhatCannotBeReadIsNamedAndNotReplaced) {
    folder.put("days/2026-09-20.org", dayText(0, 5) + "| note | caf\xE9 |\n| peak | 7 |\n");
    std::filesystem::create_directories(folder / "days/2026-09-20.md");
    const auto before = folder.files();
    FileProblems problems;
    const DayFile file = alone.read(day, &problems);
    EXPECT_EQ(file.tally.total(), 5);
    EXPECT_EQ(file.peakPerMinute, 7);
    EXPECT_THAT(problems, ElementsAre(FileProblem{folder / "days/2026-09-20.org", 0,
                                                  "not UTF-8 text; what could be read of it counts"},
                                      FileProblem{folder / "days/2026-09-20.md", 0, "Is a directory"}));
    EXPECT_THROW(alone.add(pressed(0, 1), 0, 0, {}, {}, day), std::filesystem::filesystem_error);
    std::filesystem::remove(folder / "days/2026-09-20.md");
    EXPECT_THROW(alone.add(pressed(0, 1), 0, 0, {}, {}, day), std::filesystem::filesystem_error);
    EXPECT_EQ(folder.files(), before);
}

TEST_F(StoreTest, WhatARewriteLeavesOutIsKeptBesideUntilItIsCleared) {
    const std::string edited = dayText(0, 5) + "| paused | soon |\n\n* Notes\n| a | b |\nmine\n* 5 km\n";
    const std::string own = "days/2026-09-20 as it was when I was ill.org";
    folder.put(own, "mine");
    folder.put("days/2026-09-21.org", dayText(0, 5));
    alone.add(pressed(0, 1), 0, 0, {}, {}, day.adding(1, Calendar("UTC")));
    const std::vector<std::function<void()>> clearings = {
        [&] { alone.clearDay(day); }, [&] { alone.resetHeatmap(); }, [&] { alone.clearCounts(); }};
    for (const auto& clear : clearings) {
        folder.put("days/2026-09-20.org", edited);
        alone.add(pressed(0, 1), 0, 0, {}, {}, day);
        alone.add(pressed(0, 1), 0, 0, {}, {}, day);
        EXPECT_EQ(folder.text("days/2026-09-20 as it was.org"), edited);
        EXPECT_EQ(folder.text("days/2026-09-20.org"), dayText(0, 7));
        EXPECT_EQ(alone.days().size(), 2U);
        clear();
        EXPECT_FALSE(std::filesystem::exists(folder / "days/2026-09-20 as it was.org"));
    }
    EXPECT_EQ(folder.files().size(), 1U);
    EXPECT_EQ(folder.text(own), "mine");
}

TEST_F(StoreTest, SummaryHasOneEntryADayWithAllMachinesInIt) {
    share();
    const Summary summary = studio.summary(3, Day(2026, 9, 21), Calendar("UTC"));
    EXPECT_THAT(summary.byDay, ElementsAre(Summary::DayTotal{{2026, 9, 19}, 0}, Summary::DayTotal{day, 111},
                                           Summary::DayTotal{{2026, 9, 21}, 1000}));
    EXPECT_EQ(summary.activeHours, 2);
}

TEST_F(StoreTest, RemovesOnlyTheCopyInTheOtherFormat) {
    for (const char* extension : {"org", "md", "tsv"})
        folder.put("days/2026-09-20." + std::string(extension), "x");
    alone.removeOthers("days", "2026-09-20", folder / "days/2026-09-20.org");
    EXPECT_THAT(alone.copies("days", "2026-09-20"),
                ElementsAre(folder / "days/2026-09-20.org", folder / "days/2026-09-20.tsv"));
}

TEST_F(StoreTest, FilesAreTheOwnersAlone) {
    alone.add(pressed(0, 1), 0, 0, {}, {}, day);
    struct stat status {};
    ASSERT_EQ(::stat((folder / "days/2026-09-20.org").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600U);
    ASSERT_EQ(::stat((folder / "days").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700U);
}

// A merge of copies is interrupted after each of its steps: what is read stays the same, and so does what the
// next write makes of it.
TEST_F(StoreTest, AnInterruptedMergeNeitherLosesNorDoublesTheDay) {
    const std::string merged = dayText(0, 11);
    const auto name = folder / "days";
    const auto interrupted = [&](int steps) {
        std::filesystem::remove_all(name);
        folder.put("days/2026-09-20.org", dayText(0, 1));
        folder.put("days/2026-09-20.md", dayText(0, 10, FileFormat::markdown));
        const auto copies = readWholeCopies(name, "2026-09-20", FileFormat::org);
        replaceCopies(name, "2026-09-20", FileFormat::org, merged, copies).requireSafe();
        EXPECT_EQ(folder.files().size(), 1U);
        // The hidden files as the merge leaves them, and the copies as they stand after so many steps.
        const std::string note = mergingNote(folder / "days/2026-09-20.org", merged, copies);
        if (steps < 3) folder.put("days/.2026-09-20.merged", merged);
        if (steps > 1) folder.put("days/.2026-09-20.merging", note);
        if (steps < 3) folder.put("days/2026-09-20.org", dayText(0, 1));
        if (steps < 4) folder.put("days/2026-09-20.md", dayText(0, 10, FileFormat::markdown));
    };
    for (const int steps :
         {1, 2, 3, 4, 12, 13, 14}) {  // from 11 on, the file is edited before the next write
        interrupted(steps % 10);
        if (steps > 10) folder.put("days/2026-09-20.org", folder.text("days/2026-09-20.org") + "\nA note\n");
        EXPECT_EQ(alone.read(day).tally.total(), 11) << steps;
        alone.add(pressed(0, 5), 0, 0, {}, {}, day);
        EXPECT_EQ(alone.read(day).tally.total(), 16) << steps;
        EXPECT_THAT(alone.copies("days", "2026-09-20"), ElementsAre(folder / "days/2026-09-20.org"));
        EXPECT_EQ(folder.files().size(), steps > 10 ? 2U : 1U) << steps;  // with the day as it was
    }
    interrupted(3);
    folder.put("days/2026-09-20.md", dayText(0, 40, FileFormat::markdown));
    EXPECT_EQ(alone.read(day).tally.total(), 51) << "a copy written since the interruption counts";
}

TEST_F(StoreTest, NothingIsAddedBesideAMergeWhoseNoteCannotBeRead) {
    folder.put("days/2026-09-20.org", dayText(0, 11));
    folder.put("days/2026-09-20.md", dayText(0, 10, FileFormat::markdown));
    const std::filesystem::path note = folder / "days/.2026-09-20.merging";
    std::filesystem::create_directory(note);
    EXPECT_THROW(alone.add(pressed(0, 1), 0, 0, {}, {}, day), std::filesystem::filesystem_error);
    FileProblems problems;
    (void)alone.read(day, &problems);
    EXPECT_EQ(problems, (FileProblems{{note, 0, "Is a directory"}}));
}

TEST_F(StoreTest, WhatIsStoredIsTidiedUpByTheNextWriterAndToldOfOnce) {
    const std::filesystem::path inTheWay = folder / "days/.2026-09-20.merging";
    std::filesystem::create_directories(inTheWay);
    std::vector<std::filesystem::path> told;
    const Store telling = alone.telling([&](const Written& unsafe) { told.push_back(unsafe.path); });
    telling.add(pressed(0, 1), 0, 0, {}, {}, day);
    EXPECT_EQ(alone.read(day).tally.total(), 1);
    EXPECT_THAT(told, ElementsAre(inTheWay));
    std::filesystem::remove(inTheWay);
    folder.put("days/.2026-09-20.merging", "left");
    telling.add(pressed(0, 1), 0, 0, {}, {}, day);
    EXPECT_EQ(folder.files().size(), 1U);
    EXPECT_EQ(told.size(), 1U);
}

TEST(Store, CountsNothingTwiceForAnEmptyNameOfASubfolderOrADayThatIsNamedTwice) {
    const TemporaryFolder folder;
    for (const char* name : {"days/2026-09-20.org", "days/2026-09--20.org"})
        folder.put(name, "* Keys\n| 9 | 0 | 5 |\n");
    const Store store(folder.path(), FileFormat::org, "");
    EXPECT_EQ(store.read({2026, 9, 20}).tally.total(), 5);
    EXPECT_EQ(store.days(), (std::vector<Day>{{2026, 9, 20}}));
}

TEST(Store, NamesADayThatIsOnlyAPlaceholder) {
    const TemporaryFolder folder;
    folder.put("days/.2026-09-20.org.icloud", "");
    for (const std::int64_t days : {1, 60}) {
        FileProblems problems;
        (void)Store(folder.path(), FileFormat::org).summary(days, {2026, 9, 20}, Calendar("UTC"), &problems);
        ASSERT_EQ(problems.size(), 1U);
        EXPECT_EQ(problems[0].path, folder / "days/2026-09-20.org");
        EXPECT_EQ(problems[0].why, "not yet downloaded from iCloud Drive");
    }
}

}  // namespace
}  // namespace tapcore
