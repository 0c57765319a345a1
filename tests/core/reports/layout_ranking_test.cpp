#include "core/reports/layout_ranking.h"

#include <gtest/gtest.h>

namespace tapcore {
namespace {

TEST(LayoutRanking, OffersNothingWithoutEnoughPressesNorALayoutThatLacksWhatWasTyped) {
    const LayoutStanding today{.id = "today", .name = "Today", .metres = 100};
    const LayoutStanding lacking{.id = "lacking", .name = "Lacking", .metres = 50, .stayed = 11};
    const LayoutStanding whole{.id = "whole", .name = "Whole", .metres = 79, .stayed = 10};
    const LayoutStanding close{.id = "close", .name = "Close", .metres = 80};

    EXPECT_EQ(LayoutRanking({1000, today, {lacking, whole, close}}).clearlyBetter()->id, "whole");
    EXPECT_EQ(LayoutRanking({999, today, {whole}}).clearlyBetter(), nullptr);
    EXPECT_EQ(LayoutRanking({1000, today, {lacking, close}}).clearlyBetter(), nullptr);
    EXPECT_EQ(LayoutRanking({1000, {.metres = 0}, {{.metres = 0}}}).clearlyBetter(), nullptr);
}

TEST(LayoutRanking, TellsALanguageWhoseLettersTheBoardHasNoKeysFor) {
    Board board{.id = "two"};
    board.keys = {{.id = "a", .keyCode = 0}, {.id = "s", .keyCode = 1, .x = 1}};
    const Legends legends = {{0, {"a", "A"}}, {1, {"s", "ß"}}, {2, {"d", "D"}}};

    EXPECT_TRUE(typesOn(board, {"a", "ß"}, legends));
    EXPECT_FALSE(typesOn(board, {"a", "d"}, legends));
    EXPECT_FALSE(typesOn(board, {}, legends));
}

}  // namespace
}  // namespace tapcore
