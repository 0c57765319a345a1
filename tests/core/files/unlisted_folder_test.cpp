#include <gmock/gmock.h>

#include "core/files/data_listing.h"
#include "core/files/store.h"
#include "core/foundation/folder_listing.h"
#include "tests/support/temporary_folder.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

const Day today(2026, 10, 2);

/// Puts something in a folder's place that cannot be listed, by no user: a file.
void makeUnlistable(const fs::path& folder) {
    fs::rename(folder, folder.string() + " aside");
    (void)writeFile(folder, "");
}

TEST(CloudPlaceholder, IsNotTakenForMissingWhereItCannotBeLookedAt) {
    const TemporaryFolder folder;
    fs::create_symlink("days", folder / "days");  // leads to itself
    EXPECT_THROW((void)isOnlyInCloud(folder / "days/2026-09-20.org"), fs::filesystem_error);
}

TEST(FolderListing, TellsAMissingFolderFromOneThatCannotBeListed) {
    const TemporaryFolder folder;
    folder.put("full/b", "");
    folder.put("full/a", "");
    folder.put("file", "");
    fs::create_directory(folder / "empty");
    fs::create_symlink("loop", folder / "loop");
    fs::create_symlink("not mounted", folder / "dangling");
    using Status = FolderListing::Status;
    const struct {
        const char* name;
        Status status;
        std::vector<std::string> names;
        std::string error;
    } cases[] = {{"full", Status::listed, {"a", "b"}, ""},
                 {"empty", Status::listed, {}, ""},
                 {"nowhere", Status::missing, {}, ""},
                 {"file/below", Status::missing, {}, ""},
                 {"file", Status::unreadable, {}, "Not a directory"},
                 {"dangling", Status::unreadable, {}, "No such file or directory"},
                 {"loop", Status::unreadable, {}, "Too many levels of symbolic links"}};
    for (const auto& [name, status, names, error] : cases) {
        const FolderListing listing = listFolder(folder / name);
        EXPECT_EQ(listing.status, status) << name;
        EXPECT_EQ(listing.names, names) << name;
        EXPECT_EQ(status == Status::unreadable ? listing.error.message() : "", error) << name;
        EXPECT_EQ(static_cast<bool>(whyUnlisted(folder / name)), status == Status::unreadable) << name;
        if (status != Status::unreadable) continue;
        try {
            (void)makeFolders(folder / name);
        } catch (const fs::filesystem_error& made) {
            EXPECT_EQ(made.code().message(), error) << name;
        }
    }
}

/// A folder with a day, its month and a day of practice, all of which can be lost.
class UnlistedFolder : public testing::TestWithParam<std::string> {
  protected:
    void SetUp() override {
        Tally tally;
        tally.add(KeyCode{0}, 9, 10);
        store.add(tally, 1, 1, std::nullopt, std::nullopt, {2026, 9, 20});
        store.refreshRollups(today);
        folder.put("practice/2026-09-20.org", "* Letters\n");
        makeUnlistable(folder / GetParam());
        before = folder.files();
    }

    TemporaryFolder folder;
    Store store{folder.path(), FileFormat::org};
    std::map<std::string, std::string> before;
};

TEST_P(UnlistedFolder, StopsWhatDestroysBeforeItsFirstChange) {
    const Store markdown(folder.path(), FileFormat::markdown);
    const std::vector<std::pair<std::set<std::string>, std::function<void()>>> destroyers = {
        {{"days", "months"}, [&] { store.refreshRollups(today); }},
        {{"days", "months"}, [&] { store.clearCounts(); }},
        {{"days", "months", "practice"}, [&] { store.clearAll(); }},
        {{"days", "months"}, [&] { store.resetHeatmap(); }},
        {{"practice"}, [&] { store.resetPractice(); }},
        {{"days"},
         [&] {
             store.clearDay({2026, 9, 20});
         }},
        {{"days", "months", "practice"}, [&] { markdown.convert(); }}};
    for (std::size_t i = 0; i < destroyers.size(); ++i) {
        const auto& [needed, destroy] = destroyers[i];
        if (!needed.contains(GetParam())) continue;
        try {
            destroy();
            ADD_FAILURE() << "done all the same: " << i;
        } catch (const fs::filesystem_error& error) {
            EXPECT_EQ(error.path1(), folder / GetParam()) << i;
        }
        EXPECT_EQ(folder.files(), before) << i;
    }
}

TEST_P(UnlistedFolder, IsNamedByReadersOnce) {
    FileProblems problems;
    EXPECT_THAT(store.names(GetParam(), &problems), IsEmpty());
    const FileProblem named{folder / GetParam(), 0, "Not a directory"};
    EXPECT_THAT(problems, ElementsAre(named));
    if (GetParam() != "days") return;
    for (const std::int64_t days : {7, 60}) {
        problems.clear();
        EXPECT_TRUE(store.summary(days, {2026, 9, 20}, Calendar("UTC"), &problems).isEmpty());
        EXPECT_THAT(problems, ElementsAre(named));
    }
}

INSTANTIATE_TEST_SUITE_P(Each, UnlistedFolder, testing::Values("days", "months", "practice"));

TEST(DataListing, TakesAPlaceholderForAFileToComeUnlessThatIsThere) {
    const TemporaryFolder folder;
    for (const char* name :
         {".2026-09-17.org.icloud", ".2026-09-18.org.icloud", "2026-09-18.org", ".2026-09-18.md.icloud"})
        folder.put(name, "");
    std::vector<std::string> listed;
    for (const ListedFile& file : allDataFiles(folder.path()))
        listed.push_back(file.fileName() + (file.isHere ? "" : " to come"));
    EXPECT_THAT(listed, ElementsAre("2026-09-17.org to come", "2026-09-18.md to come", "2026-09-18.org"));
}

TEST(DataListing, NamesDaysAndMonthsExactlyAsTheyAreWritten) {
    for (const char* day : {"2026-09-20", "2026-02-31"}) EXPECT_TRUE(isDayName(day)) << day;
    for (const char* none :
         {"2026-09--20", "+026-09-20", "2026-+9-20", "2026-13-01", "2026-09-2", "2026-09-20 "})
        EXPECT_FALSE(isDayName(none)) << none;
    EXPECT_TRUE(isMonthName("2026-09"));
    for (const char* none : {"2026-+9", "+026-09", "2026-00", "2026-13", "2026-9", "-026-09"})
        EXPECT_FALSE(isMonthName(none)) << none;
}

}  // namespace
}  // namespace tapcore
