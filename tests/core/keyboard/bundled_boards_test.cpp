#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <map>

#include "core/keyboard/catalog.h"

namespace tapcore {
namespace {

using Corners = std::array<Board::Point, 4>;

const Catalog& bundled() {
    static const Catalog catalog = Catalog(RESOURCES "/Boards", "");
    return catalog;
}

std::vector<Corners> rectangles(const Board::Key& key) {
    std::vector<Corners> result;
    for (const Board::Rect& rect : {key.rect(), key.second.value_or(key.rect())})
        result.push_back({key.turned({rect.x, rect.y}), key.turned({rect.x + rect.w, rect.y}),
                          key.turned({rect.x + rect.w, rect.y + rect.h}),
                          key.turned({rect.x, rect.y + rect.h})});
    return result;
}

/// How far two rectangles reach into each other across the sides of the first: below 0 when a line parallel
/// to one of its sides runs between them.
double depthAcrossSides(const Corners& a, const Corners& b) {
    double least = 1000;
    for (std::size_t i = 0; i < 4; ++i) {
        const Board::Point& from = a[i];
        const Board::Point& to = a[(i + 1) % 4];
        const double length = std::hypot(to.x - from.x, to.y - from.y);
        double inside = -1000;
        for (const Board::Point& corner : b)
            inside = std::max(
                inside,
                ((to.x - from.x) * (corner.y - from.y) - (to.y - from.y) * (corner.x - from.x)) / length);
        least = std::min(least, inside);
    }
    return least;
}

bool overlap(const Board::Key& a, const Board::Key& b) {
    constexpr double touching = 0.001;
    for (const Corners& first : rectangles(a))
        for (const Corners& second : rectangles(b))
            if (depthAcrossSides(first, second) > touching && depthAcrossSides(second, first) > touching)
                return true;
    return false;
}

TEST(BundledBoards, BeginAtTheOrigin) {
    for (const Board& board : bundled().boards) {
        const Board::Rect bounds = board.bounds();
        EXPECT_TRUE(bounds.x >= 0 && bounds.x <= 0.001) << board.id << ": " << bounds.x;
        EXPECT_TRUE(bounds.y >= 0 && bounds.y <= 0.001) << board.id << ": " << bounds.y;
    }
}

TEST(BundledBoards, HaveNoKeyOnAnother) {
    for (const Board& board : bundled().boards)
        for (std::size_t i = 0; i < board.keys.size(); ++i)
            for (std::size_t j = i + 1; j < board.keys.size(); ++j)
                EXPECT_FALSE(overlap(board.keys[i], board.keys[j]))
                    << board.id << ": " << board.keys[i].id << " and " << board.keys[j].id;
}

TEST(BundledBoards, LetEveryFingerRestOnOneKeyOfItsOwn) {
    for (const Board& board : bundled().boards) {
        std::map<std::pair<Board::Hand, Board::Finger>, int> resting;
        for (const Board::Key& key : board.keys)
            if (key.home) ++resting[{key.hand, key.finger}];
        for (const auto& [finger, keys] : resting) EXPECT_EQ(keys, 1) << board.id;
        EXPECT_GE(resting.size(), 9u) << board.id;  // eight fingers and a thumb
    }
}

TEST(BundledBoards, TypeTheWholeAlphabetByTheFingersThatAreTaught) {
    // Column by column from the left, each from the upper row down.
    constexpr std::array<KeyCode, 30> codes = {12, 0, 6,  13, 1,  7,  14, 2,  8,  15, 3,  9,  17, 5,  11,
                                               16, 4, 45, 32, 38, 46, 34, 40, 43, 31, 37, 47, 35, 41, 44};
    constexpr std::array<int, 10> fingers = {0, 1, 2, 3, 3, 3, 3, 2, 1, 0};
    for (const Board& board : bundled().boards)
        for (std::size_t column = 0; column < 10; ++column)
            for (std::size_t row = 0; row < 3; ++row) {
                const Board::Key* key = board.key(codes[3 * column + row]);
                ASSERT_NE(key, nullptr) << board.id << " " << codes[3 * column + row];
                EXPECT_EQ(key->hand, column < 5 ? Board::Hand::left : Board::Hand::right)
                    << board.id << key->id;
                EXPECT_EQ(static_cast<int>(key->finger), fingers[column]) << board.id << " " << key->id;
                EXPECT_EQ(static_cast<int>(key->row),
                          static_cast<int>(Board::Row::upper) + static_cast<int>(row));
            }
}

TEST(BundledBoards, GiveReturnItsTwoPartsOnIsoAndJis) {
    for (const Board& board : bundled().boards) {
        const bool isTall = board.id.ends_with("-iso") || board.id.ends_with("-jis");
        const Board::Key* key = board.key(36);
        EXPECT_EQ(key && key->second.has_value(), isTall) << board.id;
    }
}

}  // namespace
}  // namespace tapcore
