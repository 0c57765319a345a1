#include "app/tappora/bar_chart.h"

#include <gtest/gtest.h>

namespace tappora {
namespace {

const Terminal ascii{};
const Terminal unicode{.unicode = true};

TEST(Bar, FillsItsWidthByEighthsAndIsSeenForAnyCount) {
    const struct {
        std::int64_t count, most;
        std::string unicode, ascii;
    } cases[] = {
        {0, 100, "", ""},          {-5, 100, "", ""},          {1, 100000, "▏", "#"},
        {50, 100, "██", "##"},     {100, 100, "████", "####"}, {99, 100, "████", "####"},
        {97, 100, "███▉", "####"}, {26, 100, "█", "#"},        {37, 100, "█▌", "#"},
        {38, 100, "█▌", "##"},     {200, 100, "████", "####"}, {3, 3, "████", "####"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(bar(c.count, c.most, 4, unicode), c.unicode) << c.count;
        EXPECT_EQ(bar(c.count, c.most, 4, ascii), c.ascii) << c.count;
    }
    EXPECT_EQ(bar(2, 4, 4, {.colours = true}), "\033[38;5;173m##\033[0m");
}

tapcore::Tally::Hourly<std::int64_t> hours(
    std::initializer_list<std::pair<std::size_t, std::int64_t>> counts) {
    tapcore::Tally::Hourly<std::int64_t> all{};
    for (const auto& [hour, count] : counts) all[hour] = count;
    return all;
}

TEST(HoursChart, DrawsAColumnForEachHour) {
    const auto byHour = hours({{0, 1}, {8, 1500}, {9, 750}, {10, 300}, {23, 160}});
    EXPECT_EQ("\n" + hoursChart(byHour, "1,500", {}, ascii), R"(
1,500                         ##
                              ##
                              ## ##
                              ## ##
      ##                      ## ## ##                                     ##
      0        3        6        9        12       15       18       21
)");
    EXPECT_EQ("\n" + hoursChart(byHour, "1,500", {.twelveHours = true}, unicode), R"(
1,500                         ██
                              ██
                              ██ ▄▄
                              ██ ██
      ▁▁                      ██ ██ ██                                     ▄▄
      12 AM    3 AM     6 AM     9 AM     12 PM    3 PM     6 PM     9 PM
)");
    EXPECT_EQ(hoursChart(hours({}), "0", {}, unicode), "");
    EXPECT_EQ(hoursChart(hours({{4, -1}}), "0", {}, unicode), "");
}

}  // namespace
}  // namespace tappora
