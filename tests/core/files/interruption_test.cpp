// Writers that are killed, and writers that race.

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <random>

#include "core/files/store.h"
#include "core/foundation/file_lock.h"
#include "tests/support/temporary_folder.h"

namespace tapcore {
namespace {

const Day day(2026, 9, 20);

Tally onePress() {
    Tally tally;
    tally.add(KeyCode{0}, 9, 1);
    return tally;
}

/// Runs work in a process of its own.
pid_t spawn(const std::function<void()>& work) {
    const pid_t child = fork();
    if (child != 0) return child;
    work();
    std::_Exit(0);
}

/// A process that adds one press after the other, in changing formats, and says in a pipe how many are
/// stored.
class Writer {
  public:
    explicit Writer(const std::filesystem::path& folder) {
        if (pipe(ends_) != 0) std::abort();
        child_ = spawn([&] {
            for (std::uint32_t count = 0;; ++count) {
                const FileFormat format = count % 3 == 0 ? FileFormat::markdown : FileFormat::org;
                Store(folder, format).add(onePress(), 0, 0, {}, {}, day);
                if (count % 5 == 4) {  // a second copy, as a machine of another format leaves it
                    const Store other(folder,
                                      format == FileFormat::org ? FileFormat::markdown : FileFormat::org);
                    Store::write(DayFile().text(other.format, day), other.url(day));
                }
                if (write(ends_[1], "x", 1) != 1) std::_Exit(1);
            }
        });
        close(ends_[1]);
    }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    /// Kills it after so long; how many presses it said were stored.
    std::int64_t killAfter(unsigned microseconds) {
        usleep(microseconds);
        kill(child_, SIGKILL);
        waitpid(child_, nullptr, 0);
        std::int64_t stored = 0;
        for (char byte; read(ends_[0], &byte, 1) == 1;) ++stored;
        close(ends_[0]);
        return stored;
    }

  private:
    int ends_[2] = {};
    pid_t child_ = 0;
};

TEST(Interruption, AKilledWriterLeavesTheOldDayOrTheNewOne) {
    std::mt19937 random(20260920);
    for (int round = 0; round < 60; ++round) {
        const TemporaryFolder folder;
        const std::int64_t stored =
            Writer(folder.path()).killAfter(2000 + static_cast<unsigned>(random() % 30000));
        const Store store(folder.path(), FileFormat::org);
        const std::int64_t read = store.read(day).tally.total();
        EXPECT_TRUE(read == stored || read == stored + 1) << read << " of " << stored;
        store.add(onePress(), 0, 0, {}, {}, day);
        EXPECT_EQ(store.read(day).tally.total(), read + 1);
        for (const auto& [name, text] : folder.files())
            EXPECT_EQ(name.find(".tmp"), std::string::npos) << name << " was left behind";
    }
}

TEST(Interruption, TwoProcessesThatTakeTurnsLoseNothing) {
    constexpr int presses = 1000;
    const TemporaryFolder folder, runtime;
    const auto add = [&] {
        for (int i = 0; i < presses; ++i) {
            const FileLock lock = FileLock::acquire(runtime / "writing");
            Store(folder.path(), FileFormat::org).add(onePress(), 0, 0, {}, {}, day);
        }
    };
    for (const pid_t child : {spawn(add), spawn(add)}) waitpid(child, nullptr, 0);
    EXPECT_EQ(Store(folder.path(), FileFormat::org).read(day).tally.total(), 2 * presses);
}

}  // namespace
}  // namespace tapcore
