#include "core/files/month_rollup.h"

#include <gmock/gmock.h>

namespace tapcore {
namespace {

using testing::ElementsAre;

MonthRollup september() {
    DayFile first, second;
    first.tally.add(KeyCode{0}, 9, 5000);
    first.tally.add(KeyCode{1}, 10, 100);
    first.tally.addUnkeyed(20, 11);
    first.tally.add(Tally::Chord{{Modifiers::option, Modifiers::function}, 123}, 9, 7);
    first.tally.add(Tally::MouseHour{10, 2, 1, 50, 900}, 9);
    first.peakPerMinute = 142;
    second.tally.add(KeyCode{0}, 9, 1);
    return MonthRollup(std::map<Day, DayFile>{{Day(2026, 9, 20), second}, {Day(2026, 9, 1), first}});
}

TEST(MonthRollup, SumsDaysAndWritesThem) {
    EXPECT_EQ(september().text(FileFormat::org, "2026-09"), R"(#+title: 2026-09

* Days

| date       | keystrokes | active_hours | peak | clicks |
|------------+------------+--------------+------+--------|
| 2026-09-01 |       5120 |            3 |  142 |     13 |
| 2026-09-20 |          1 |            1 |    0 |      0 |

* Keys

| keycode | count |
|---------+-------|
|       0 |  5001 |
|       1 |   100 |

* Chords

| modifiers | keycode | count |
|-----------+---------+-------|
| opt+fn    |     123 |     7 |
)");
    EXPECT_EQ(MonthRollup{}.text(FileFormat::markdown, "2026-09"), R"(# 2026-09

## Days

| date | keystrokes | active_hours | peak | clicks |
| ---- | ---------: | -----------: | ---: | -----: |

## Keys

| keycode | count |
| ------: | ----: |

## Chords

| modifiers | keycode | count |
| --------- | ------: | ----: |
)");
    for (const FileFormat format : FileFormat::allCases)
        EXPECT_EQ(MonthRollup(september().text(format, "2026-09")), september());
}

TEST(MonthRollup, KeepsOlderAndOddRowsAndSkipsBrokenOnes) {
    std::vector<SkippedRow> skipped;
    const MonthRollup rollup(R"(## Days
| date | keystrokes | active_hours | peak |
| 2026-09-02 | 5120 | 6 | 142 |
| 2026-09-01 | -3 | 0 | 0 | n/a |
| 2026-09-02 | 1 | 1 | 1 | 4 |
| 2026-09-03 | 1 | 1 | n/a | 4 |
| 2026-9-03 | 1 | 1 | 1 |
| 2026-09-04 | 1 | 1 |
## Keys
| 0 | 5 |
| 0 | -2 |
| 0 | 5 | 5 |
## Chords
| shift | 1 | 0 |
| cmd | 1 |
| cmd | 1 | 2 |
| cmd | 1 | 2 |
)",
                             &skipped);
    EXPECT_THAT(rollup.days, ElementsAre(MonthRollup::DayLine{{2026, 9, 2}, 5120, 6, 142, 0},
                                         MonthRollup::DayLine{{2026, 9, 1}, -3, 0, 0, 0},
                                         MonthRollup::DayLine{{2026, 9, 2}, 1, 1, 1, 4}));
    EXPECT_EQ(rollup.keys, (Tally::KeyCounts{{0, 3}}));
    EXPECT_EQ(rollup.chords,
              (Tally::ChordCounts{{{{Modifiers::shift}, 1}, 0}, {{{Modifiers::command}, 1}, 4}}));
    std::vector<std::size_t> lines;
    for (const SkippedRow& row : skipped) lines.push_back(row.line);
    EXPECT_THAT(lines, ElementsAre(6, 7, 8, 12, 15));
}

TEST(MonthRollup, MergingAddsAllButWhatMayOverlap) {
    const MonthRollup twice = september().merged(september());
    EXPECT_THAT(twice.days, ElementsAre(MonthRollup::DayLine{{2026, 9, 1}, 10240, 3, 142, 26},
                                        MonthRollup::DayLine{{2026, 9, 20}, 2, 1, 0, 0}));
    EXPECT_EQ(twice.keys, (Tally::KeyCounts{{0, 10002}, {1, 200}}));
    EXPECT_EQ(twice.chords.begin()->second, 14);

    MonthRollup other;
    other.days = {{{2026, 9, 3}, 1, 1, 1, 1}, {{2026, 9, 1}, 1, 4, 200, 1}, {{2026, 9, 1}, 1, 5, 0, 1}};
    EXPECT_THAT(september().merged(other).days,
                ElementsAre(MonthRollup::DayLine{{2026, 9, 1}, 5122, 5, 200, 15},
                            MonthRollup::DayLine{{2026, 9, 3}, 1, 1, 1, 1},
                            MonthRollup::DayLine{{2026, 9, 20}, 1, 1, 0, 0}));
}

}  // namespace
}  // namespace tapcore
