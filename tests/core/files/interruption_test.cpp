// Writers that are killed, and writers that race.

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <functional>
#include <map>
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

/// What a folder's finished days of August hold, day by day and in their month.
struct Counts {
    std::map<std::int64_t, std::int64_t> presses;
    std::map<std::int64_t, std::int64_t> keys;  ///< those of which it is known which key
    std::map<std::int64_t, std::int64_t> monthPresses;
    std::int64_t monthKeys = 0;

    explicit Counts(const Store& store) {
        for (const Day& each : store.days()) {
            const Tally tally = store.read(each).tally;
            presses[each.day] = tally.total();
            keys[each.day] = sumOfCounts(tally.byKey());
        }
        const MonthRollup month = store.readRollup("2026-08").value_or(MonthRollup{});
        for (const auto& line : month.days) monthPresses[line.day.day] = line.keystrokes;
        monthKeys = sumOfCounts(month.keys);
    }
};

/// Six days in Markdown, every third in Org too, and their month.
void fill(const std::filesystem::path& folder) {
    const Store markdown(folder, FileFormat::markdown), org(folder, FileFormat::org);
    DayFile file;
    file.merge(onePress(), 0, 0);
    for (std::int64_t number = 1; number <= 6; ++number) {
        const Day each(2026, 8, number);
        Store::write(file.text(markdown.format, each), markdown.url(each));
        if (number % 3 == 0) Store::write(file.text(org.format, each), org.url(each));
    }
    markdown.refreshRollups(day);
}

TEST(Interruption, KilledConversionsAndResetsLoseNothingAndAreFinishedByTheNext) {
    const struct {
        const char* name;
        void (*run)(const Store&);
        bool forgetsKeys;
    } works[] = {{"convert", [](const Store& store) { store.convert(); }, false},
                 {"reset", [](const Store& store) { store.resetHeatmap(); }, true}};
    std::mt19937 random(20260920);
    for (const auto& work : works) {
        unsigned longest = 0;  // in microseconds: what the whole work takes
        for (int round = 0; round < 15; ++round) {
            SCOPED_TRACE(std::string(work.name) + " " + std::to_string(round));
            const TemporaryFolder folder;
            fill(folder.path());
            const Store store(folder.path(), FileFormat::org);
            const Counts before(store);
            const auto start = std::chrono::steady_clock::now();
            const pid_t child = spawn([&] { work.run(store); });
            if (round > 0) {
                usleep(static_cast<unsigned>(random()) % longest);
                kill(child, SIGKILL);
            }
            waitpid(child, nullptr, 0);
            const auto taken = std::chrono::steady_clock::now() - start;
            if (round == 0) longest = static_cast<unsigned>(taken / std::chrono::microseconds(1));

            const Counts killed(store);
            EXPECT_EQ(killed.presses, before.presses);
            EXPECT_EQ(killed.monthPresses, before.monthPresses);
            for (const auto& [number, keys] : killed.keys)
                EXPECT_TRUE(keys == before.keys.at(number) || (work.forgetsKeys && keys == 0)) << number;
            EXPECT_TRUE(killed.monthKeys == before.monthKeys || (work.forgetsKeys && killed.monthKeys == 0));

            work.run(store);
            const Counts after(store);
            EXPECT_EQ(after.presses, before.presses);
            EXPECT_EQ(after.monthPresses, before.monthPresses);
            EXPECT_EQ(after.monthKeys, work.forgetsKeys ? 0 : before.monthKeys);
            EXPECT_EQ(after.keys.at(3), work.forgetsKeys ? 0 : 2);
            EXPECT_EQ(folder.files().size(), 7U) << "one file for each day and one for the month";
        }
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
