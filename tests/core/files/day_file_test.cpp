#include "core/files/day_file.h"

#include <gmock/gmock.h>

#include <random>

namespace tapcore {
namespace {

using testing::ElementsAre;

const Day day(2026, 9, 20);

DayFile sample() {
    DayFile file;
    file.tally.add(KeyCode{36}, 9, 12);
    file.tally.add(KeyCode{0}, 9, 340);
    file.tally.add(KeyCode{0}, 14, 7);
    file.tally.add(Tally::Chord{{Modifiers::command}, 8}, 9, 3);
    file.tally.add(Tally::Chord{{Modifiers::control, Modifiers::shift}, 8}, 9, 1);
    file.tally.addUnkeyed(25, 23);
    file.tally.add(Tally::MouseHour{40, 2, 1, 77, 12345}, 9);
    file.peakPerMinute = 142;
    file.pausedMinutes = 95;
    file.board = "magic-keyboard-ansi";
    file.layout = "us";
    file.otherMeta = {{"zone", "Europe/Berlin"}, {"note", "a | b"}};
    return file;
}

TEST(DayFile, WritesMarkdown) {
    EXPECT_EQ(sample().text(FileFormat::markdown, day), R"(# 2026-09-20

## Keys

| hour | keycode | count |
| ---: | ------: | ----: |
|    9 |       0 |   340 |
|    9 |      36 |    12 |
|   14 |       0 |     7 |

## Chords

| hour | modifiers  | keycode | count |
| ---: | ---------- | ------: | ----: |
|    9 | ctrl+shift |       8 |     1 |
|    9 | cmd        |       8 |     3 |

## Hours

| hour | count |
| ---: | ----: |
|   23 |    25 |

## Mouse

| hour | clicks | right | middle | scroll | moved |
| ---: | -----: | ----: | -----: | -----: | ----: |
|    9 |     40 |     2 |      1 |     77 | 12345 |

## Day

| key    | value               |
| ------ | ------------------- |
| board  | magic-keyboard-ansi |
| layout | us                  |
| paused | 01:35               |
| peak   | 142                 |
| note   | a   b               |
| zone   | Europe/Berlin       |
)");
}

TEST(DayFile, WritesOrgWithItsEmptyTables) {
    DayFile file;
    file.tally.add(Tally::MouseHour{.moved = 5}, 0);
    EXPECT_EQ(file.text(FileFormat::org, day), R"(#+title: 2026-09-20

* Keys

| hour | keycode | count |
|------+---------+-------|

* Chords

| hour | modifiers | keycode | count |
|------+-----------+---------+-------|

* Mouse

| hour | clicks | right | middle | scroll | moved |
|------+--------+-------+--------+--------+-------|
|    0 |      0 |     0 |      0 |      0 |     5 |

* Day

| key | value |
|-----+-------|
)");
}

TEST(DayFile, ReadsBackWhatItWrites) {
    std::mt19937 random(7);
    const auto upTo = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    for (int round = 0; round < 40; ++round) {
        DayFile file;
        for (int i = 0; i < 200; ++i) {
            file.tally.add(static_cast<KeyCode>(upTo(70000)), upTo(24), upTo(1000));
            file.tally.add(
                Tally::Chord{Modifiers(static_cast<std::uint8_t>(upTo(32))), static_cast<KeyCode>(upTo(128))},
                upTo(24), upTo(50));
        }
        file.tally.addUnkeyed(upTo(9), upTo(24));
        file.tally.add(Tally::MouseHour{upTo(9), upTo(9), 0, upTo(9), upTo(99999)}, upTo(24));
        file.pausedMinutes = upTo(3000);
        if (upTo(2) == 1) file.board = upTo(2) == 1 ? "" : "planck";
        file.otherMeta["key " + std::to_string(upTo(5))] = "⌘";
        for (const FileFormat format : FileFormat::allCases) EXPECT_EQ(DayFile(file.text(format, day)), file);
    }
}

TEST(DayFile, SkipsRowsItCannotUseAndSaysWhy) {
    std::vector<SkippedRow> skipped;
    const DayFile file(R"(# 2026-09-20
## Keys
| hour | keycode | count |
| ---: | ------: | ----: |
| 9 | 0 | 5 |
| 9 | 0 |
| 9 | -1 | 5 |
| 24 | 0 | 5 |
| 9 | 0 | 0 |
| 9 | a | 5 |
## Chords
| 9 | shift | 1 | 5 |
| 9 | Shift | 1 | 5 |
| 9 | + | 1 | 5 |
| 9 | cmd++ctrl | 1 | 5 |
## Hours
| 9 | 0 |
| 9 | 4 |
| 9 | 4 |
## Mouse
| 9 | 1 | 0 | 0 | -2 | x |
| 9 | 1 | 0 | 0 | -2 | 3 |
| 9 | 0 | 0 | 0 | 0 | 0 |
## Elsewhere
| 9 | 0 | 5 |
)",
                       &skipped);
    DayFile expected;
    expected.tally.add(KeyCode{0}, 9, 5);
    expected.tally.add(Tally::Chord{{Modifiers::control, Modifiers::command}, 1}, 9, 5);
    expected.tally.addUnkeyed(8, 9);
    expected.tally.add(Tally::MouseHour{1, 0, 0, -2, 3}, 9);
    EXPECT_EQ(file, expected);
    const std::string number = "a cell is not a whole number: ";
    const std::string noTable = "it is in no table that is read: ";
    const std::string words = "the modifiers are not words of ctrl, opt, shift, cmd and fn: ";
    EXPECT_THAT(
        skipped,
        ElementsAre(
            SkippedRow{6, "a row of Keys has 3 cells: | 9 | 0 |"}, SkippedRow{7, number + "| 9 | -1 | 5 |"},
            SkippedRow{8, "the hour is not 0 to 23: | 24 | 0 | 5 |"},
            SkippedRow{9, "the count is below 1: | 9 | 0 | 0 |"}, SkippedRow{10, number + "| 9 | a | 5 |"},
            SkippedRow{12, "a chord has ctrl, opt or cmd: | 9 | shift | 1 | 5 |"},
            SkippedRow{13, words + "| 9 | Shift | 1 | 5 |"}, SkippedRow{14, words + "| 9 | + | 1 | 5 |"},
            SkippedRow{17, "the count is below 1: | 9 | 0 |"},
            SkippedRow{21, number + "| 9 | 1 | 0 | 0 | -2 | x |"}, SkippedRow{24, noTable + "## Elsewhere"},
            SkippedRow{25, noTable + "| 9 | 0 | 5 |"}));
}

/// The day file of some rows of its Day table.
DayFile withDayRows(std::string_view rows) { return DayFile("* Day\n" + std::string(rows)); }

TEST(DayFile, ReadsTheDayTable) {
    const struct {
        std::string_view value;
        std::int64_t minutes;
    } paused[] = {{"01:35", 95}, {"1:05", 65}, {"90", 0},      {"1:2:3", 0},
                  {":5:", 0},    {"a:1", 0},   {"::2::3", 123}};
    for (const auto& [value, minutes] : paused)
        EXPECT_EQ(withDayRows("| paused | " + std::string(value) + " |").pausedMinutes, minutes) << value;

    const DayFile file = withDayRows(
        "| key | value |\n| board | a |\n| board |  |\n| peak | 9 |\n| peak | many |\n"
        "| paused | 0:01 |\n| paused | long |\n| mood | fine |\n| mood | good |\n| a | b | c |\n");
    EXPECT_EQ(file.board, "");
    EXPECT_EQ(file.layout, std::nullopt);
    EXPECT_EQ(file.peakPerMinute, 0);
    EXPECT_EQ(file.pausedMinutes, 1);
    EXPECT_EQ(file.otherMeta, (std::map<std::string, std::string>{{"mood", "good"}}));
}

TEST(DayFile, ReadsTheOlderTabSeparatedLayout) {
    const DayFile file("# Keys\nhour\tkeycode\tcount\n9\t0\t5\n# Chords\n9\tcmd\t8\t2\n# Meta\nlayout\tus\n");
    EXPECT_EQ(file.tally.total(), 5);
    EXPECT_EQ(file.tally.byChord().size(), 1U);
    EXPECT_EQ(file.layout, "us");
    EXPECT_EQ(DayFile("{\"not\": \"a table\"}"), DayFile{});
}

TEST(DayFile, MergingKeepsTheLargerPeakAndNeverLosesPausedMinutes) {
    DayFile file = sample();
    file.merge(file.tally, 100, -5);
    EXPECT_EQ(file.peakPerMinute, 142);
    EXPECT_EQ(file.pausedMinutes, 95);
    EXPECT_EQ(file.tally.total(), 2 * sample().tally.total());
}

TEST(DayFileDeathTest, CountsThatLeave64BitsAreFatal) {
    EXPECT_DEATH(DayFile("* Keys\n| 1 | 1 | 9223372036854775807 |\n| 1 | 1 | 1 |\n"),
                 "does not fit into 64 bits");
}

TEST(DayFile, CutAnywhereReadsWhatIsWhole) {
    const std::string text = sample().text(FileFormat::markdown, day);
    std::int64_t last = 0;
    for (std::size_t size = 0; size <= text.size(); ++size) {
        const std::int64_t total = DayFile(text.substr(0, size)).tally.total();
        EXPECT_GE(total, last) << size;
        last = total;
    }
    EXPECT_EQ(last, sample().tally.total());
}

TEST(DayFile, UsesAndSkipsRowsAlikeHoweverTheyAreWritten) {
    struct Case {
        const char* row;
        std::size_t skipped;
        std::int64_t total;
    };
    const Case cases[] = {
        {"| 8 | 0 | 5 |", 0, 15},     {"|8|0|5|", 0, 15},         {"8\t0\t5", 0, 15},
        {"| 8 | 0 | +5 |", 0, 15},    {"| 24 | 0 | 5 |", 1, 10},  {"| 8 | 65536 | 5 |", 1, 10},
        {"| 8 | 65535 | 5 |", 0, 15}, {"| 8 | 0 | 0 |", 1, 10},   {"| 8 | 0 | five |", 1, 10},
        {"| 8 | 0 | 5 | 1 |", 1, 10}, {"| 008 | 0 | 5 |", 0, 15},
    };
    for (const auto& [row, skipped, total] : cases) {
        std::vector<SkippedRow> lines;
        const DayFile file("* Keys\n| 9 | 3 | 4 |\n" + std::string(row) + "\n| 9 | 2 | 6 |\n", &lines);
        EXPECT_EQ(lines.size(), skipped) << row;
        EXPECT_EQ(file.tally.total(), total) << row;
        EXPECT_EQ(file.tally.keys[9].valueOr(2, 0), 6) << row;
        if (skipped > 0) {
            EXPECT_EQ(lines.front().line, 3u) << row;
        }
    }
}

}  // namespace
}  // namespace tapcore
