#include "app/tappora/terminal_table.h"

#include <gmock/gmock.h>

namespace tappora {
namespace {

using testing::ElementsAre;
using Lines = std::vector<std::string>;

Terminal terminalOf(std::size_t width) { return {.unicode = true, .width = width}; }

const ReportTable shares{"Shares",
                         {{"finger"}, {"presses", true}, {"share", true}},
                         {{{"left"}, {"1,200", true}, {"75 %", true}},
                          {{"мизинец"}, {"400", true}, {"25 %", true}},
                          {{"打鍵"}, {"", true}, {"", true}}}};

TEST(TerminalTable, AlignsNamesAndNumbersByTheColumnsTheyTake) {
    EXPECT_THAT(linesOf(shares, terminalOf(60)), ElementsAre("  finger   presses  share",  //
                                                             "  left       1,200   75 %",  //
                                                             "  мизинец      400   25 %",  //
                                                             "  打鍵"));
}

TEST(TerminalTable, DrawsBarsWhereThereIsRoomForThem) {
    struct Case {
        std::size_t width;
        const char* longest;
    };
    const Case cases[] = {
        {200, "  left       1,200   75 %  ████████████████████████████████████████"},
        {47, "  left       1,200   75 %  ████████████████████"},
        {35, "  left       1,200   75 %  ████████"},
        {34, "  left       1,200   75 %"},
    };
    for (const auto& [width, longest] : cases) {
        const Lines lines = linesOf(shares, terminalOf(width), {1200, 400, 0});
        EXPECT_EQ(lines[1], longest) << width;
        EXPECT_EQ(lines[3], "  打鍵") << "no bar of nothing";
    }
}

TEST(TerminalTable, GivesANameLinesOfItsOwnThatLeavesNoRoomForItsNumbers) {
    const ReportTable table{"Compared",
                            {{"with"}, {"keystrokes", true}},
                            {{{"usual"}, {"61,494", true}},
                             {{"the one before, Week 36, August 31 – September 6"}, {"73,099", true}}}};
    EXPECT_THAT(linesOf(table, terminalOf(34)), ElementsAre("  with   keystrokes",                //
                                                            "  usual      61,494",                //
                                                            "  the one before, Week 36, August",  //
                                                            "  31 – September 6",                 //
                                                            "             73,099"));
}

TEST(TerminalTable, PutsBlocksBesideEachOtherWhereBothFit) {
    const Lines left = {"a", "bb", "c"};
    const Lines right = {"1", "22"};
    EXPECT_THAT(beside(left, right, terminalOf(8)), ElementsAre("a     1", "bb    22", "c"));
    EXPECT_THAT(beside(left, right, terminalOf(7)), ElementsAre("a", "bb", "c", "", "1", "22"));
    EXPECT_THAT(beside({"a"}, right, terminalOf(80)), ElementsAre("a    1", "     22"));
}

TEST(TerminalTable, WrapsTextsBetweenWords) {
    struct Case {
        const char* text;
        std::size_t width;
        Lines lines;
    };
    const Case cases[] = {
        {"one two three", 80, {"- one two three"}},
        {"one two three", 9, {"- one two", "  three"}},
        {"one two three", 2, {"- one", "  two", "  three"}},
        {"打鍵 打鍵", 10, {"- 打鍵", "  打鍵"}},
        {"", 10, {"- "}},
    };
    for (const auto& [text, width, lines] : cases) EXPECT_EQ(wrapped(text, "- ", width), lines) << width;
}

}  // namespace
}  // namespace tappora
