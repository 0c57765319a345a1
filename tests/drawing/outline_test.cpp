#include "drawing/outline.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

#include "drawing/svg_text.h"
#include "drawing/tile.h"

namespace drawing {
namespace {

std::string joined(const std::vector<Rect>& parts, double radius) {
    return svgPath(roundedUnion(parts, radius, CornerStyle::circular));
}

/// What a path of straight lines encloses, holes taken off.
double enclosed(const Path& path) {
    double twice = 0;
    Point start, pen;
    walk(path, [&](Path::Step step, const Point* to) {
        const Point next = step == Path::Step::close ? start : *to;
        if (step == Path::Step::move)
            start = next;
        else
            twice += pen.x * next.y - next.x * pen.y;
        pen = next;
    });
    return twice / 2;
}

//   ┌───────┐
//   └─┐     │     the L of a Return key: the inner corner stays sharp
//     │     │
//     └─────┘
TEST(Outline, JoinsAnLShapedKeyIntoOneContour) {
    EXPECT_EQ(joined({{25, 0, 125, 200}, {0, 0, 150, 100}}, 10),
              "M140 0c5.52 0 10 4.48 10 10v180c0 5.52-4.48 10-10 10h-105c-5.52 0-10-4.48-10-10v-90h-15c-5.52 "
              "0-10-4.48-10-10v-80c0-5.52 4.48-10 10-10z");
}

TEST(Outline, KeepsARadiusWithinHalfASide) {
    EXPECT_EQ(joined({{0, 0, 40, 10}}, 30),
              "M35 0c2.76 0 5 2.24 5 5c0 2.76-2.24 5-5 5h-30c-2.76 0-5-2.24-5-5c0-2.76 2.24-5 5-5z");
    EXPECT_EQ(svgPath(roundedRectangle({0, 0, 40, 10}, 30)), joined({{0, 0, 40, 10}}, 30));
}

TEST(Outline, PutsContoursAroundEachPieceAndEachHole) {
    const struct {
        std::vector<Rect> parts;
        std::string path;
    } cases[] = {
        {{{0, 0, 1, 1}, {5, 5, 1, 1}}, "M1 0v1h-1v-1zM6 5v1h-1v-1z"},
        {{{0, 0, 9, 9}, {2, 2, 1, 1}}, "M9 0v9h-9v-9z"},
        {{{0, 0, 1, 1}, {1, 1, 1, 1}}, "M1 0v1h-1v-1zM2 1v1h-1v-1z"},
        {{{1, 0, 1, 1}, {0, 1, 1, 1}}, "M2 0v1h-1v-1zM1 1v1h-1v-1z"},
        {{{0, 0, 1, 1}, {1, 0, 1, 1}}, "M2 0v1h-2v-1z"},
        {{{0, 0, 3, 1}, {0, 2, 3, 1}, {0, 0, 1, 3}, {2, 0, 1, 3}}, "M3 0v3h-3v-3zM2 2v-1h-1v1z"},
        {{{0, 0, 0, 5}, {0, 0, -3, 5}}, ""},
    };
    for (const auto& c : cases) EXPECT_EQ(joined(c.parts, 0), c.path);
}

TEST(Outline, EnclosesWhatTheRectanglesCoverTogether) {
    std::mt19937 random(7);
    for (int round = 0; round < 300; ++round) {
        std::vector<Rect> parts(1 + random() % 6);
        for (Rect& part : parts)
            part = {double(random() % 8), double(random() % 8), double(1 + random() % 4),
                    double(1 + random() % 4)};
        double cells = 0;
        for (double x = 0.5; x < 12; ++x)
            for (double y = 0.5; y < 12; ++y)
                cells += std::any_of(parts.begin(), parts.end(), [&](const Rect& part) {
                    return x > part.x && x < part.right() && y > part.y && y < part.bottom();
                });
        ASSERT_DOUBLE_EQ(enclosed(roundedUnion(parts, 0)), cells) << "round " << round;
    }
}

/// How sharply a cubic curve bends at its end.
double curvatureAtEnd(const Point* points) {
    const Point last{points[3].x - points[2].x, points[3].y - points[2].y};
    const Point before{points[2].x - points[1].x, points[2].y - points[1].y};
    return 2.0 / 3 * std::abs(before.x * last.y - before.y * last.x) /
           std::pow(std::hypot(last.x, last.y), 3);
}

TEST(Outline, LetsTheCurvatureOfAContinuousCornerGrowToThatOfItsArc) {
    const Path path = roundedRectangle({0, 0, 100, 100}, 20);
    EXPECT_EQ(path.points.front(), (Point{100 - 1.6 * 20, 0}));
    EXPECT_EQ(path.points[1].y, 0);  // both handles on the side: the curvature starts at none
    EXPECT_EQ(path.points[2].y, 0);
    EXPECT_NEAR(curvatureAtEnd(path.points.data()), 1.0 / 20, 1e-9);
    EXPECT_NEAR(std::hypot(path.points[3].x - 80, path.points[3].y - 20), 20, 1e-9);
}

TEST(Outline, LeavesOutRectanglesThatAreNoNumbers) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(
        joined({{nan, 0, 1, 1}, {0, 0, nan, 1}, {-infinity, 0, infinity, 1}, {1e308, 0, 1, 1}, {2, 2, 1, 1}},
               0),
        "M3 2v1h-1v-1z");
}

TEST(Tile, IsDrawnSmallerThanItsUnitsFromItsBoxesCorner) {
    const Tile tile{.parts = {{13.75, 1, 1.25, 2}, {13.5, 1, 1.5, 1}}};
    EXPECT_EQ(tile.box(), (Rect{13.5, 1, 1.5, 2}));
    const auto bounds = tile.outline(50).bounds();
    ASSERT_TRUE(bounds);
    EXPECT_NEAR(bounds->x, 3, 1e-9);
    EXPECT_NEAR(bounds->width, 69, 1e-9);
    EXPECT_NEAR(bounds->height, 94, 1e-9);
    EXPECT_EQ((Tile{.parts = {{0, 0, 0.12, 1}}}.outline(50)), Path());
    EXPECT_EQ(Tile{}.outline(50), Path());
}

TEST(Tile, TurnsAboutItsPointOrElseItsBoxesCorner) {
    const auto corner = [](const Tile& tile, Point origin) { return tile.placement(10, origin)({20, 0}); };
    const Tile about{.parts = {{4, 1, 2, 1}}, .degrees = 90, .aboutX = 4, .aboutY = 3};
    EXPECT_NEAR(corner(about, {1, 0}).x, 50, 1e-9);  // (6, 1) about (4, 3) is (6, 5)
    EXPECT_NEAR(corner(about, {1, 0}).y, 50, 1e-9);
    const Tile free{.parts = {{4, 1, 2, 1}}, .degrees = 90};
    EXPECT_NEAR(corner(free, {0, 0}).x, 40, 1e-9);  // about (4, 1) it is (4, 3)
    EXPECT_NEAR(corner(free, {0, 0}).y, 30, 1e-9);
    const Tile flat{.parts = {{4, 1, 0, 0}}, .degrees = 90, .aboutX = 100, .aboutY = 100};
    EXPECT_EQ(flat.placement(10, {0, 0})({0, 0}), (Point{40, 10}));
}

}  // namespace
}  // namespace drawing
