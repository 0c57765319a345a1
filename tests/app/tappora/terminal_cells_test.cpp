#include "app/tappora/terminal_cells.h"

#include <gtest/gtest.h>

namespace tappora {
namespace {

constexpr CellColour red{255, 0, 0}, black{0, 0, 0};

TEST(CellGrid, WritesWhatFitsAndNothingOutside) {
    CellGrid grid(5, 2);
    grid.write("abc", 3, 0);
    grid.write("日本語", 0, 1);  // the third has one column left, and takes two
    grid.write("below", 0, 2);
    EXPECT_EQ(grid.text(ColourDepth::basic), "   ab\n日本\n");
    EXPECT_EQ(grid.at(5, 0), nullptr);
    EXPECT_EQ(grid.at(0, 2), nullptr);
    ASSERT_NE(grid.at(4, 1), nullptr);
}

TEST(CellGrid, LeavesOutWhatIsEmptyAtTheEnds) {
    CellGrid grid(4, 4);
    grid.write("x", 1, 1);
    EXPECT_EQ(grid.text(ColourDepth::full), "\n x\n");
    grid.at(3, 3)->ground = black;
    EXPECT_EQ(grid.text(ColourDepth::full), "\n x\n\n   \033[0;48;2;0;0;0m \033[0m\n");
}

TEST(CellGrid, ChangesColoursOnlyWhereTheyChange) {
    CellGrid grid(6, 1);
    grid.write("ab", 0, 0, red);
    grid.write("c", 2, 0);
    grid.at(3, 0)->ground = red;
    grid.write("d", 3, 0, black);
    EXPECT_EQ(grid.text(ColourDepth::full),
              "\033[0;38;2;255;0;0mab\033[0mc\033[0;38;2;0;0;0;48;2;255;0;0md\033[0m\n");
}

TEST(CellGrid, TakesTheNearestOfTwoHundredAndFiftySixColours) {
    const std::pair<CellColour, int> cases[] = {
        {{0, 0, 0}, 16},        {{255, 255, 255}, 231}, {{255, 0, 0}, 196},     {{0, 95, 0}, 22},
        {{0, 0, 135}, 18},      {{8, 8, 8}, 232},       {{238, 238, 238}, 255}, {{128, 128, 128}, 244},
        {{250, 140, 100}, 209}, {{215, 175, 95}, 179},
    };
    for (const auto& [colour, index] : cases) {
        CellGrid grid(1, 1);
        grid.write("x", 0, 0, colour);
        EXPECT_EQ(grid.text(ColourDepth::indexed), "\033[0;38;5;" + std::to_string(index) + "mx\033[0m\n");
    }
}

TEST(Cut, KeepsWholeCharacters) {
    const struct {
        const char* text;
        std::size_t columns;
        const char* kept;
    } cases[] = {{"abc", 3, "abc"},         {"abc", 2, "ab"}, {"abc", 0, ""},
                 {"日本", 3, "日"},         {"日本", 1, ""},  {"", 5, ""},
                 {"e\u0301a", 1, "e\u0301"}};
    for (const auto& c : cases) EXPECT_EQ(cut(c.text, c.columns), c.kept) << c.text;
}

}  // namespace
}  // namespace tappora
