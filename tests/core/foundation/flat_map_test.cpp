#include "core/foundation/flat_map.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace tapcore {
namespace {

using Counts = FlatMap<int, std::int64_t>;

TEST(FlatMap, AgreesWithAnOrdinaryMap) {
    std::mt19937 random(1);
    for (int round = 0; round < 50; ++round) {
        Counts flat, other;
        std::map<int, std::int64_t> tree;
        for (int i = 0; i < 60; ++i) {
            const int key = static_cast<int>(random() % 40);
            (i % 2 == 0 ? flat : other)[key] += i;
            tree[key] += i;
        }
        addCounts(flat, other);
        EXPECT_TRUE(std::equal(
            flat.begin(), flat.end(), tree.begin(), tree.end(),
            [](const auto& a, const auto& b) { return a.first == b.first && a.second == b.second; }));
        EXPECT_EQ(flat.find(41), nullptr);
        EXPECT_EQ(flat.valueOr(tree.begin()->first, -1), tree.begin()->second);
    }
}

TEST(FlatMapDeathTest, ASumThatLeaves64BitsIsFatalAndNamesWhatWasUnderWay) {
    Counts counts{{1, INT64_MAX}};
    EXPECT_DEATH(
        {
            const FatalContext outer("adding", "days/2026-09-20.md");
            addCounts(counts, Counts{{1, 1}});
        },
        "fatal: a count does not fit into 64 bits, adding days/2026-09-20.md");
}

}  // namespace
}  // namespace tapcore
