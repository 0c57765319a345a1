#include "core/keyboard/heatmap.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace tapcore {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Board::Key key(std::string id, std::optional<KeyCode> code) { return {.id = std::move(id), .keyCode = code}; }

// [esc?] [q] [w] [tab] [w again]    The first sends nothing.
const Board board{.id = "b",
                  .keys = {key("esc", {}), key("q", 12), key("w", 13), key("tab", 48), key("w2", 13)}};
const Legends legends{{12, {"q", "Q"}}, {13, {"w", "W"}}, {48, {"tab"}}, {18, {"1", "!"}}};

std::vector<std::int64_t> steps(const Heatmap& map) {
    std::vector<std::int64_t> steps;
    for (const auto& cell : map.cells) steps.push_back(cell.step);
    return steps;
}

std::vector<std::int64_t> stepsAmong(std::vector<std::int64_t> counts) {
    const auto rank = Heatmap::ranked(counts);
    std::transform(counts.begin(), counts.end(), counts.begin(), rank);
    return counts;
}

TEST(Heatmap, LaysCountsAndLegendsOverTheKeys) {
    const Heatmap map(board, legends, {{12, 1}, {13, 100}, {50, 7}}, {});
    // 1, 100 and again 100 are ranked: a third of 0.75, times 5, rounded up.
    EXPECT_THAT(steps(map), ElementsAre(0, 2, 5, 0, 5));
    EXPECT_EQ(map.cells[1],
              (Heatmap::Cell{.key = board.keys[1], .legend = {"q", "Q"}, .count = 1, .step = 2}));
    EXPECT_THAT(map.cells[1].faceLegend(), ElementsAre("Q"));
    EXPECT_THAT(map.cells[3].faceLegend(), ElementsAre("tab"));
    EXPECT_THAT(map.cells[0].legend, IsEmpty());
    EXPECT_EQ(map.offBoard, 7);
    EXPECT_EQ(map.busiest, 100);
    EXPECT_EQ(map.total(), 201);
}

TEST(Heatmap, KeepsLeftOutKeysOutOfRanksAndTotals) {
    const Heatmap map(board, legends, {{12, 3}, {13, 1'000'000}, {48, 2}, {50, 7}}, {13, 50});
    EXPECT_THAT(steps(map), ElementsAre(0, 5, 0, 2, 0));
    EXPECT_EQ(map.cells[2].off ? map.cells[2].count : 0, 1'000'000);
    EXPECT_EQ(map.busiest, 3);
    EXPECT_EQ(map.total(), 5);
    EXPECT_EQ(map.offBoard, 7);
    EXPECT_THAT(map.top(9), ElementsAre(Heatmap::TopKey{"Q", 3, 60, KeyCode{12}},
                                        Heatmap::TopKey{"Tab", 2, 40, KeyCode{48}}));
}

TEST(Heatmap, RanksThreeQuartersByPlaceAndOneByMagnitude) {
    EXPECT_THAT(stepsAmong({7}), ElementsAre(5));
    EXPECT_THAT(stepsAmong({7, 7, 0, -3}), ElementsAre(5, 5, 0, 0));
    EXPECT_THAT(stepsAmong({1, 100}), ElementsAre(2, 5));
    EXPECT_THAT(stepsAmong({1, 2, 4, 8, 16}), ElementsAre(1, 2, 3, 4, 5));
    // Equal as doubles, though not as integers.
    EXPECT_THAT(stepsAmong({INT64_MAX - 1, INT64_MAX}), ElementsAre(4, 5));
}

TEST(Heatmap, StepsOnALogarithmicScaleWithoutAList) {
    EXPECT_EQ(Heatmap::step(0, 100), 0);
    EXPECT_EQ(Heatmap::step(1, 1'000'000), 1);
    EXPECT_EQ(Heatmap::step(9, 99), 3);  // log 10 of log 100, times 5, is 2.5
    EXPECT_EQ(Heatmap::step(INT64_MAX, INT64_MAX), 5);
}

TEST(Heatmap, TopKeysListEachCodeOnceAndEqualCountsByID) {
    const Board names{.id = "b",
                      .keys = {key("z", 1), key("left", 2), key("m", 3), key("x", 1), key("y", 4)}};
    const Legends named{{1, {"caps lock"}}, {3, {"straße", ""}}, {4, {"ß"}}};
    const Heatmap map(names, named, {{1, 10}, {2, 10}, {3, 2}, {4, 1}}, {});
    EXPECT_THAT(map.top(4), ElementsAre(Heatmap::TopKey{"Left", 10, 30, KeyCode{2}},
                                        Heatmap::TopKey{"Caps lock", 10, 30, KeyCode{1}},
                                        Heatmap::TopKey{"Straße", 2, 6, KeyCode{3}},
                                        Heatmap::TopKey{"SS", 1, 3, KeyCode{4}}));
    EXPECT_THAT(map.top(-1), IsEmpty());
    EXPECT_THAT(Heatmap(names, named, {}, {}).top(5), IsEmpty());
}

TEST(HeatmapDeathTest, EndsWhenPressesOffTheBoardDoNotFit) {
    EXPECT_DEATH(Heatmap(board, {}, {{50, INT64_MAX}, {51, 1}}, {51}), "a count does not fit into 64 bits");
}

}  // namespace
}  // namespace tapcore
