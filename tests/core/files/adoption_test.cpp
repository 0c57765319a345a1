#include <gmock/gmock.h>
#include <sys/stat.h>

#include "core/files/adoption.h"
#include "core/files/mac_folder.h"
#include "core/files/store.h"
#include "core/foundation/digest.h"
#include "tests/support/temporary_folder.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;
using MacFolder::Adoption;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

const Day day(2026, 9, 20);

std::string counting(int count) { return "* Keys\n| 9 | 0 | " + std::to_string(count) + " |\n"; }

class AdoptionTest : public testing::Test {
  protected:
    /// What is not taken, as "FILE: WHY".
    Adoption adopt(const Progress& progress = {}) {
        FileProblems problems;
        const Adoption outcome = MacFolder::adopt(old.path(), store, progress, &problems);
        missing.clear();
        for (const FileProblem& problem : problems)
            missing.push_back(problem.path.lexically_relative(old.path()).string() + ": " + problem.why);
        return outcome;
    }
    std::int64_t total(const Day& of) const { return store.read(of).tally.total(); }

    TemporaryFolder old, fresh;
    Store store{fresh.path(), FileFormat::org};
    std::vector<std::string> missing;
};

TEST_F(AdoptionTest, TakesFilesFromBeforeWithoutOverwriting) {
    store.mac = "Studio";
    for (const char* name : {"days/2026-09-20.org", "months/2026-09.org", "practice/2026-09-20.org",
                             ".keys/config.json", "reports/a.md", "assistant/history/b.md", "stray.txt"})
        old.put(name, "old");
    fresh.put(".keys/config.json", "new");
    const auto stopAtThird = [](std::size_t done, std::size_t) { return done < 2; };
    EXPECT_EQ(adopt(stopAtThird), Adoption::interrupted);
    EXPECT_EQ(Store(store.base(), store.format).days().size(), 1U);
    EXPECT_EQ(adopt(), Adoption::done) << "it goes on where it stopped";
    EXPECT_EQ(fresh.files(), (std::map<std::string, std::string>{{".keys/config.json", "new"},
                                                                 {"Studio/days/2026-09-20.org", "old"},
                                                                 {"Studio/months/2026-09.org", "old"},
                                                                 {"Studio/practice/2026-09-20.org", "old"},
                                                                 {"assistant/history/b.md", "old"},
                                                                 {"reports/a.md", "old"}}));
    EXPECT_EQ(adopt(), Adoption::holdsDays);
    for (const fs::path& same : {fresh / "../" / fresh.path().filename().string(), store.base()})
        EXPECT_EQ(MacFolder::adopt(same, store), Adoption::sameFolder);
    EXPECT_EQ(MacFolder::adopt(old / "nowhere", store), Adoption::nothing);
}

TEST_F(AdoptionTest, AddsEachDayOnceHoweverOftenItIsCutOffAndCountingGoesOn) {
    for (int date = 18; date <= 21; ++date)
        old.put("days/2026-09-" + std::to_string(date) + ".org", counting(100));
    Tally typed;
    typed.add(KeyCode{0}, 9, 1);
    std::int64_t more = 0;
    for (std::size_t steps = 0;
         adopt([&](std::size_t done, std::size_t) { return done < steps; }) != Adoption::done; ++steps) {
        for (int date = 18; date <= 21; ++date)
            store.add(typed, 1, 0, std::nullopt, std::nullopt, {2026, 9, date});
        ++more;
    }
    EXPECT_GE(more, 4);
    for (int date = 18; date <= 21; ++date) EXPECT_EQ(total({2026, 9, date}), 100 + more) << date;
    EXPECT_EQ(fresh.files().count(".adopting"), 0U);
}

TEST_F(AdoptionTest, FinishesADayThatWasCutOffBetweenItsNoteAndItsPlace) {
    old.put("days/2026-09-20.org", counting(100));
    old.put("days/2026-09-21.org", counting(7));
    adopt([](std::size_t done, std::size_t) { return done < 1; });
    // As a crash right before the last rename would have left it, and counting after it.
    const std::string note = fresh.text(".adopting");
    const fs::path waiting = fresh / (".adopting." + hexDigest("days/2026-09-20.org"));
    fs::rename(fresh / "days/2026-09-20.org", waiting);
    store.clearDay({2026, 9, 21});
    EXPECT_TRUE(isThere(waiting));
    const TemporaryFolder other;
    other.put("days/2026-09-22.org", counting(1));
    EXPECT_EQ(MacFolder::adopt(other.path(), store), Adoption::holdsDays)
        << "what waits is a day of this folder";
    EXPECT_EQ(total(day), 100);
    fs::rename(fresh / "days/2026-09-20.org", waiting);
    fresh.put("days/2026-09-20.org", counting(5));
    EXPECT_EQ(adopt(), Adoption::done);
    EXPECT_EQ(total(day), 105);
    EXPECT_EQ(total({2026, 9, 21}), 7);

    // As a crash in the middle of the note's last line would have left it: the day was not put in its place.
    fs::remove_all(fresh / "days");
    fresh.put(".adopting", note.substr(0, note.size() - 3));
    EXPECT_EQ(adopt(), Adoption::done);
    EXPECT_EQ(total(day), 100);

    fresh.put(".adopting", note);
    fs::rename(fresh / "days/2026-09-20.org", waiting);
    fresh.put(".adopting.0", "cut off before it was in the note");
    store.clearDay(day);
    EXPECT_THAT(fresh.files(), ElementsAre(testing::Key(".adopting"), testing::Key("days/2026-09-21.org")));
}

TEST_F(AdoptionTest, NamesWhatItCannotTakeAndTakesItLater) {
    old.put("days/2026-09-19.org", counting(1));
    old.put("days/.2026-09-20.org.icloud", "");
    fs::create_symlink("/etc/passwd", old / "days/2026-09-21.org");
    fs::create_directory(old / "days/2026-09-22.org");
    fs::create_symlink("practice", old / "practice");
    ASSERT_EQ(::mkfifo((old / "days/2026-09-23.org").c_str(), 0600), 0);
    for (const char* same : {"reports/config.json", ".keys/config.json"}) {
        old.put(same, "theirs");
        fresh.put(same, "mine");
    }
    old.put("assistant/chat.org", "theirs");
    fresh.put("assistant", "a file where the folder should be");
    EXPECT_EQ(adopt(), Adoption::incomplete);
    EXPECT_THAT(missing,
                UnorderedElementsAre(
                    "days/2026-09-20.org: not yet downloaded from iCloud Drive",
                    "days/2026-09-21.org: a symbolic link", "days/2026-09-23.org: not a regular file",
                    "practice: Too many levels of symbolic links",
                    "assistant/chat.org: " + (fresh / "assistant").string() + ": Not a directory",
                    "reports/config.json: a different file of that name is here already"));
    EXPECT_EQ(total({2026, 9, 19}), 1);
    EXPECT_THAT(store.names("days"), ElementsAre("2026-09-19")) << "no dead file stands for what is to come";

    for (const char* gone : {"days/2026-09-21.org", "days/2026-09-23.org", "practice", "reports/config.json",
                             "days/.2026-09-20.org.icloud"})
        fs::remove(old / gone);
    fs::remove(fresh / "assistant");
    old.put("days/2026-09-20.org", counting(2));
    EXPECT_EQ(adopt(), Adoption::done);
    EXPECT_EQ(total({2026, 9, 19}), 1);
    EXPECT_EQ(total(day), 2);
}

TEST_F(AdoptionTest, TakesAllDaysAgainOnceCountsWereCleared) {
    old.put("days/2026-09-20.org", counting(2));
    fs::create_symlink("/etc/passwd", old / "days/2026-09-21.org");
    EXPECT_EQ(adopt(), Adoption::incomplete);
    store.clearCounts();
    fs::remove(old / "days/2026-09-21.org");
    EXPECT_EQ(adopt(), Adoption::done);
    EXPECT_EQ(total(day), 2);
}

TEST_F(AdoptionTest, SaysWhenADayHasChangedSinceItWasTaken) {
    old.put("days/2026-09-20.org", counting(100));
    old.put("days/.2026-09-21.org.icloud", "");
    EXPECT_EQ(adopt(), Adoption::incomplete);
    old.put("days/2026-09-20.org", counting(150));
    EXPECT_EQ(adopt(), Adoption::incomplete);
    EXPECT_THAT(
        missing,
        testing::Contains(
            "days/2026-09-20.org: has changed since it was taken over; only what it was then is here"));
    EXPECT_EQ(total(day), 100);
}

TEST_F(AdoptionTest, AddsBothFormatsOfADayAndNoneOfAMergeThatWasCutOff) {
    old.put("days/2026-09-20.org", counting(1));
    old.put("days/2026-09-20.md", counting(2));
    EXPECT_EQ(adopt(), Adoption::done);
    EXPECT_EQ(total(day), 3);
}

TEST_F(AdoptionTest, OfASharedFolderTakesAllIntoAFolderOfItsOwnAndElseItsOwnPart) {
    old.put("Air/.keys-mac", R"({"id": "1", "name": "Air"})");
    old.put("Studio/.keys-mac", R"({"id": "2", "name": "Studio"})");
    old.put("days/2026-09-20.org", counting(1));
    old.put("Air/days/2026-09-20.org", counting(10));
    old.put("Studio/days/2026-09-20.org", counting(100));
    EXPECT_EQ(adopt(), Adoption::done);
    EXPECT_EQ(total(day), 111);

    const TemporaryFolder shared;
    shared.put("Mine/.keys-mac", R"({"id": "2", "name": "Studio"})");
    store = Store(shared.path(), FileFormat::org, "Mine");
    EXPECT_EQ(adopt(), Adoption::incomplete);
    EXPECT_THAT(missing, ElementsAre("Air: another machine's: take it over there"));
    EXPECT_EQ(store.readOwn(day).tally.total(), 100);
    EXPECT_EQ(total(day), 101) << "the top is common to all";
}

TEST_F(AdoptionTest, LeavesNoOutdatedMonthThatSeemsCurrent) {
    const Day today(2026, 10, 2);
    old.put("days/2026-09-20.org", counting(1));
    Store(old.path(), FileFormat::org).refreshRollups(today);
    old.put("days/2026-09-20.org", counting(9));
    EXPECT_EQ(adopt(), Adoption::done);
    EXPECT_TRUE(store.isOutOfDate("2026-09", today));
    store.refreshRollups(today);
    EXPECT_EQ(store.readRollup("2026-09")->days[0].keystrokes, 9);
}

}  // namespace
}  // namespace tapcore
