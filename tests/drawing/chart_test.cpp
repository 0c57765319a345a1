#include "drawing/chart.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

#include "drawing/accessibility.h"
#include "drawing/scale.h"
#include "drawing/smooth.h"
#include "drawing/svg_text.h"

namespace drawing {
namespace {

std::string whole(double value) { return std::to_string(static_cast<long>(value)); }

AreaChart hours(std::vector<double> values) {
    AreaChart chart{.size = {300, 100},
                    .label = "Hours",
                    .points = {},
                    .lastX = 23,
                    .xMarks = {{0, "0"}, {6, "6"}, {12, "12"}, {18, "18"}},
                    .number = whole,
                    .style = {}};
    for (const double value : values) chart.points.push_back({std::to_string(chart.points.size()), value});
    return chart;
}

/// All texts, in drawing order.
void collect(const Node& node, std::vector<std::string>& texts) {
    if (const auto* text = std::get_if<Text>(&node.content)) texts.push_back(text->text);
    if (const auto* group = std::get_if<Group>(&node.content))
        for (const Node& child : group->children) collect(child, texts);
}
std::vector<std::string> textsOf(const Node& node) {
    std::vector<std::string> texts;
    collect(node, texts);
    return texts;
}

TEST(Smoothing, IsAStraightLineWhereTheDataAre) {
    const std::vector<Point> points = {{0, 0}, {3, 3}, {6, 6}};
    EXPECT_EQ(svgPath(smoothLine(points)), "M0 0c1 1 2 2 3 3c1 1 2 2 3 3");
    EXPECT_EQ(svgPath(areaUnder(points, 10)), "M0 0c1 1 2 2 3 3c1 1 2 2 3 3v4h-6z");
    EXPECT_TRUE(smoothLine(std::vector<Point>{{1, 1}}).steps.empty());
    EXPECT_TRUE(areaUnder({}, 0).steps.empty());
}

TEST(Smoothing, NeverLeavesTheRangeBetweenNeighbours) {
    std::mt19937 random(11);
    for (int round = 0; round < 200; ++round) {
        std::vector<Point> points;
        double x = 0;
        for (int i = 0; i < 24; ++i)
            points.push_back({x += double(1 + random() % 3), random() % 3 ? double(random() % 1000) : 0.0});
        const Path path = smoothLine(points);
        for (std::size_t i = 0; i + 1 < points.size(); ++i) {
            const auto [low, high] = std::minmax(points[i].y, points[i + 1].y);
            for (const Point& handle : {path.points[3 * i + 1], path.points[3 * i + 2]}) {
                ASSERT_GE(handle.y, low - 1e-9);
                ASSERT_LE(handle.y, high + 1e-9);
            }
        }
    }
}

TEST(Scales, MarkRoundNumbersThatHoldTheLargest) {
    const struct {
        double largest;
        int most;
        std::vector<double> marks;
    } cases[] = {{0, 4, {0, 1}},
                 {1, 4, {0, 1}},
                 {3, 4, {0, 1, 2, 3}},
                 {4.5, 4, {0, 2, 4, 6}},
                 {1999, 4, {0, 500, 1000, 1500, 2000}},
                 {2001, 4, {0, 1000, 2000, 3000}},
                 {-5, 4, {0, 1}},
                 {std::numeric_limits<double>::infinity(), 4, {0, 1}}};
    for (const auto& c : cases) EXPECT_EQ(roundMarks(c.largest, c.most), c.marks) << c.largest;
    EXPECT_GE(roundMarks(1.7e308, 4).back(), 1.7e308);
}

TEST(Scales, RunBetweenAnyTwoPlaces) {
    const Scale upwards{.from = 10, .to = 20, .start = 100, .end = 0};
    const std::pair<double, double> cases[] = {{10, 100}, {15, 50}, {20, 0}, {5, 150}, {30, -100}};
    for (const auto& [value, place] : cases) EXPECT_DOUBLE_EQ(upwards(value), place) << value;
    EXPECT_DOUBLE_EQ(Scale{}(0.25), 0.25);
}

TEST(AreaChart, TellsEveryAmountWithinOneElement) {
    const std::vector<Element> told = elementsOf(areaChart(hours({5, 0, -3})));
    EXPECT_EQ(told, (std::vector<Element>{{"Hours", "", {{"0", "5", {}}, {"1", "0", {}}, {"2", "-3", {}}}}}));
}

TEST(AreaChart, SpansTheSameHoursWhateverTheData) {
    const std::vector<std::string> labels = {"0", "1", "0", "6", "12", "18"};
    EXPECT_EQ(textsOf(areaChart(hours(std::vector<double>(24, 0)))), labels);
    EXPECT_EQ(textsOf(areaChart(hours({}))), labels);
    EXPECT_EQ(textsOf(areaChart(hours({1e6}))),
              (std::vector<std::string>{"0", "500000", "1000000", "0", "6", "12", "18"}));
}

TEST(BarChart, DrawsBarsInProportionAndTellsEach) {
    const Style style{.role = Style::Role::accent};
    const BarChart chart{.size = {200, 100},
                         .label = "",
                         .bars = {{{"Mon", 50}, style}, {{"Tue", 100}, style}, {{"Wed", 0}, style}},
                         .number = whole};
    const Node node = barChart(chart);
    EXPECT_EQ(elementsOf(node),
              (std::vector<Element>{{"Mon", "50", {}}, {"Tue", "100", {}}, {"Wed", "0", {}}}));
    const auto height = [&](std::size_t index) {
        const Node& bar = std::get<Group>(node.content).children[index];
        const auto bounds =
            std::get<Shape>(std::get<Group>(bar.content).children.front().content).path.bounds();
        return bounds ? bounds->height : 0;
    };
    EXPECT_DOUBLE_EQ(height(0), height(1) / 2);
    EXPECT_GT(height(1), 80);
    EXPECT_EQ(height(2), 0);
}

TEST(BarChart, LeavesOutLabelsThatWouldMeet) {
    BarChart chart{.size = {200, 100}, .label = "", .bars = {}, .number = whole};
    for (int day = 1; day <= 30; ++day) chart.bars.push_back({{"Sep " + std::to_string(day), 1}, {}});
    EXPECT_EQ(textsOf(barChart(chart)), (std::vector<std::string>{"Sep 1", "Sep 5", "Sep 9", "Sep 13",
                                                                  "Sep 17", "Sep 21", "Sep 25", "Sep 29"}));
    // The first stays on the canvas.
    const Node drawn = barChart(chart);
    const auto& labels = std::get<Group>(std::get<Group>(drawn.content).children.back().content);
    const auto& first = std::get<Text>(labels.children.front().content);
    EXPECT_GE(first.at.x + 1e-9, std::min(first.width, roughWidth(first.text, first.font)) / 2);
    chart.size = {0, 0};
    EXPECT_EQ(textsOf(barChart(chart)), (std::vector<std::string>{"Sep 1"}));
}

/// The box around all shapes of a node.
std::optional<Rect> boxOf(const Node& node) {
    if (const auto* shape = std::get_if<Shape>(&node.content)) return shape->path.bounds();
    std::optional<Rect> box;
    if (const auto* group = std::get_if<Group>(&node.content))
        for (const Node& child : group->children)
            if (const auto part = boxOf(child)) box = box ? united(*box, *part) : *part;
    return box;
}

TEST(Charts, KeepToTheirSizeHoweverSmallItIs) {
    BarChart bars{.size = {}, .label = "", .bars = {{{"Mon", 1}, {}}, {{"Tue", 3}, {}}}, .number = whole};
    AreaChart area = hours({1, 0, 5});
    for (const Size size : {Size{0, 0}, Size{10, 5}, Size{3, 40}, Size{300, 17}, Size{300, 100}}) {
        bars.size = area.size = size;
        for (const Node& chart : {barChart(bars), areaChart(area)}) {
            const Rect box = boxOf(chart).value_or(Rect{});
            EXPECT_GE(box.x, 0);
            EXPECT_GE(box.y, 0);
            EXPECT_LE(box.right(), size.width + 1e-9);
            EXPECT_LE(box.bottom(), size.height + 1e-9);
        }
    }
    bars.bars.clear();
    EXPECT_EQ(textsOf(barChart(bars)), std::vector<std::string>());
    EXPECT_FALSE(boxOf(barChart(bars)));
}

TEST(BarChart, GivesABarTheSameShareOfItsPlaceWhereverItIs) {
    BarChart chart{.size = {100, 60}, .label = "", .bars = {}, .number = whole};
    for (const std::size_t count : {1U, 2U, 5U}) {
        chart.bars.assign(count, {{"d", 7}, {}});
        const Node drawn = barChart(chart);
        const double pitch = 100.0 / static_cast<double>(count);
        for (std::size_t i = 0; i < count; ++i) {
            const Rect bar = *boxOf(std::get<Group>(drawn.content).children[i]);
            EXPECT_NEAR(bar.width, 0.62 * pitch, 1e-9);
            EXPECT_NEAR(bar.centre().x, (static_cast<double>(i) + 0.5) * pitch, 1e-9);
            EXPECT_EQ(bar.y, 0) << "the largest is as high as the chart";
        }
    }
}

}  // namespace
}  // namespace drawing
