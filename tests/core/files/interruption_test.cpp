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
                    Store::write(DayFile().text(other.format, day), other.url(day)).requireSafe();
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

/// Presses, and those of which the key is known: by day of August, the whole month by 0.
using Counts = std::map<std::int64_t, std::pair<std::int64_t, std::int64_t>>;

Counts countsOf(const Store& store) {
    Counts counts;
    for (const Day& each : store.days()) {
        const Tally tally = store.read(each).tally;
        counts[each.day] = {tally.total(), sumOfCounts(tally.byKey())};
    }
    const MonthRollup month = store.readRollup("2026-08").value_or(MonthRollup{});
    for (const auto& line : month.days) counts[0].first += line.keystrokes;
    counts[0].second = sumOfCounts(month.keys);
    return counts;
}

/// Six days in Markdown, every third in Org too, and their month.
void fill(const std::filesystem::path& folder) {
    const Store markdown(folder, FileFormat::markdown), org(folder, FileFormat::org);
    DayFile file;
    file.merge(onePress(), 0, 0);
    for (std::int64_t number = 1; number <= 6; ++number)
        for (const Store* store : {&markdown, &org})
            if (const Day each(2026, 8, number); store == &markdown || number % 3 == 0)
                Store::write(file.text(store->format, each), store->url(each)).requireSafe();
    markdown.refreshRollups(day);
}

TEST(Interruption, KilledConversionsAndResetsLoseNothingAndAreFinishedByTheNext) {
    const Counts whole = {{0, {8, 8}}, {1, {1, 1}}, {2, {1, 1}}, {3, {2, 2}},
                          {4, {1, 1}}, {5, {1, 1}}, {6, {2, 2}}};
    Counts keyless = whole;
    for (auto& [number, counts] : keyless) counts.second = 0;
    const std::pair<void (*)(const Store&), const Counts&> works[] = {
        {[](const Store& store) { store.convert(); }, whole},
        {[](const Store& store) { store.resetHeatmap(); }, keyless}};
    std::mt19937 random(20260920);
    for (const auto& [run, done] : works) {
        std::chrono::microseconds::rep longest = 0;  // the first round, which is not killed
        for (unsigned round = 0; round < 15; ++round) {
            const TemporaryFolder folder;
            fill(folder.path());
            const Store store(folder.path(), FileFormat::org);
            const auto start = std::chrono::steady_clock::now();
            const pid_t child = spawn([&, work = run] { work(store); });
            if (round > 0) {
                usleep(static_cast<unsigned>(random()) % static_cast<unsigned>(longest));
                kill(child, SIGKILL);
            }
            waitpid(child, nullptr, 0);
            const auto taken = std::chrono::steady_clock::now() - start;
            if (round == 0) longest = taken / std::chrono::microseconds(1);
            for (const auto& [number, counts] : countsOf(store))
                EXPECT_TRUE(counts == whole.at(number) || counts == done.at(number)) << number;
            run(store);
            EXPECT_EQ(countsOf(store), done);
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
