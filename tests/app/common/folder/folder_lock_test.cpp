#include "app/common/folder/folder_lock.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "tests/support/environment.h"
#include "tests/support/refused_locks.h"
#include "tests/support/temporary_folder.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;
using Reach = FolderLock::Reach;

Environment sessionIn(const fs::path& runtime) { return environmentWith({{"XDG_RUNTIME_DIR", runtime}}); }

TEST(FolderLock, IsOneForAllNamesAndAllSessionsAndMakesNothing) {
    const tapcore::TemporaryFolder base;
    fs::create_directories(base / "data/days");
    fs::create_directory_symlink(base / "data", base / "link");
    const auto held = lockForWriting(sessionIn(base / "run"), base / "data");
    EXPECT_EQ(held.reach, Reach::machine);
    for (const char* name : {"data", "data/", "./data/../data", "link", "link/"})
        EXPECT_FALSE(tryLockForWriting(sessionIn(base / "other"), base / name)) << name;
    EXPECT_TRUE(tryLockForWriting(sessionIn(base / "run"), base.path()));

    const auto recorder = tryLockForRecording(sessionIn(base / "run"), base / "data/days");
    EXPECT_TRUE(recorder) << "writers and recorders do not wait for each other";
    EXPECT_FALSE(tryLockForRecording(sessionIn(base / "other"), base / "link/days"));
    EXPECT_TRUE(base.files().empty());
}

TEST(FolderLock, IsOnTheFolderThatHasTheNameOnceItIsFree) {
    const tapcore::TemporaryFolder base;
    fs::create_directory(base / "data");
    std::optional<FolderLock> held = lockForWriting(sessionIn(base / "run"), base / "data");
    int told[2];
    ASSERT_EQ(::pipe(told), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        held.reset();  // its copy of the opened folder, which would hold the lock too
        (void)!::write(told[1], "x", 1);
        const auto waited = lockForWriting(sessionIn(base / "run"), base / "data");
        std::_Exit(tryLockForWriting(sessionIn(base / "run"), base / "data") ? 1 : 0);
    }
    char byte;
    ASSERT_EQ(::read(told[0], &byte, 1), 1);
    fs::rename(base / "data", base / "old");
    fs::create_directory(base / "data");
    held.reset();
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
}

TEST(FolderLockDeathTest, IsInTheRuntimeDirectoryWhereFoldersHaveNone) {
    const tapcore::TemporaryFolder base;
    fs::create_directory(base / "data");
    const auto tryBoth = [&] {
        refusedLocks = RefusedLocks::ofFolders;
        const auto held = lockForWriting(sessionIn(base.path()), base / "data");
        complainOfReach(held, base / "data");
        std::_Exit(held.reach == Reach::session ? 0 : 1);
    };
    EXPECT_EXIT(tryBoth(), testing::ExitedWithCode(0),
                "data: its file system has no locks; see that no service, no other user and no sandbox "
                "writes in it at the same time");
}

}  // namespace
}  // namespace tappora
