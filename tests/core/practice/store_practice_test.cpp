#include <gtest/gtest.h>

#include <filesystem>

#include "core/files/store.h"
#include "core/foundation/folder_listing.h"
#include "core/practice/practice_day.h"
#include "core/practice/practice_history.h"
#include "tests/support/temporary_folder.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;

class StorePractice : public testing::Test {
  protected:
    static PracticeDay practised(std::int64_t presses, std::string layout = "qwerty") {
        PracticeDay day;
        day.add(layout, "e", {presses, 0, presses, presses * 200, 1});
        day.seconds = presses;
        day.layout = std::move(layout);
        day.best = presses;
        day.bests[*day.layout] = presses;
        return day;
    }

    const TemporaryFolder folder;
    const fs::path& root = folder.path();
    const Day today{2026, 9, 20};
};

TEST_F(StorePractice, AddsToTheOwnFileAlone) {
    const Store studio(root, FileFormat::markdown, "Studio");
    writeFile(root / "Laptop/.keys-mac", "{}").requireSafe();
    writeFile(root / "Laptop/practice/2026-09-20.org", practised(5, "dvorak").text(today, FileFormat::org))
        .requireSafe();
    writeFile(root / "Studio/practice/2026-09-20.org", practised(1).text(today, FileFormat::org))
        .requireSafe();

    studio.addPractice(practised(2, "azerty"), today);

    EXPECT_EQ(studio.practiceURL(today), root / "Studio/practice/2026-09-20.md");
    EXPECT_EQ(namesIn(root / "Studio/practice"), std::vector<std::string>{"2026-09-20.md"});
    const PracticeDay own(readFile(studio.practiceURL(today)).text);
    EXPECT_EQ(own.layout, "azerty");
    EXPECT_EQ(own.letters.at("e"), (LetterStats{3, 0, 3, 600, 1}));
    const PracticeDay all = studio.readPractice(today);
    EXPECT_EQ(all.letters.at("e"), (LetterStats{8, 0, 8, 1600, 1}));
    EXPECT_EQ(all.best, 5);
}

TEST_F(StorePractice, RefusesToReplaceWhatItCannotRead) {
    const Store store(root, FileFormat::org);
    writeFile(store.practiceURL(today),
              "* Letters\n| \xFF | - | 1 | 1 | 1 | 1 |\n| e | - | 1 | 1 | 1 | 1 |\n")
        .requireSafe();
    EXPECT_THROW(store.addPractice(practised(1), today), fs::filesystem_error);
    FileProblems problems;
    EXPECT_EQ(store.readPractice(today, &problems).letters.at("e").presses, 1);
    ASSERT_EQ(problems.size(), 1U);
    EXPECT_EQ(problems[0].path, store.practiceURL(today));
}

TEST_F(StorePractice, KeepsAFileAsItWasWhenADayCannotHoldAllOfIt) {
    const Store store(root, FileFormat::org);
    const std::string edited = practised(1).text(today, FileFormat::markdown) + "\nA sore thumb.\n";
    for (const char* name : {"2026-09-20 as it was", "2026-09-20 as it was 2"}) {
        const std::string kept = std::string("practice/") + name + ".md";
        folder.put("practice/2026-09-20.md", edited + name);
        FileProblems problems;
        store.addPractice(practised(2), today, &problems);
        store.addPractice(practised(2), today, &problems);
        const fs::path path = root / "practice/2026-09-20.md";
        const std::string why = "left out: it is not in the tables Letters and Day: ";
        EXPECT_EQ(problems,
                  (FileProblems{{path, 19, why + "A sore thumb."},
                                {path, 20, why + name},
                                {path, 0, "the old file is kept as " + fs::path(kept).filename().string()}}));
        EXPECT_EQ(folder.text(kept), edited + name);
    }
    EXPECT_EQ(store.readPractice(today).letters.at("e").presses, 10);
    EXPECT_EQ(store.practiceDays(), std::vector<Day>{today});
    store.resetPractice();
    EXPECT_TRUE(folder.files().empty());
}

TEST_F(StorePractice, ConvertsToTheOtherFormatAndBack) {
    const std::string before = practised(7).text(today, FileFormat::markdown);
    writeFile(root / "practice/2026-09-20.md", before).requireSafe();
    const Store org(root, FileFormat::org);
    ASSERT_TRUE(org.needsConversion());
    ASSERT_TRUE(org.convert());
    EXPECT_EQ(folder.files(), (std::map<std::string, std::string>{
                                  {"practice/2026-09-20.org", practised(7).text(today, FileFormat::org)}}));
    ASSERT_TRUE(Store(root, FileFormat::markdown).convert());
    EXPECT_EQ(folder.text("practice/2026-09-20.md"), before);
}

TEST_F(StorePractice, SumsUpDays) {
    const Store store(root, FileFormat::org);
    store.addPractice(practised(10), today);
    store.addPractice(practised(30), {2026, 9, 18});
    store.addPractice(practised(40, "dvorak"), {2026, 8, 1});
    writeFile(root / "practice/notes.md", "").requireSafe();

    EXPECT_EQ(store.practiceDays(), (std::vector<Day>{{2026, 8, 1}, {2026, 9, 18}, today}));
    const PracticeHistory history = store.practiceHistory();
    EXPECT_EQ(history.totals("qwerty").at("e"), (LetterStats{40, 0, 40, 8000, 2}));
    EXPECT_EQ(history.totals(std::nullopt).at("e").days, 3);
    EXPECT_EQ(history.recent({2026, 9, 19}, "qwerty").at("e").presses, 10);
    EXPECT_EQ(history.best(std::nullopt), 40);
    EXPECT_EQ(history.best("qwerty"), 30);
    EXPECT_EQ(history.bestSince({2026, 9, 19}, "qwerty"), 10);
    EXPECT_TRUE(history.reached({2026, 9, 18}, 30));
    EXPECT_FALSE(history.reached({2026, 9, 18}, 31));
    EXPECT_FALSE(history.reached({2026, 9, 17}, 0));
}

}  // namespace
}  // namespace tapcore
