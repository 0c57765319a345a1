#include "app/common/keyboard/board_counts.h"

#include <gtest/gtest.h>

namespace tappora {
namespace {

TEST(BoardCounts, SharesHaveTwoDigits) {
    const struct {
        std::int64_t count, total;
        std::string text;
    } cases[] = {{0, 0, "0 %"},        {0, 9, "0 %"},          {4, 10000, "<0.1 %"}, {994, 10000, "9.9 %"},
                 {996, 10000, "10 %"}, {9996, 10000, "100 %"}, {7, 7, "100 %"}};
    for (const auto& [count, total, text] : cases) EXPECT_EQ(percentText(count, total), text);
}

}  // namespace
}  // namespace tappora
