#include "core/keyboard/import/board/strikes.h"

#include <gtest/gtest.h>

#include "core/keyboard/catalog.h"

namespace tapcore {
namespace {

/// How many in a hundred keys of a board are guessed as it has them.
struct Agreement {
    std::size_t hands = 0;
    std::size_t fingers = 0;
    std::size_t rows = 0;
};

Agreement agreement(const Board& board, bool keepsCodes) {
    std::vector<Board::Key> keys = board.keys;
    for (Board::Key& key : keys) {
        key.hand = {};
        key.finger = {};
        key.row = {};
        key.home = false;
        if (!keepsCodes) key.keyCode.reset();
    }
    guessStrikes(keys);
    Agreement same;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const bool isHand = keys[i].hand == board.keys[i].hand;
        same.hands += isHand;
        same.fingers += isHand && keys[i].finger == board.keys[i].finger;
        same.rows += keys[i].row == board.keys[i].row;
    }
    const auto percent = [&](std::size_t count) { return 100 * count / keys.size(); };
    return {percent(same.hands), percent(same.fingers), percent(same.rows)};
}

TEST(Strikes, AreGuessedFromWhereTheLettersLie) {
    for (const Board& board : Catalog(RESOURCES "/Boards", "").boards) {
        const Agreement same = agreement(board, true);
        EXPECT_GE(same.hands, 97u) << board.id;
        EXPECT_GE(same.fingers, 80u) << board.id;
        EXPECT_GE(same.rows, 95u) << board.id;
        EXPECT_GE(agreement(board, false).hands, 96u) << board.id << " without codes";
    }
}

TEST(Strikes, AreAllRightOnPlainGridsWithoutCodes) {
    const Catalog catalog = Catalog(RESOURCES "/Boards", "");
    for (const char* id : {"planck", "preonic", "corne", "kyria"}) {
        const Agreement same = agreement(*catalog.board(id), false);
        EXPECT_EQ(same.fingers, 100u) << id;
        EXPECT_EQ(same.rows, 100u) << id;
    }
}

}  // namespace
}  // namespace tapcore
