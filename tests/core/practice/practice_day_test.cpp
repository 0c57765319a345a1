#include "core/practice/practice_day.h"

#include <gtest/gtest.h>

#include "core/foundation/file_io.h"
#include "core/practice/seeded_random.h"

namespace tapcore {
namespace {

const Day today(2026, 9, 20);

PracticeDay sampleDay() {
    PracticeDay day;
    day.add("qwerty", "e", {120, 4, 110, 27500, 1});
    day.add("qwerty", " ", {30, 0, 29, 5800, 1});
    day.add("", "|", {1, 2, 0, 0, 1});
    day.add("azerty", "é", {7, 0, 6, 2400, 1});
    day.add("azerty", "e", {5, 1, 4, 1000, 1});
    day.seconds = 312;
    day.lessons = 2;
    day.layout = "qwerty";
    day.best = 41;
    day.bests = {{"qwerty", 41}, {"azerty", 18}};
    return day;
}

TEST(PracticeDay, IsWrittenAsTwoTables) {
    EXPECT_EQ(sampleDay().text(today, FileFormat::markdown),
              "# Practice 2026-09-20\n"
              "\n"
              "## Letters\n"
              "\n"
              "| letter        | layout | presses | misses | timed |    ms |\n"
              "| ------------- | ------ | ------: | -----: | ----: | ----: |\n"
              "| vertical line | -      |       1 |      2 |     0 |     0 |\n"
              "| e             | azerty |       5 |      1 |     4 |  1000 |\n"
              "| é             | azerty |       7 |      0 |     6 |  2400 |\n"
              "| space         | qwerty |      30 |      0 |    29 |  5800 |\n"
              "| e             | qwerty |     120 |      4 |   110 | 27500 |\n"
              "\n"
              "## Day\n"
              "\n"
              "| key         | value  |\n"
              "| ----------- | ------ |\n"
              "| seconds     | 312    |\n"
              "| lessons     | 2      |\n"
              "| layout      | qwerty |\n"
              "| best        | 41     |\n"
              "| best:azerty | 18     |\n"
              "| best:qwerty | 41     |\n");
    EXPECT_EQ(PracticeDay().text(today, FileFormat::org),
              "#+title: Practice 2026-09-20\n"
              "\n"
              "* Letters\n"
              "\n"
              "| letter | layout | presses | misses | timed |  ms |\n"
              "|--------+--------+---------+--------+-------+-----|\n"
              "\n"
              "* Day\n"
              "\n"
              "| key     | value |\n"
              "|---------+-------|\n"
              "| seconds | 0     |\n"
              "| lessons | 0     |\n");
}

TEST(PracticeDay, IsWrittenAsItsPageShows) {
    const std::string page = readFile(DOCS "/practice.md").text;
    const std::size_t start = page.find("```org\n") + 7;
    const std::string example = page.substr(start, page.find("```", start) - start);
    EXPECT_EQ(PracticeDay(example).text(today, FileFormat::org), example);
    EXPECT_EQ(PracticeDay(example).letters.at(" "), (LetterStats{4, 0, 4, 848, 1}));
}

TEST(PracticeDay, ReadsBackWhatItWrites) {
    SeededRandom rng(3);
    const char* letters[] = {"e",  "ё",      "ß", "-",       "+",       ":", "#", "*",
                             "\t", "\u00A0", "|", "|\u0301", "e\u0301", "😀", "𐐷"};
    for (int i = 0; i < 50; ++i) {
        PracticeDay day;
        const auto number = [&] { return static_cast<std::int64_t>(rng.below(1'000'000)); };
        for (const char* letter : letters)
            for (const char* layout : {"", "qwerty", "ä b"})
                if (rng.below(2) == 0) day.add(layout, letter, {number(), number(), number(), number(), 1});
        day.seconds = number();
        day.lessons = number();
        if (rng.below(2) == 0) day.layout = "colemak-dh";
        day.best = number();
        day.bests = {{"", number()}, {"qwerty", number()}};
        for (const FileFormat format : FileFormat::allCases)
            EXPECT_EQ(PracticeDay(day.text(today, format)), day);
    }
}

TEST(PracticeDay, FindsColumnsByTheirTitles) {
    PracticeDay expected;
    expected.add("qwerty", "e", {5, 1, 4, 1000, 1});
    expected.add("", "t", {2, 0, 0, 0, 1});
    EXPECT_EQ(PracticeDay("## letters\n| ms | timed | layout | note | letter | misses | presses |\n"
                          "| 1000 | 4 | qwerty | ! | e | 1 | 5 |\n"
                          "## Letters\n| letter | presses |\n| t | 2 |\n"),
              expected);
    EXPECT_EQ(PracticeDay("* Letters\ne\tqwerty\t5\t1\t4\t1000\n|t|-|2|0|0|0|\n"), expected);

    PracticeDay times;
    times.seconds = 90;
    times.layout = "qwerty";
    std::vector<SkippedRow> skipped;
    EXPECT_EQ(PracticeDay("## Day\n| value | key |\n| 90 | seconds |\n| qwerty | layout |\n", &skipped),
              times);
    EXPECT_TRUE(skipped.empty());
    EXPECT_EQ(PracticeDay("## Day\n| note | value | key |\n| ! | 90 | seconds |\n| | qwerty | layout |\n"
                          "## Day\n| lessons | 0 | 9 |\n| seconds |\n",
                          &skipped),
              times);
    EXPECT_EQ(skipped,
              (std::vector<SkippedRow>{{2, "an unknown column: | note | value | key |"},
                                       {6, "a cell beyond the columns: | lessons | 0 | 9 |"},
                                       {7, "a row of Day has a cell for each column: | seconds |"}}));
}

TEST(PracticeDay, PassesOverRowsItCannotUseAndSaysWhich) {
    std::vector<SkippedRow> skipped;
    const PracticeDay day(
        "# Practice 2026-09-20\n"
        "## Letters\n"
        "|:---|\n"
        "| letter | layout | presses | misses | timed | ms |\n"
        "| e | qwerty | 5 | 1 | 4 | 1000 |\n"
        "| th | qwerty | 5 | 1 | 4 | 1000 |\n"
        "| e | qwerty | 5 | x | 4 | 1000 |\n"
        "| e | qwerty | 5 |\n"
        "| e | qwerty | 5 | 1 | 4 | 1000 | by hand |\n"
        "| e | qwerty | 5 | 1 | 4 | -1 |\n"
        "| e | qwerty | 5 | 1 | 4 | 1000\n"
        "## Letters\n"
        "| letter | presses | mood |\n"
        "## Day\n"
        "| key | value |\n"
        "| seconds | 1:00 |\n"
        "| lessons | 2 |\n"
        "| best | -9 |\n"
        "| mood | good |\n"
        "| - | -- | 0 |\n"
        "# slow today\n"
        "| e |\n",
        &skipped);
    PracticeDay expected;
    expected.add("qwerty", "e", {10, 2, 8, 2000, 1});
    expected.lessons = 2;
    expected.otherMeta = {{"mood", "good"}};
    EXPECT_EQ(day, expected);
    EXPECT_EQ(skipped, (std::vector<SkippedRow>{
                           {6, "the letter is not one character: | th | qwerty | 5 | 1 | 4 | 1000 |"},
                           {7, "a cell is not a whole number: | e | qwerty | 5 | x | 4 | 1000 |"},
                           {8, "a row of Letters has a cell for each column: | e | qwerty | 5 |"},
                           {9, "a cell beyond the columns: | e | qwerty | 5 | 1 | 4 | 1000 | by hand |"},
                           {10, "a count is below 0: | e | qwerty | 5 | 1 | 4 | -1 |"},
                           {11, "it is not in the tables Letters and Day: | e | qwerty | 5 | 1 | 4 | 1000"},
                           {13, "an unknown column: | letter | presses | mood |"},
                           {16, "a cell is not a whole number: | seconds | 1:00 |"},
                           {18, "a count is below 0: | best | -9 |"},
                           {20, "a row of dashes alone cannot be kept: | - | -- | 0 |"},
                           {21, "it is not in the tables Letters and Day: # slow today"},
                           {22, "it is not in the tables Letters and Day: | e |"}}));
    for (const FileFormat format : FileFormat::allCases) {
        skipped.clear();
        (void)PracticeDay(sampleDay().text(today, format), &skipped);
        EXPECT_TRUE(skipped.empty()) << "what is written is read whole";
    }
}

TEST(PracticeDay, MergesRecordsOfOneDay) {
    PracticeDay day = sampleDay();
    PracticeDay other;
    other.add("qwerty", "e", {1, 1, 1, 100, 1});
    other.add("dvorak", "e", {2, 0, 2, 300, 1});
    other.seconds = 8;
    other.lessons = 1;
    other.layout = "dvorak";
    other.best = 44;
    other.bests = {{"qwerty", 39}, {"dvorak", 44}};
    day.merge(other);
    EXPECT_EQ(day.letters.at("e"), (LetterStats{128, 6, 117, 28900, 1}));
    EXPECT_EQ(day.lettersOn("qwerty").at("e"), (LetterStats{121, 5, 111, 27600, 1}));
    EXPECT_EQ(day.lettersOn("dvorak").at("e"), (LetterStats{2, 0, 2, 300, 1}));
    EXPECT_TRUE(day.lettersOn("bepo").empty());
    EXPECT_EQ(day.seconds, 320);
    EXPECT_EQ(day.lessons, 3);
    EXPECT_EQ(day.layout, "qwerty");
    EXPECT_EQ(day.best, 44);
    EXPECT_EQ(day.bests,
              (std::map<std::string, std::int64_t>{{"azerty", 18}, {"dvorak", 44}, {"qwerty", 41}}));
}

}  // namespace
}  // namespace tapcore
