#include "core/reports/report.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/temporary_folder.h"

namespace tapcore {
namespace {

TEST(Report, TellsOfARecordOnlyAmongDaysThatItAllLookedAt) {
    TemporaryFolder folder;
    const auto put = [&](const Day& day, int presses) {
        folder.put("days/" + day.description() + ".org",
                   "* Keys\n| 9 | 0 | " + std::to_string(presses) + " |\n");
    };
    const Day sunday(2026, 9, 20);
    for (std::int64_t before = 0; before < 70; ++before) put(daysLater(sunday, -before), 100);
    put({2026, 9, 18}, 200);
    put({2025, 9, 16}, 150);  // in the week of a year ago, which is read to compare with

    const Report report = reportOf({folder.path(), FileFormat::org},
                                   {.period = ReportPeriod::containing(ReportPeriod::Kind::week, sunday),
                                    .today = {2026, 9, 21},
                                    .keyboard = {Board{.id = "none"}, "", "", {}}});
    const auto record = std::find_if(report.findings.begin(), report.findings.end(),
                                     [](const Finding& each) { return each.kind == Finding::Kind::record; });
    ASSERT_NE(record, report.findings.end());
    EXPECT_EQ(record->day, Day(2026, 9, 18));
    EXPECT_EQ(record->stretches.back().first, Day(2026, 7, 20)) << "the first of eight weeks before";
}

TEST(Report, TellsOfNoRecordWhereSeveralDaysHaveAsMuch) {
    TemporaryFolder folder;
    const Day sunday(2026, 9, 20);
    for (std::int64_t before = 0; before < 70; ++before)
        folder.put("days/" + daysLater(sunday, -before).description() + ".org", "* Keys\n| 9 | 0 | 100 |\n");
    const Report report = reportOf({folder.path(), FileFormat::org},
                                   {.period = ReportPeriod::containing(ReportPeriod::Kind::week, sunday),
                                    .today = {2026, 9, 21},
                                    .keyboard = {Board{.id = "none"}, "", "", {}}});
    EXPECT_TRUE(std::none_of(report.findings.begin(), report.findings.end(),
                             [](const Finding& each) { return each.kind == Finding::Kind::record; }));
}

TEST(Report, ComparesMonthsAsWholesAndNoPeriodWithItself) {
    TemporaryFolder folder;
    for (Day day(2024, 1, 1); day <= Day(2026, 2, 28); day = daysLater(day, 1))
        folder.put("days/" + day.description() + ".org", "* Keys\n| 9 | 0 | 10 |\n");
    const auto of = [&](const ReportPeriod& period) {
        return reportOf(
            {folder.path(), FileFormat::org},
            {.period = period, .today = {2026, 3, 1}, .keyboard = {Board{.id = "none"}, "", "", {}}});
    };
    const Report february = of(ReportPeriod::containing(ReportPeriod::Kind::month, {2026, 2, 1}));
    ASSERT_TRUE(february.before && february.yearBefore);
    EXPECT_EQ(february.before->keystrokes, 310) << "all 31 days of January";
    EXPECT_EQ(february.yearBefore->keystrokes, 280);

    const Report long_ = of(ReportPeriod::span({2025, 1, 1}, {2026, 2, 28}));
    EXPECT_FALSE(long_.yearBefore) << "a year ago, it had begun";
}

}  // namespace
}  // namespace tapcore
