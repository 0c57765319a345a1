#include "core/keyboard/load.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tuple>

#include "core/keyboard/letter_moves.h"

namespace tapcore {
namespace {

using testing::ElementsAre;
using enum Board::Finger;
using enum Board::Hand;
using Row = Board::Row;

Board::Key key(KeyCode code, double x, double y, Board::Hand hand, Board::Finger finger, Row row,
               bool home = false) {
    Board::Key key{.id = std::to_string(code), .keyCode = code, .x = x, .y = y};
    std::tie(key.hand, key.finger, key.row, key.home) = std::tuple(hand, finger, row, home);
    return key;
}

//  q   .   .   p      upper
//  a   s   .   ;      home: a, s and ;
//  z   .   .   .      lower, 3 right and 4 down of a's middle
//      space          no home key
const Board board{
    .id = "b",
    .keys = {key(12, 0, 0, left, pinky, Row::upper), key(35, 3, 0, right, pinky, Row::upper),
             key(0, 0, 1, left, pinky, Row::home, true), key(1, 1, 1, left, ring, Row::home, true),
             key(41, 3, 1, right, pinky, Row::home, true), key(6, 3, 5, left, pinky, Row::lower),
             key(49, 1, 3, right, thumb, Row::thumb)}};
const Legends qwerty{{12, {"q", "Q"}}, {35, {"p", "P"}}, {0, {"a", "A"}}, {1, {"s", "S"}},
                     {41, {";", ":"}}, {6, {"z", "Z"}},  {49, {"space"}}, {83, {"1"}}};

TEST(Load, GoesToFingerHandAndRowWithTheWayFromHomeAndBack) {
    const Load load(board, qwerty, {{0, 10}, {6, 2}, {12, 3}, {35, 4}, {49, 1}, {100, 9}}, {});
    EXPECT_EQ(load.all.presses, 20);
    EXPECT_EQ(load.offBoard, 9);
    const Load::Part& pinkyLeft = load.byFinger.at({left, pinky});
    EXPECT_EQ(pinkyLeft.presses, 15);
    EXPECT_DOUBLE_EQ(load.share(pinkyLeft), 0.75);
    EXPECT_DOUBLE_EQ(pinkyLeft.metres, (2 * 2 * 5 + 3 * 2 * 1) * 0.01905);
    EXPECT_DOUBLE_EQ(load.byHand.at(right).metres, 4 * 2 * 0.01905);
    EXPECT_EQ(load.byRow.at(Row::upper).presses, 7);
    EXPECT_DOUBLE_EQ(load.byRow.at(Row::lower).metres, 2 * 2 * 5 * 0.01905);
    EXPECT_THAT(load.homeless, ElementsAre(Load::Striker{right, thumb}));
}

TEST(Load, TellsLeftOutKeysApartByNameAndMovesTheRest) {
    const Load load(board, qwerty, {{0, 10}, {49, 90}, {100, 5}}, {49, 100, 12}, {{0, 41}, {49, 0}});
    EXPECT_EQ(load.all.presses, 10);
    EXPECT_EQ(load.byFinger.at({right, pinky}).presses, 10);
    EXPECT_EQ(load.offBoard, 0);
    EXPECT_THAT(load.leftOut,
                ElementsAre(LeftOut{12, "Q", 0}, LeftOut{49, "space", 90}, LeftOut{100, "key 100", 5}));
    EXPECT_EQ(Load(board, qwerty, {}, {}).share({}), 0);
}

TEST(LetterMoves, TakesEachCharacterToItsKeyOnTheOtherLayout) {
    // p and ; trade places with s and p; z is gone; the number pad and named keys stay out of it.
    const Legends other{{12, {"Q"}},      {35, {";", ":"}}, {0, {"a", "A"}}, {1, {"p", "P"}},
                        {41, {"s", "S"}}, {6, {"ж", "Ж"}},  {49, {"leer"}},  {83, {"x"}}};
    const LetterMoves moves(qwerty, other, board);
    EXPECT_EQ(moves.moved, (KeyRemap{{35, 1}, {1, 41}, {41, 35}}));
    EXPECT_THAT(moves.stayed, ElementsAre(6));
}

TEST(LetterMoves, PrefersUnshiftedToShiftedAndTheOwnKeyToOthers) {
    const struct {
        Legends to;
        KeyRemap moved;
    } cases[] = {
        {{{0, {"x", ";"}}, {41, {"y", ";"}}}, {}},               // the same, shifted
        {{{0, {"x", ";"}}, {6, {";"}}, {1, {";"}}}, {{41, 1}}},  // unshifted on several others
        {{{0, {"x", ";"}}, {41, {"y"}}}, {{41, 0}}},             // shifted on another
        {{{10, {";"}}, {83, {";"}}, {49, {";x"}}}, {}}  // not on this board, on the number pad, in a name
    };
    for (const auto& [to, moved] : cases) EXPECT_EQ(LetterMoves({{41, {";", ":"}}}, to, board).moved, moved);
}

}  // namespace
}  // namespace tapcore
