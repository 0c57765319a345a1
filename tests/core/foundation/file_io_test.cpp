#include "core/foundation/file_io.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <thread>

#include "tests/support/refused_locks.h"
#include "tests/support/temporary_folder.h"

namespace tapcore {
namespace {

/// Writes in a process of its own, after `prepare`, and ends with 0. When it is not done, or done and not yet
/// safe, prints why and ends with 1 or 3.
void writeAndExit(const std::filesystem::path& path, std::string_view text, void (*prepare)()) {
    prepare();
    try {
        const Written written = writeFile(path, text);
        if (written.isSafe()) std::_Exit(0);
        std::fprintf(stderr, "%s: %s\n", written.path.c_str(), written.error.message().c_str());
        std::_Exit(3);
    } catch (const std::filesystem::filesystem_error& error) {
        std::fprintf(stderr, "%s: %s\n", error.path1().c_str(), error.code().message().c_str());
        std::_Exit(1);
    }
}

/// A disk on which no file may grow beyond 1000 bytes.
void fillDisk() {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{1000, 1000};
    setrlimit(RLIMIT_FSIZE, &limit);
}

/// The rights of a user to whom nothing here belongs.
void becomeNobody() {
    if (getuid() == 0 && setuid(65534) != 0) std::_Exit(2);
}

TEST(WriteFileDeathTest, AFullDiskLeavesTheOldFileAndNothingElse) {
    const TemporaryFolder folder;
    folder.put("day.md", "old");
    EXPECT_EXIT(writeAndExit(folder / "day.md", std::string(5000, 'x'), fillDisk), testing::ExitedWithCode(1),
                "day.md: File too large");
    EXPECT_EQ(folder.files(), (std::map<std::string, std::string>{{"day.md", "old"}}));
}

TEST(WriteFileDeathTest, AFolderThatRefusesIsNamed) {
    const TemporaryFolder folder;
    folder.put("days/day.md", "old");
    ::chmod((folder / "days").c_str(), 0555);
    ::chmod(folder.path().c_str(), 0555);
    EXPECT_EXIT(writeAndExit(folder / "days/day.md", "new", becomeNobody), testing::ExitedWithCode(1),
                "day.md: Permission denied");
    EXPECT_EXIT(writeAndExit(folder / "more/day.md", "new", becomeNobody), testing::ExitedWithCode(1),
                "more: Permission denied");
    EXPECT_EQ(folder.files().size(), 1U);
}

TEST(WriteFileDeathTest, WhatIsInPlaceIsDoneThoughTheFolderCannotBeFlushed) {
    const TemporaryFolder folder;
    folder.put("day.md", "old");
    ::chmod(folder.path().c_str(), 0333);  // nobody may open it, and anybody may rename in it
    EXPECT_EXIT(writeAndExit(folder / "day.md", "new", becomeNobody), testing::ExitedWithCode(3),
                "tappora-test-[^/]*: Permission denied");
    ::chmod(folder.path().c_str(), 0777);
    EXPECT_EQ(folder.files(), (std::map<std::string, std::string>{{"day.md", "new"}}));
}

TEST(WriteFileDeathTest, RemovesWhatACrashLeftAlsoWhereFilesHaveNoLocks) {
    const TemporaryFolder folder;
    folder.put(".tappora.tmp", "half of a text");
    const auto withoutLocks = [] { refusedLocks = RefusedLocks::all; };
    EXPECT_EXIT(writeAndExit(folder / "day.md", "new", withoutLocks), testing::ExitedWithCode(0), "");
    EXPECT_EQ(folder.files(), (std::map<std::string, std::string>{{"day.md", "new"}}));
}

TEST(WriteFile, RemovesWhatACrashLeftAndWaitsForALivingWriter) {
    const TemporaryFolder folder;
    const auto temporary = folder / ".tappora.tmp";
    folder.put(".tappora.tmp", "half of a text");
    writeFile(folder / "day.md", "new").requireSafe();
    EXPECT_EQ(folder.files().size(), 1U);

    ASSERT_EQ(::mkfifo(temporary.c_str(), 0600), 0);
    writeFile(folder / "day.md", "past a pipe that nobody reads").requireSafe();
    EXPECT_EQ(folder.files().size(), 1U);

    folder.put(".tappora.tmp", "first");
    const int living = ::open(temporary.c_str(), O_RDWR);
    ASSERT_EQ(::flock(living, LOCK_EX), 0);
    std::thread second([&] { writeFile(folder / "day.md", "second").requireSafe(); });
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_EQ(folder.text(".tappora.tmp"), "first");
    std::filesystem::rename(temporary, folder / "day.md");
    ::close(living);
    second.join();
    EXPECT_EQ(folder.text("day.md"), "second");
    EXPECT_EQ(folder.files().size(), 1U);
}

TEST(WriteFile, ReplacesALinkAndNotWhatItLeadsTo) {
    const TemporaryFolder folder, elsewhere;
    elsewhere.put("file", "theirs");
    std::filesystem::create_symlink(elsewhere / "file", folder / "day.md");
    writeFile(folder / "day.md", "ours").requireSafe();
    EXPECT_EQ(elsewhere.text("file"), "theirs");
    EXPECT_EQ(folder.text("day.md"), "ours");
}

TEST(WriteFile, SaysWhichFolderCannotBeMade) {
    const TemporaryFolder folder;
    folder.put("days", "a file");
    try {
        writeFile(folder / "days/2026/day.md", "x").requireSafe();
        FAIL();
    } catch (const std::filesystem::filesystem_error& error) {
        EXPECT_EQ(error.path1(), folder / "days");
        EXPECT_EQ(error.code(), std::errc::not_a_directory);
    }
}

TEST(ReadFile, TellsMissingFromUnreadableAndStripsAByteOrderMark) {
    const TemporaryFolder folder;
    folder.put("marked", "\xEF\xBB\xBF# Keys");
    EXPECT_EQ(readFile(folder / "marked").text, "# Keys");
    EXPECT_EQ(readBytes(folder / "marked").text.size(), 9U);
    EXPECT_EQ(readFile(folder / "missing").status, FileRead::Status::missing);
    EXPECT_EQ(readFile(folder / "marked/below").status, FileRead::Status::missing);
    EXPECT_EQ(readFile(folder.path()).error, std::errc::is_a_directory);
    EXPECT_EQ(readFile("/proc/self/status").text.substr(0, 5), "Name:") << "a file that says it is empty";
}

}  // namespace
}  // namespace tapcore
