#include "core/practice/seeded_random.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace tapcore {
namespace {

static_assert(std::uniform_random_bit_generator<SeededRandom>);

TEST(SeededRandom, GivesSplitMix64sNumbers) {
    SeededRandom zero(0);
    EXPECT_EQ(zero.next(), 0xE220A8397B1DCDAF);
    EXPECT_EQ(zero.next(), 0x6E789E6AA1B965F4);
    SeededRandom other(1234567);
    EXPECT_EQ(other.next(), 6457827717110365317U);
    EXPECT_EQ(other.next(), 3203168211198807973U);
    EXPECT_EQ(other.next(), 9817491932198370423U);
}

TEST(SeededRandom, DrawsByMultiplicationWithRejection) {
    SeededRandom small(42);
    std::vector<std::uint64_t> drawn;
    for (int i = 0; i < 12; ++i) drawn.push_back(small.below(10));
    EXPECT_EQ(drawn, (std::vector<std::uint64_t>{7, 1, 2, 3, 0, 8, 2, 8, 3, 6, 2, 4}));

    // Just above half of all numbers, every second draw is rejected: the first and the third to fifth are
    // here.
    SeededRandom large(42);
    EXPECT_EQ(large.below((std::uint64_t{1} << 63) + 1), 1474913046063446145U);
    EXPECT_EQ(large.below((std::uint64_t{1} << 63) + 1), 8007990562831494531U);
    EXPECT_EQ(SeededRandom(42).below(1), 0U);
}

}  // namespace
}  // namespace tapcore
