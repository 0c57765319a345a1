#include "app/practice/frame.h"

#include <gtest/gtest.h>

#include <clocale>

#include "app/practice/figures.h"
#include "app/practice/frame_blocks.h"
#include "tests/app/practice/drawn_frame.h"

namespace tappora {
namespace {

class Lines : public testing::Test {
  protected:
    static void SetUpTestSuite() { std::setlocale(LC_CTYPE, "C.UTF-8"); }
};

FrameLine plain(const std::string& text) { return {{text}}; }

TEST_F(Lines, TakeAColumnForEachCharacterAndTwoForWideOnes) {
    const std::pair<const char*, std::size_t> cases[] = {{"", 0},     {"ten", 3},    {"é", 1}, {"e\u0301", 1},
                                                         {"日本", 4}, {"\u0301", 0}, {"\t", 0}};
    for (const auto& [text, columns] : cases) EXPECT_EQ(columnsOf(text), columns) << text;
    EXPECT_EQ(columnsOf(FrameLine{{"ab"}, {"日", SpanStyle::next}}), 4U);
}

TEST_F(Lines, AreCutBetweenCharacters) {
    const FrameLine line = {{"ab", SpanStyle::strong}, {"日e\u0301"}};
    const struct {
        std::size_t columns;
        FrameLine fits;
    } cases[] = {
        {0, {{"", SpanStyle::strong}}},
        {1, {{"a", SpanStyle::strong}}},
        {2, {{"ab", SpanStyle::strong}, {""}}},
        {3, {{"ab", SpanStyle::strong}, {""}}},
        {4, {{"ab", SpanStyle::strong}, {"日"}}},
        {5, line},
        {99, line},
    };
    for (const auto& c : cases) EXPECT_EQ(clipped(line, c.columns), c.fits) << c.columns;
}

TEST_F(Lines, AreSaidInTheFirstWayThatFits) {
    const std::vector<FrameLine> ways = {plain("of all words"), plain("of all"), plain("all words")};
    const std::pair<std::size_t, const char*> cases[] = {
        {12, "of all words"}, {11, "of all"}, {6, "of all"}, {5, "all words"}, {0, "all words"}};
    for (const auto& [columns, text] : cases) EXPECT_EQ(fitting(ways, columns), plain(text)) << columns;
}

TEST_F(Lines, AreSpreadWithABlankAtLeastInBetween) {
    const auto text = [](std::size_t columns) {
        return Frame{{spread(plain("left"), plain("right"), columns)}}.text();
    };
    EXPECT_EQ(text(12), "left   right\n");
    EXPECT_EQ(text(10), "left right\n");
    EXPECT_EQ(text(9), "left\n");
    EXPECT_EQ(text(0), "left\n");
}

TEST_F(Lines, AreReadAloudWithoutBlanksAtTheirEnds) {
    EXPECT_EQ((Frame{{{{" a ", SpanStyle::next}, {"b  "}}, {}, {{"   "}}}}.text()), " a b\n\n\n");
}

//  rank   lines
//     2   a, b
//     1   c
//     2   (none)
//     3   d
//     0   e
TEST_F(Lines, OfBlocksAreShownByRankAndInTheirOrder) {
    const std::vector<Block> blocks = {
        {2, {plain("a"), plain("b")}}, {1, {plain("c")}}, {2, {}}, {3, {plain("d")}}, {0, {plain("e")}}};
    const std::pair<std::size_t, const char*> cases[] = {
        {0, ""},
        {1, "e\n"},
        {2, "c\ne\n"},
        {3, "c\nd\ne\n"},  // for a and b there is no room, but for d
        {4, "a\nb\nc\ne\n"},
        {5, "a\nb\nc\nd\ne\n"},
        {6, "a\nb\n\nc\nd\ne\n"},  // blank lines from the top
        {7, "a\nb\n\nc\n\nd\ne\n"},
        {20, "a\nb\n\nc\n\nd\n\ne\n"},
    };
    for (const auto& [lines, text] : cases)
        EXPECT_EQ(stacked(blocks, {.lines = lines, .columns = 9}).text(), text) << lines;
}

TEST(Figures, AreWrittenAsOnTheScreen) {
    const std::pair<std::int64_t, const char*> times[] = {{0, "0:00"},  {9, "0:09"},   {59, "0:59"},
                                                          {60, "1:00"}, {192, "3:12"}, {3661, "61:01"}};
    for (const auto& [seconds, text] : times) EXPECT_EQ(minutes(seconds), text);
    const std::pair<double, const char*> shares[] = {{0, "0 %"},       {0.95, "95 %"},    {0.29, "29 %"},
                                                     {0.9999, "99 %"}, {2.0 / 3, "66 %"}, {1, "100 %"}};
    for (const auto& [share, text] : shares) EXPECT_EQ(percent(share), text);
}

TEST(Figures, AreADashWhereNothingWasMeasured) {
    const struct {
        tapcore::LetterStats stats;
        const char *speed, *accuracy;
    } cases[] = {
        {{}, "-", "-"},
        {{.presses = 3, .misses = 1}, "-", "75 %"},
        {{.misses = 1}, "-", "0 %"},
        {{.presses = 1}, "-", "100 %"},
        {{.presses = 2, .timed = 2, .milliseconds = 600}, "40", "100 %"},
        {{.presses = 2, .timed = 1}, "0", "100 %"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(speedText(c.stats), c.speed);
        EXPECT_EQ(accuracyText(c.stats), c.accuracy);
    }
}

}  // namespace
}  // namespace tappora
