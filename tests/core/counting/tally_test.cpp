#include "core/counting/tally.h"

#include <gtest/gtest.h>

namespace tapcore {
namespace {

const Tally::Chord copy{{Modifiers::command}, 8};

TEST(Tally, IgnoresWhatIsNoCountOrNoHour) {
    Tally tally;
    tally.add(KeyCode{0}, 24, 5);
    tally.add(KeyCode{0}, -1, 5);
    tally.add(KeyCode{0}, 3, 0);
    tally.add(copy, 3, -1);
    tally.add(Tally::Chord{{Modifiers::shift, Modifiers::function}, 0}, 3, 5);
    tally.addUnkeyed(0, 3);
    tally.addUnkeyed(5, 24);
    tally.add(Tally::MouseHour{}, 3);
    tally.add(Tally::MouseHour{.clicks = 1}, 24);
    EXPECT_TRUE(tally.isEmpty());
    tally.add(Tally::Chord{{Modifiers::option}, 0}, 3, 5);
    EXPECT_EQ(tally.byChord().size(), 1U);
}

/// Hour 9: a 3 times, c 2 times, once with cmd. Hour 22: 4 forgotten presses, and the mouse.
Tally sample() {
    Tally tally;
    tally.add(KeyCode{0}, 9, 3);
    tally.add(KeyCode{8}, 9, 2);
    tally.add(copy, 9, 1);
    tally.addUnkeyed(4, 22);
    tally.add(Tally::MouseHour{2, 1, 1, 7, 1000}, 22);
    return tally;
}

TEST(Tally, AddsUpByHourKeyAndChord) {
    const Tally tally = sample();
    EXPECT_EQ(tally.byHour()[9], 5);
    EXPECT_EQ(tally.byHour()[22], 4);
    EXPECT_EQ(tally.total(), 9);
    EXPECT_EQ(tally.activeHours(), 2);
    EXPECT_EQ(tally.clicksByHour()[22], 4);
    EXPECT_EQ(tally.movedMetres(), 1000 * 0.000264);
}

TEST(Tally, ForgettingKeysKeepsTheTotals) {
    Tally tally = sample();
    const auto before = tally.byHour();
    tally.forgetKeys();
    EXPECT_EQ(tally.byHour(), before);
    EXPECT_TRUE(tally.byKey().empty());
    EXPECT_FALSE(tally.byChord().empty());
    tally.forgetChords();
    EXPECT_TRUE(tally.byChord().empty());
    EXPECT_EQ(tally.total(), 9);
}

TEST(Tally, MergesMachinesInAnyOrder) {
    Tally other;
    other.add(KeyCode{0}, 9, 1);
    other.add(KeyCode{1}, 0, 1);
    other.add(Tally::MouseHour{.moved = 5}, 22);
    Tally ab = sample(), ba = other;
    ab.merge(other);
    ba.merge(sample());
    EXPECT_EQ(ab, ba);
    EXPECT_EQ(ab.keys[9], (Tally::KeyCounts{{0, 4}, {8, 2}}));
    EXPECT_EQ(ab.mouseTotal(), (Tally::MouseHour{2, 1, 1, 7, 1005}));
}

TEST(Tally, WithMovementAloneIsNotEmptyAndNotActive) {
    Tally tally;
    tally.add(Tally::MouseHour{.moved = 12}, 8);
    EXPECT_FALSE(tally.isEmpty());
    EXPECT_EQ(tally.total(), 0);
    EXPECT_EQ(tally.activeHours(), 0);
}

}  // namespace
}  // namespace tapcore
