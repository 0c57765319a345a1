#include "app/tappora/board_raster.h"

#include <gtest/gtest.h>

namespace tappora {
namespace {

using tapcore::Board;

/// A line for each row of dots: a letter for the key there, "a" for the first, or "." for none.
std::string dots(const Board& board, std::size_t across, std::size_t down) {
    const BoardRaster raster(board, across, down);
    std::string text = "\n";
    for (std::size_t y = 0; y < raster.height(); ++y) {
        for (std::size_t x = 0; x < raster.width(); ++x) {
            const std::size_t key = raster.key(x, y);
            text += key == BoardRaster::none ? '.' : static_cast<char>('a' + key);
        }
        text += '\n';
    }
    return text;
}

TEST(BoardRaster, LeavesADotFreeBetweenKeys) {
    const Board board{
        .id = "",
        .keys = {{.id = "", .x = 1, .y = 1, .w = 1, .h = 1}, {.id = "", .x = 2, .y = 1, .w = 1.5, .h = 2}}};
    EXPECT_EQ(dots(board, 4, 3), R"(
aaa.bbbbb.
aaa.bbbbb.
....bbbbb.
....bbbbb.
....bbbbb.
..........
)");
    EXPECT_EQ(BoardRaster(board, 4, 3).key(10, 0), BoardRaster::none);
    EXPECT_EQ(BoardRaster(board, 4, 3).key(0, 6), BoardRaster::none);
}

TEST(BoardRaster, JoinsTheTwoPartsOfAKey) {
    const Board board{
        .id = "",
        .keys = {{.id = "", .x = 0.5, .y = 0, .w = 1, .h = 2, .second = Board::Rect{0, 0, 1.5, 1}}}};
    EXPECT_EQ(dots(board, 4, 2), R"(
aaaaa.
..aaa.
..aaa.
......
)");
}

TEST(BoardRaster, TurnsKeys) {
    const Board board{.id = "",
                      .keys = {{.id = "", .x = 1, .y = 0, .w = 2, .h = 1, .r = 90, .rx = 1, .ry = 0}}};
    EXPECT_EQ(dots(board, 3, 3), R"(
.aa
.aa
.aa
.aa
.aa
...
)");
}

TEST(BoardRaster, IsForBoardsOfSomeExtent) {
    const std::pair<Board::Rect, bool> cases[] = {
        {{0, 0, 1, 1}, true},    {{0, 0, 200, 200}, true}, {{0, 0, 200.1, 1}, false},
        {{0, 0, 1, 201}, false}, {{0, 0, 0, 1}, false},    {{0, 0, 1, 0}, false},
    };
    for (const auto& [bounds, isFine] : cases)
        EXPECT_EQ(isDrawable(bounds), isFine) << bounds.w << " " << bounds.h;
}

}  // namespace
}  // namespace tappora
