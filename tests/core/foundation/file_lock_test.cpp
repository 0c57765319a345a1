#include "core/foundation/file_lock.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <future>
#include <optional>

namespace tapcore {
namespace {

namespace fs = std::filesystem;

class FileLockTest : public testing::Test {
  protected:
    fs::path path = fs::path(testing::TempDir()) / ("tappora-lock-" + std::to_string(::getpid()));
    ~FileLockTest() override { fs::remove(path); }
};

TEST_F(FileLockTest, IsHeldByOneAtATimeAndGivenBackAtTheEnd) {
    std::optional<FileLock> held = FileLock::tryAcquire(path);
    ASSERT_TRUE(held);
    EXPECT_FALSE(FileLock::tryAcquire(path));
    auto waiting = std::async(std::launch::async, [&] { return FileLock::acquire(path); });
    EXPECT_EQ(waiting.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
    held.reset();
    const FileLock next = waiting.get();
    EXPECT_FALSE(FileLock::tryAcquire(path));
}

TEST_F(FileLockTest, IsFreeAfterItsHolderIsKilled) {
    const pid_t holder = ::fork();
    if (holder == 0) {
        const auto held = FileLock::tryAcquire(path);
        ::raise(SIGKILL);
    }
    ::waitpid(holder, nullptr, 0);
    EXPECT_TRUE(FileLock::tryAcquire(path));
}

TEST_F(FileLockTest, NamesTheFileThatCannotBeMade) {
    const fs::path nowhere = path / "lock";
    try {
        (void)FileLock::tryAcquire(nowhere);
        FAIL() << "no error";
    } catch (const fs::filesystem_error& error) {
        EXPECT_EQ(error.path1(), nowhere);
        EXPECT_EQ(error.code(), std::errc::no_such_file_or_directory);
    }
}

}  // namespace
}  // namespace tapcore
