#include "core/files/restoring.h"

#include <gmock/gmock.h>
#include <sys/resource.h>

#include <csignal>

#include "tests/support/temporary_folder.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

std::string keys(int count) { return "* Keys\n| 9 | 0 | " + std::to_string(count) + " |\n"; }

const Day day(2026, 9, 19);
const std::string name = "days/2026-09-19.org";

class Restoring : public testing::Test {
  protected:
    Restored restore(const std::vector<KeptFile>& files, DaysHere days = DaysHere::left,
                     const Progress& progress = {}) {
        FileProblems problems;
        const Restored outcome = tapcore::restore(files, store, days, progress, problems);
        left.clear();
        for (const FileProblem& problem : problems)
            left.push_back(problem.path.lexically_relative(folder.path()).string() + ": " + problem.why);
        return outcome;
    }
    std::int64_t total() const { return store.read(day).tally.total(); }

    TemporaryFolder folder;
    Store store{folder.path(), FileFormat::org};
    std::vector<std::string> left;
};

TEST_F(Restoring, AddsADayOnceWhateverIsCountedIntoItLater) {
    folder.put(name, keys(1));
    EXPECT_TRUE(restore({{name, keys(100)}}).mayAdd);
    EXPECT_THAT(left, ElementsAre(name + ": here with other counts"));
    EXPECT_EQ(total(), 1);
    EXPECT_EQ(restore({{name, keys(100)}}, DaysHere::added).added, 1U);
    EXPECT_EQ(total(), 101);
    Tally more;
    more.add(KeyCode{1}, 10, 5);
    store.add(more, 0, 0, {}, {}, day);
    for (const DaysHere days : {DaysHere::left, DaysHere::added}) {
        EXPECT_EQ(restore({{name, keys(100)}}, days).same, 1U);
        EXPECT_THAT(left, IsEmpty());
        EXPECT_EQ(total(), 106);
    }
}

TEST_F(Restoring, KnowsADayInAnotherFormatAsTheSame) {
    folder.put("days/2026-09-19.md", "## Keys\n| 9 | 0 | 100 |\n");
    EXPECT_EQ(restore({{name, keys(100)}}, DaysHere::added).same, 1U);
    EXPECT_EQ(total(), 100);
}

TEST_F(Restoring, StoppedAnywhereLeavesWhatWasThereAndEndsTheSame) {
    const std::vector<KeptFile> files = {{name, keys(100)},
                                         {"days/2026-09-18.org", keys(7)},
                                         {"practice/2026-09-19.org", "* Letters\n"},
                                         {"reports/2026-09.org", "a report"}};
    for (std::size_t stop = 0; stop <= files.size(); ++stop) {
        const TemporaryFolder fresh;
        const Store into(fresh.path(), FileFormat::org);
        fresh.put("days/2026-09-01.org", keys(3));
        FileProblems problems;
        const auto stops = [&](std::size_t done, std::size_t) { return done < stop; };
        EXPECT_EQ(tapcore::restore(files, into, DaysHere::left, stops, problems).isWhole,
                  stop == files.size());
        EXPECT_EQ(fresh.text("days/2026-09-01.org"), keys(3));
        const auto rest = tapcore::restore(files, into, DaysHere::left, {}, problems);
        EXPECT_EQ(rest.placed + rest.same, files.size());
        EXPECT_THAT(problems, IsEmpty());
        for (const KeptFile& file : files) EXPECT_EQ(fresh.text(file.name), file.text) << stop;
    }
}

TEST_F(Restoring, ReplacesNoReportAndTakesNoBrokenSettings) {
    folder.put("reports/2026-09.org", "mine");
    const Restored outcome =
        restore({{"reports/2026-09.org", "theirs"}, {".keys/config.json", "{\"board\": 7}"}});
    EXPECT_EQ(outcome.placed, 0U);
    EXPECT_THAT(left, testing::UnorderedElementsAre(
                          "reports/2026-09.org: a different file of that name is here already",
                          ".keys/config.json: not settings of a folder: board: not a string: 7"));
    EXPECT_EQ(folder.text("reports/2026-09.org"), "mine");
    EXPECT_FALSE(fs::exists(folder / ".keys/config.json"));
}

TEST_F(Restoring, TakesAMonthOnlyWithoutItsDays) {
    const std::string month = "* Days\n| 2026-08-31 | 5 | 1 | 0 | 0 |\n";
    EXPECT_EQ(restore({{"months/2026-08.org", month}}).placed, 1U);
    folder.put("days/2026-07-31.org", keys(1));
    EXPECT_EQ(restore({{"months/2026-07.org", month}}).placed, 0U);
    EXPECT_THAT(left, IsEmpty());
}

TEST(RestoringDeathTest, EndsAtOnceWhenTheDiskIsFull) {
    const TemporaryFolder folder;
    const Store store(folder.path(), FileFormat::org);
    const auto onFullDisk = [&] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit = {2000, 2000};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        FileProblems left;
        try {
            const std::string large(3000, 'x');
            (void)restore({{"reports/a.md", large}, {"reports/b.md", large}}, store, DaysHere::left, {},
                          left);
        } catch (const fs::filesystem_error& error) {
            std::fprintf(stderr, "%s: %s\n", error.path1().filename().c_str(),
                         error.code().message().c_str());
        }
        std::_Exit(static_cast<int>(left.size()));
    };
    EXPECT_EXIT(onFullDisk(), testing::ExitedWithCode(0), "a.md: File too large");
}

}  // namespace
}  // namespace tapcore
