#include "core/keyboard/load.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/keyboard/letter_moves.h"

namespace tapcore {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using enum Board::Finger;
using enum Board::Hand;
using Row = Board::Row;

Board::Key key(std::string id, KeyCode code, double x, double y, Board::Hand hand, Board::Finger finger,
               Row row, bool home = false) {
    return {.id = std::move(id),
            .keyCode = code,
            .x = x,
            .y = y,
            .hand = hand,
            .finger = finger,
            .row = row,
            .home = home};
}

//  q   .   .   p      upper
//  a   s   .   ;      home: a, s and ;
//  z   .   .   .      lower, 3 right and 4 down of a's middle
//      space          no home key
const Board board{
    .id = "b",
    .keys = {key("q", 12, 0, 0, left, pinky, Row::upper), key("p", 35, 3, 0, right, pinky, Row::upper),
             key("a", 0, 0, 1, left, pinky, Row::home, true), key("s", 1, 1, 1, left, ring, Row::home, true),
             key(";", 41, 3, 1, right, pinky, Row::home, true), key("z", 6, 3, 5, left, pinky, Row::lower),
             key("space", 49, 1, 3, right, thumb, Row::thumb)}};
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
    EXPECT_EQ(load.byHand.at(right).presses, 5);
    EXPECT_EQ(load.byRow.at(Row::upper).presses, 7);
    EXPECT_DOUBLE_EQ(load.byRow.at(Row::lower).metres, 2 * 2 * 5 * 0.01905);
    EXPECT_EQ(load.byFinger.at({left, ring}), Load::Part{});
    EXPECT_EQ(load.byFinger.begin()->first, (Load::Striker{left, pinky}));
    EXPECT_THAT(load.homeless, ElementsAre(Load::Striker{right, thumb}));
}

TEST(Load, TellsLeftOutKeysApartByName) {
    const Load load(board, qwerty, {{0, 10}, {49, 90}, {100, 5}}, {49, 100, 12});
    EXPECT_EQ(load.all.presses, 10);
    EXPECT_EQ(load.offBoard, 0);
    EXPECT_THAT(load.leftOut,
                ElementsAre(LeftOut{12, "Q", 0}, LeftOut{49, "space", 90}, LeftOut{100, "key 100", 5}));
    EXPECT_EQ(Load(board, qwerty, {}, {}).share({}), 0);
}

TEST(Load, CountsACodeOnTwoKeysOnce) {
    Board twice = board;
    twice.keys.push_back(key("a2", 0, 9, 9, right, index, Row::home));
    const Load load(twice, qwerty, {{0, 10}}, {});
    EXPECT_EQ(load.all.presses, 10);
    EXPECT_EQ(load.byFinger.at({right, index}).presses, 0);
}

TEST(LetterMoves, TakesEachCharacterToItsKeyOnTheOtherLayout) {
    // p and ; trade places with s and p; z is gone; the number pad and named keys stay out of it.
    const Legends other{{12, {"Q"}},      {35, {";", ":"}}, {0, {"a", "A"}}, {1, {"p", "P"}},
                        {41, {"s", "S"}}, {6, {"ж", "Ж"}},  {49, {"leer"}},  {83, {"x"}}};
    const LetterMoves moves(qwerty, other, board);
    EXPECT_EQ(moves.moved, (KeyRemap{{35, 1}, {1, 41}, {41, 35}}));
    EXPECT_THAT(moves.stayed, ElementsAre(6));
    EXPECT_EQ(LetterMoves(qwerty, qwerty, board).moved, KeyRemap{});
}

TEST(LetterMoves, PrefersUnshiftedToShiftedAndTheOwnKeyToOthers) {
    const struct {
        Legends to;
        KeyRemap moved;
    } cases[] = {
        {{{0, {";"}}, {41, {";"}}}, {}},                // own key, and another
        {{{0, {"x", ";"}}, {41, {"y", ";"}}}, {}},      // the same, shifted
        {{{0, {"x", ";"}}, {1, {";"}}}, {{41, 1}}},     // unshifted on another
        {{{6, {";"}}, {1, {";"}}}, {{41, 1}}},          // on several others
        {{{0, {"x", ";"}}, {41, {"y"}}}, {{41, 0}}},    // shifted on another
        {{{10, {";"}}, {83, {";"}}, {49, {";x"}}}, {}}  // not on this board, on the number pad, in a name
    };
    for (const auto& [to, moved] : cases) EXPECT_EQ(LetterMoves({{41, {";", ":"}}}, to, board).moved, moved);
}

TEST(Load, IsWhatTheDocumentedExampleSays) {
    const Board three{
        .id = "b",
        .keys = {key("q", 12, 0, 0, left, pinky, Row::upper), key("a", 0, 0, 1, left, pinky, Row::home, true),
                 key("s", 1, 1, 1, left, ring, Row::home, true)}};
    const Tally::KeyCounts counts{{0, 10}, {1, 5}, {12, 3}, {99, 2}};
    const Load load(three, qwerty, counts, {});
    EXPECT_EQ(load.byFinger.at({left, pinky}), (Load::Part{13, 3 * 0.0381}));
    EXPECT_EQ(load.byFinger.at({left, ring}), (Load::Part{5, 0}));
    EXPECT_EQ(load.offBoard, 2);
    const LetterMoves traded(qwerty, {{0, {"a"}}, {1, {"q"}}, {12, {"s"}}}, three);
    const Load other(three, qwerty, counts, {}, traded.moved);
    EXPECT_EQ(other.byFinger.at({left, pinky}), (Load::Part{15, 5 * 0.0381}));
    EXPECT_EQ(other.byFinger.at({left, ring}).presses, 3);
}

TEST(Load, MovesLettersButNotThoseLeftOut) {
    const Load load(board, qwerty, {{0, 10}, {1, 5}}, {1}, {{0, 41}, {1, 35}});
    EXPECT_EQ(load.byFinger.at({right, pinky}).presses, 10);
    EXPECT_EQ(load.all.presses, 10);
    EXPECT_THAT(load.leftOut, ElementsAre(LeftOut{1, "S", 5}));
}

}  // namespace
}  // namespace tapcore
