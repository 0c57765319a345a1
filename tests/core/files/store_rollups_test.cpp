#include <gmock/gmock.h>

#include <chrono>
#include <functional>

#include "core/files/store.h"
#include "tests/support/temporary_folder.h"

namespace tapcore {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const Day today(2026, 10, 2);

class RollupTest : public testing::Test {
  protected:
    TemporaryFolder folder;
    Store store{folder.path(), FileFormat::org};

    void type(const Day& day, std::int64_t count) const {
        Tally tally;
        tally.add(KeyCode{0}, 9, count);
        tally.add(Tally::Chord{{Modifiers::command}, 0}, 9, 1);
        store.add(tally, 0, 0, {}, {}, day);
    }

    /// Keystrokes by the days that a month's rollup lists.
    std::map<std::int64_t, std::int64_t> rollup(std::string_view month) const {
        std::map<std::int64_t, std::int64_t> lines;
        for (const auto& line : store.readRollup(month).value_or(MonthRollup{}).days)
            lines[line.day.day] = line.keystrokes;
        return lines;
    }

    void SetUp() override {
        type({2026, 9, 20}, 10);
        type({2026, 9, 21}, 20);
        type({2026, 10, 1}, 30);
        type(today, 40);
        type({2026, 10, 3}, 50);
    }
};

using Lines = std::map<std::int64_t, std::int64_t>;

TEST_F(RollupTest, HoldsEveryDayBeforeTodayAndGrowsEachMorning) {
    EXPECT_TRUE(store.refreshRollups(today));
    EXPECT_EQ(rollup("2026-09"), (Lines{{20, 10}, {21, 20}}));
    EXPECT_EQ(rollup("2026-10"), (Lines{{1, 30}}));
    EXPECT_TRUE(store.refreshRollups({2026, 10, 3}));
    EXPECT_EQ(rollup("2026-10"), (Lines{{1, 30}, {2, 40}}));
    EXPECT_TRUE(store.refreshRollups({2026, 9, 20}));
    EXPECT_EQ(folder.files().count("months/2026-09.org"), 0U) << "no day of it is over";
}

TEST_F(RollupTest, IsRebuiltWhenADayComesGoesOrChanges) {
    store.refreshRollups(today);
    const auto before = folder.files();
    store.refreshRollups(today);
    EXPECT_EQ(folder.files(), before);

    type({2026, 9, 20}, 5);
    EXPECT_TRUE(store.isOutOfDate("2026-09", today)) << "a day file is newer";
    type({2026, 9, 1}, 1);
    std::filesystem::remove(folder / "days/2026-09-21.org");
    store.refreshRollups(today);
    EXPECT_EQ(rollup("2026-09"), (Lines{{1, 1}, {20, 15}}));
    EXPECT_FALSE(store.isOutOfDate("2026-09", today));
}

TEST_F(RollupTest, IsOutOfDateWhereADayDoesNotSayWhenItWasWrittenAndNotWhereItIsAway) {
    store.refreshRollups(today);
    std::filesystem::remove(folder / "days/2026-09-21.org");
    folder.put("days/.2026-09-21.org.icloud", "");
    EXPECT_FALSE(store.isOutOfDate("2026-09", today));
    std::filesystem::create_symlink("2026-09-21.org", folder / "days/2026-09-21.org");
    EXPECT_TRUE(store.isOutOfDate("2026-09", today));
}

TEST_F(RollupTest, OfAMonthWithoutDaysIsRemovedAndNothingElseIs) {
    for (const char* name : {"months/2026-01.org", "months/2026-01.md", "months/notes.md",
                             "months/2026-00.md", "months/2026-+9.org", "months/+026-09.md"})
        folder.put(name, "mine");
    store.refreshRollups(today);
    std::vector<std::string> months;
    for (const auto& [name, text] : folder.files())
        if (name.starts_with("months/")) months.push_back(name);
    EXPECT_THAT(months, ElementsAre("months/+026-09.md", "months/2026-+9.org", "months/2026-00.md",
                                    "months/2026-09.org", "months/2026-10.org", "months/notes.md"));
}

TEST_F(RollupTest, TakesNoOtherNameForAMonths) {
    const auto before = folder.files();
    for (const char* name : {"../days/2026-09-20", "../days/2026-08", "2026-13", "2026-+9", ""}) {
        EXPECT_FALSE(store.rebuildRollup(name, today)) << name;
        EXPECT_FALSE(store.isOutOfDate(name, today)) << name;
    }
    EXPECT_EQ(folder.files(), before);
}

TEST_F(RollupTest, TellsWhatKeepsAMonthFromBeingSummed) {
    folder.put("days/.2026-09-05.org.icloud", "");
    folder.put("days/.2026-10-01.org.icloud", "");  // the file is there, too
    std::filesystem::create_directory(folder / "days/2026-09-22.org");
    FileProblems problems;
    EXPECT_TRUE(store.refreshRollups(today, {}, &problems));
    EXPECT_THAT(
        problems,
        ElementsAre(FileProblem{folder / "days/2026-09-05.org", 0,
                                "2026-09 is not summed without it: not yet downloaded from iCloud Drive"},
                    FileProblem{folder / "days/2026-09-22.org", 0,
                                "2026-09 is not summed without it: Is a directory"}));
    EXPECT_THAT(rollup("2026-09"), IsEmpty());
    EXPECT_EQ(rollup("2026-10"), (Lines{{1, 30}}));
}

TEST_F(RollupTest, StaysAsItWasWhenADayCannotBeReadWhileAnotherIsCleared) {
    store.refreshRollups(today);
    std::filesystem::remove(folder / "days/2026-09-21.org");
    std::filesystem::create_directory(folder / "days/2026-09-21.org");
    const auto before = folder.files();
    EXPECT_THROW(store.clearDay({2026, 9, 20}), std::filesystem::filesystem_error);
    EXPECT_THROW(store.resetHeatmap(), std::filesystem::filesystem_error);
    EXPECT_EQ(folder.files(), before);
    std::filesystem::remove(folder / "days/2026-09-21.org");
    store.clearDay({2026, 10, 1});
    store.clearDay({2026, 9, 20});
    EXPECT_THAT(rollup("2026-09"), IsEmpty()) << "a day that is gone leaves no row of zeros";
}

TEST_F(RollupTest, WaitsForADayThatTheCloudStillHolds) {
    store.refreshRollups(today);
    folder.put("days/.2026-09-05.org.icloud", "");
    EXPECT_FALSE(store.rebuildRollup("2026-09", today));
    store.refreshRollups(today);
    EXPECT_EQ(rollup("2026-09"), (Lines{{20, 10}, {21, 20}}));
    std::filesystem::remove(folder / "days/2026-09-21.org");
    folder.put("days/.2026-09-21.org.icloud", "");
    EXPECT_THROW(store.clearDay({2026, 9, 20}), std::filesystem::filesystem_error)
        << "the month cannot be summed";
    EXPECT_EQ(store.read({2026, 9, 20}).tally.total(), 10);
}

TEST_F(RollupTest, IsNotSummedWhileADayCannotBeRead) {
    store.refreshRollups(today);
    std::filesystem::remove(folder / "days/2026-09-21.org");
    std::filesystem::create_directory(folder / "days/2026-09-21.org");
    EXPECT_FALSE(store.rebuildRollup("2026-09", today));
    EXPECT_EQ(rollup("2026-09"), (Lines{{20, 10}, {21, 20}}));
}

TEST_F(RollupTest, WrittenForAnotherReasonTakesInWhatChangedBefore) {
    const std::function<void()> changes[] = {
        [&] { store.resetHeatmap(); },
        [&] { Store(folder.path(), FileFormat::markdown).convert(); },
    };
    for (const auto& change : changes) {
        store.refreshRollups(today);
        type({2026, 9, 20}, 5);
        change();
        EXPECT_EQ(rollup("2026-09")[20], store.read({2026, 9, 20}).tally.total());
    }
}

TEST_F(RollupTest, GoesWithTheLastDayThatIsCleared) {
    store.refreshRollups(today);
    store.clearDay({2026, 9, 20});
    EXPECT_EQ(rollup("2026-09"), (Lines{{21, 20}}));
    store.clearDay({2026, 9, 21});
    EXPECT_EQ(folder.files().count("months/2026-09.org"), 0U);
}

TEST_F(RollupTest, OfTwoFormatsIsOneAndOfTwoMachinesBoth) {
    store.refreshRollups(today);
    folder.put("months/2026-09.md", "# Days\n| 2026-09-20 | 9999 | 1 | 1 |\n");
    EXPECT_EQ(rollup("2026-09"), (Lines{{20, 10}, {21, 20}}));
    folder.put("Air/.keys-mac", "{}");
    folder.put("Air/months/2026-09.md", "# Days\n| 2026-09-20 | 7 | 1 | 1 |\n");
    EXPECT_EQ(rollup("2026-09"), (Lines{{20, 17}, {21, 20}}));
    store.rebuildRollup("2026-09", today);
    EXPECT_THAT(store.copies("months", "2026-09"), ElementsAre(folder / "months/2026-09.org"));

    const Store air(folder.path(), FileFormat::org, "Air");
    air.refreshRollups(today);
    EXPECT_EQ(folder.files().count("Air/months/2026-09.md"), 0U) << "Air has no days of its own";
}

TEST_F(RollupTest, StopsWhereItIsInterruptedAndGoesOnFromThere) {
    std::vector<std::size_t> steps;
    const auto stopAtSecond = [&](std::size_t done, std::size_t total) {
        steps.push_back(total);
        return done < 1;
    };
    EXPECT_FALSE(store.refreshRollups(today, stopAtSecond));
    EXPECT_THAT(steps, ElementsAre(2, 2));
    EXPECT_EQ(rollup("2026-09").size(), 2U);
    EXPECT_THAT(rollup("2026-10"), IsEmpty());
    EXPECT_TRUE(store.refreshRollups(today));
    EXPECT_EQ(rollup("2026-10").size(), 1U);
}

TEST_F(RollupTest, ForgottenKeysAndShortcutsAreForgottenInMonthsToo) {
    store.refreshRollups(today);
    folder.put("days/2026-09-19.tsv", "# Keys\n9\t5\t100\n");
    folder.put("months/2026-08.tsv", "# Keys\n5\t100\n");
    EXPECT_FALSE(store.resetHeatmap([](std::size_t done, std::size_t) { return done < 2; }));
    EXPECT_FALSE(store.readRollup("2026-09")->keys.empty());
    EXPECT_TRUE(store.resetHeatmap());
    for (const auto& [name, text] : folder.files()) EXPECT_TRUE(DayFile(text).tally.byKey().empty()) << name;
    EXPECT_EQ(store.read({2026, 9, 20}).tally.total(), 10);
    EXPECT_EQ(store.read({2026, 9, 19}).tally.total(), 100);
    EXPECT_TRUE(store.readRollup("2026-09")->keys.empty());
    EXPECT_TRUE(store.readRollup("2026-08")->keys.empty());
    EXPECT_FALSE(store.readRollup("2026-09")->chords.empty());
    store.resetShortcuts();
    EXPECT_TRUE(store.readRollup("2026-09")->chords.empty());
    EXPECT_TRUE(store.read({2026, 9, 20}).tally.byChord().empty());
    EXPECT_EQ(rollup("2026-09"), (Lines{{20, 10}, {21, 20}}));
}

TEST_F(RollupTest, ClearingADayTakesItOutOfItsMonth) {
    store.refreshRollups(today);
    folder.put("days/2026-09-20.tsv", "# Keys\n9\t5\t100\n");
    store.clearDay({2026, 9, 20});
    EXPECT_EQ(rollup("2026-09"), (Lines{{21, 20}}));
    EXPECT_EQ(store.readRollup("2026-09")->keys, (Tally::KeyCounts{{0, 20}}));
    EXPECT_TRUE(store.read({2026, 9, 20}).tally.isEmpty());
}

TEST_F(RollupTest, ClearingLeavesWhatIsNotDataOrNotItsOwn) {
    store.refreshRollups(today);
    const std::map<std::string, std::string> kept = {
        {".keys/config.json", "{}"}, {"days/notes.md", "mine"},       {"days/2026-09-20.txt", "mine"},
        {"Air/.keys-mac", "{}"},     {"Air/days/2026-09-20.md", "x"}, {"assistant/key.pem", "mine"}};
    for (const auto& [name, text] : kept) folder.put(name, text);
    folder.put("days/2026-09-19.tsv", "old");
    folder.put("days/.2026-09-18.org.icloud", "");
    folder.put("practice/2026-09-20.org", "x");
    store.clearCounts();
    auto practised = kept;
    practised["practice/2026-09-20.org"] = "x";
    EXPECT_EQ(folder.files(), practised);
    for (const char* name :
         {"reports/June.md", "assistant/chat.org", "assistant/history/2026-09-20 101112.md"})
        folder.put(name, "x");
    store.clearAll();
    EXPECT_EQ(folder.files(), kept);
}

TEST_F(RollupTest, ConvertingThereAndBackChangesNoByte) {
    store.refreshRollups(today);
    const auto before = folder.files();
    const Store markdown(folder.path(), FileFormat::markdown);
    EXPECT_TRUE(markdown.needsConversion());
    EXPECT_FALSE(markdown.convert([](std::size_t done, std::size_t) { return done < 3; }));
    EXPECT_TRUE(markdown.needsConversion());
    EXPECT_EQ(markdown.summary(30, today, Calendar("UTC")), store.summary(30, today, Calendar("UTC")));
    EXPECT_TRUE(markdown.convert());
    EXPECT_FALSE(markdown.needsConversion());
    for (const auto& [name, text] : folder.files())
        EXPECT_TRUE(name.ends_with(".md") && text.starts_with("# 2026")) << name;
    EXPECT_TRUE(store.convert());
    EXPECT_EQ(folder.files(), before);
}

TEST_F(RollupTest, AnyFileOfCountsIsData) {
    EXPECT_TRUE(store.hasData());
    store.clearCounts();
    EXPECT_FALSE(store.hasData());
    folder.put("practice/2026-09-20.org", "x");
    EXPECT_TRUE(store.hasData());
}

}  // namespace
}  // namespace tapcore
