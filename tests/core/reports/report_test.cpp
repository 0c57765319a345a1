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

}  // namespace
}  // namespace tapcore
