#include "core/files/folder_check.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "core/files/mac_folder.h"
#include "core/keyboard/layout.h"
#include "core/practice/practice_day.h"
#include "tests/support/temporary_folder.h"

namespace tapcore {
namespace {

const Day today(2026, 9, 30);

/// The findings as "FILE:LINE: WHY", paths relative to the folder.
std::vector<std::string> findings(const TemporaryFolder& folder, const Store& store) {
    const auto practiceRows = [](std::string_view text) {
        std::vector<SkippedRow> skipped;
        (void)PracticeDay(text, &skipped);
        return skipped;
    };
    std::vector<std::string> lines;
    for (const FileProblem& problem : checkFolder(store, today, practiceRows))
        lines.push_back(problem.path.lexically_relative(folder.path()).string() +
                        (problem.line > 0 ? ":" + std::to_string(problem.line) : "") + ": " + problem.why);
    return lines;
}

TEST(FolderCheck, IsSilentWhenAllIsWell) {
    const TemporaryFolder folder;
    const Store store(folder.path(), FileFormat::org);
    Tally tally;
    tally.add(KeyCode{0}, 9, 1);
    for (const Day& day : {Day{2026, 8, 31}, Day{2026, 9, 20}}) store.add(tally, 1, 1, "planck", "us", day);
    store.refreshRollups({2026, 9, 1});
    folder.put("days/.2026-07-31.org.icloud", "");
    folder.put("days/.2026-09-30.org.icloud", "");
    EXPECT_THAT(findings(folder, store), testing::IsEmpty());
}

TEST(FolderCheck, NamesEveryFindingWithItsPlace) {
    const TemporaryFolder folder;
    folder.put(".keys/config.json", "{");
    folder.put("A/.keys-mac", R"({"id": "1", "name": "A"})");
    folder.put("B/.keys-mac", R"({"id": "1", "name": "B"})");
    folder.put("C/.keys-mac", "[]");
    folder.put("A/days/2026-09-20.md", "# Keys\n\n| 9 | 0 | 5 |\n| 9 | 0 |\n");
    folder.put("A/days/2026-09-20.org", "* Day\n| note | caf\xE9 |\n");
    folder.put("A/days/2026-09-20 2.md", "");
    folder.put("A/days/2026-09-20.sync-conflict-20260921-1.md", "");
    folder.put("A/days/2026-09-20 (conflicted copy).md", "");
    folder.put("A/days/notes.md", "");
    folder.put("A/days/2026-07-31.md", "");
    folder.put("B/days/2026-07-31.md", "");
    folder.put("A/days/picture.png", "");
    folder.put("A/months/2026-09.org", "* Days\n| 2026-09-19 | 1 | 1 | 1 |\n");
    folder.put("A/months/September.org", "");
    folder.put("practice/today.md", "");
    folder.put("practice/2026-09-20 as it was.md", "");
    folder.put("practice/2026-09-20.md", "# Letters\n\n| ab | us | 5 | 0 | 5 | 900 |\n");
    std::filesystem::create_directories(folder / "B/days/2026-09-20.md");
    const auto parseError = findings(folder, Store(folder.path(), FileFormat::org, "A")).front();
    EXPECT_EQ(parseError.substr(0, 51), ".keys/config.json: parse error at line 1, column 2:");
    auto rest = findings(folder, Store(folder.path(), FileFormat::org, "A"));
    rest.erase(rest.begin());
    EXPECT_THAT(
        rest,
        testing::ElementsAre(
            "B/.keys-mac: the same id as " + (folder / "A").string(),
            "C/.keys-mac: the document: not an object: []",
            "A/days/2026-09-20 (conflicted copy).md: a copy of 2026-09-20 that another program left; "
            "it is not counted",
            "A/days/2026-09-20 2.md: a copy of 2026-09-20 that another program left; it is not counted",
            "A/days/2026-09-20.md:4: not used: a row of Keys has 3 cells: | 9 | 0 |",
            "A/days/2026-09-20.org:2: not UTF-8 text",
            "A/days/2026-09-20.org: the same is here in another format too",
            "A/days/2026-09-20.sync-conflict-20260921-1.md: a copy of 2026-09-20 that another program "
            "left; it is not "
            "counted",
            "A/days/notes.md: not named after a day (YYYY-MM-DD); it is not counted",
            "A/months/2026-09.org: out of date; tappora folder rollups makes it again",
            "A/months/September.org: not named after a month (YYYY-MM); it is not counted",
            "B/days/2026-09-20.md: Is a directory",
            "practice/2026-09-20 as it was.md: the day as it was before lines were left out; repair the "
            "day from it, then remove it",
            "practice/2026-09-20.md:3: not used: the letter is not one character: | ab | us | 5 | 0 | 5 | "
            "900 |",
            "practice/today.md: not named after a day (YYYY-MM-DD); it is not counted",
            "A/months/2026-07.org: missing; tappora folder rollups makes it"));
}

TEST(FolderCheck, SaysWhoseMonthsAreOutOfDateAndLetsAnAbsentMachineBe) {
    const TemporaryFolder folder;
    const std::string keys = "* Keys\n| 9 | 0 | 5 |\n";
    const auto month = [](std::string_view day) {
        return "* Days\n| " + std::string(day) + " | 5 | 1 | 0 | 0 |\n";
    };
    folder.put("Air/.keys-mac", R"({"id": "1", "name": "Air"})");
    folder.put("Mini/.keys-mac", R"({"id": "2", "name": "Mini"})");
    for (const char* day : {"Air/days/2026-09-19.org", "Air/days/2026-09-20.org", "Mini/days/2026-09-18.org",
                            "Mini/days/2026-09-20.org", "Book/days/2026-09-20.org", "days/2026-08-01.org",
                            "days/2026-08-02.org"})
        folder.put(day, keys);
    folder.put("Book/.keys-mac", R"({"id": "3", "name": "Book"})");
    folder.put("Book/months/2026-09.org", month("2026-09-20"));  // made on a day without typing
    folder.put("Air/months/2026-09.org", month("2026-09-19"));
    folder.put("Mini/months/2026-09.org", month("2026-09-17"));
    folder.put("months/2026-08.org", month("2026-07-31"));
    EXPECT_THAT(
        findings(folder, Store(folder.path(), FileFormat::org, "Studio")),
        testing::ElementsAre("Mini/months/2026-09.org: out of date; it is the machine Mini's: tappora "
                             "folder rollups makes it again there",
                             "months/2026-08.org: out of date; it is from before the folder was shared, "
                             "and no machine brings it up to date"));
}

TEST(FolderCheck, NamesFoldersThatCannotBeListed) {
    const TemporaryFolder folder;
    folder.put("months/2026-09.org", "* Days\n| 2026-09-19 | 5 | 1 | 0 | 0 |\n");
    std::filesystem::create_symlink("days", folder / "days");
    EXPECT_THAT(findings(folder, Store(folder.path(), FileFormat::org)),
                testing::ElementsAre("days: Too many levels of symbolic links"));
}

TEST(FolderCheck, WaitsForNoPipe) {
    const TemporaryFolder folder;
    const char* const pipes[] = {".keys/config.json", "A/.keys-mac", "days/2026-09-20.org",
                                 "days/.2026-09-19.merging", ".keys/layouts/x.json"};
    for (const char* pipe : pipes) {
        makeFolders((folder / pipe).parent_path()).requireSafe();
        ASSERT_EQ(::mkfifo((folder / pipe).c_str(), 0600), 0);
    }
    for (const char* day : {"days/2026-09-19.org", "days/2026-09-19.md"})
        folder.put(day, "* Keys\n| 9 | 0 | 5 |\n");
    const Store store(folder.path(), FileFormat::org);
    EXPECT_THAT(findings(folder, store),
                testing::ElementsAre(".keys/config.json: not a regular file; the defaults are used",
                                     "A/.keys-mac: not a regular file",
                                     "days/2026-09-19.org: the same is here in another format too",
                                     "days/2026-09-20.org: not a regular file"));
    EXPECT_EQ(store.read({2026, 9, 19}).tally.total(), 10);
    EXPECT_EQ(MacFolder::find(folder.path(), "x"), std::nullopt);
    EXPECT_THAT(store.ownLayouts(), testing::IsEmpty());
}

}  // namespace
}  // namespace tapcore
