#include "core/keyboard/heat_ramp.h"

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>
#include <vector>

namespace tapcore {
namespace {

using HeatRamp::HSB;

TEST(HeatRamp, HotterIsDarkerInLightAndBrighterInDarkAppearance) {
    EXPECT_EQ(HeatRamp::hsb(0, false, false, MapColor::rust), std::nullopt);
    EXPECT_EQ(HeatRamp::hsb(1, false, false, MapColor::rust),
              (HSB{0.02, 0.2 * 0.82 + 0.12, 0.2 * -0.58 + 1.0}));
    EXPECT_EQ(HeatRamp::hsb(5, true, false, MapColor::green), (HSB{0.36, (0.4 + 0.5) * 0.8, 0.78 + 0.22}));
    EXPECT_EQ(HeatRamp::hsb(9, true, true, MapColor::teal), HeatRamp::hsb(5, true, true, MapColor::teal));
    EXPECT_EQ(HeatRamp::hsb(5, false, true, MapColor::amber)->b, 1.15 * -0.58 + 1.0);
    EXPECT_EQ(HeatRamp::hsb(5, true, true, MapColor::amber)->b, 1.0);
    EXPECT_EQ(HeatRamp::hsb(2, true, true, MapColor::amber)->b, 1.15 * (0.4 * 0.78) + 0.22);
    for (std::int64_t step = 1; step <= 5; ++step)
        EXPECT_EQ(HeatRamp::hsb(step, false, false, MapColor::graphite)->s, 0);
}

TEST(MapColor, HasItsWordHueAndSaturation) {
    const std::vector<std::tuple<std::string_view, double, double>> table = {
        {"amber", 0.08, 1}, {"rust", 0.02, 1},    {"gold", 0.12, 1},    {"green", 0.36, 0.8},
        {"teal", 0.5, .85}, {"blue", 0.62, 0.85}, {"purple", 0.78, .7}, {"graphite", 0.6, 0}};
    std::vector<std::tuple<std::string_view, double, double>> colors;
    for (const MapColor color : MapColor::allCases)
        colors.emplace_back(color.id(), color.hue(), color.saturation());
    EXPECT_EQ(colors, table);
    EXPECT_EQ(MapColor(), MapColor::rust);
}

TEST(HeatRamp, TurnsEachSectorOfTheHueCircleIntoItsColours) {
    const HeatRamp::RGB sectors[] = {{1, .5, 0}, {.5, 1, 0}, {0, 1, .5}, {0, .5, 1}, {.5, 0, 1}, {1, 0, .5}};
    for (int sector = 0; sector < 6; ++sector) {
        const auto [red, green, blue] = HeatRamp::rgb({(sector + 0.5) / 6, 1, 1});
        const auto [r, g, b] = sectors[sector];
        EXPECT_NEAR(std::abs(red - r) + std::abs(green - g) + std::abs(blue - b), 0, 1e-12) << sector;
    }
}

TEST(HeatRamp, TextTakesTheColourThatStandsOutMore) {
    // Graphite at its brightest is white, on which black stands out 21 to 1; at its darkest it is the grey
    // #6B6B6B, on which white stands out 5.33 to 1.
    EXPECT_NEAR(HeatRamp::contrast(5, true, MapColor::graphite)->white, 1, 1e-9);
    EXPECT_NEAR(HeatRamp::contrast(5, true, MapColor::graphite)->black, 21, 1e-9);
    EXPECT_NEAR(HeatRamp::contrast(5, false, MapColor::graphite)->white, 5.33, 0.01);
    const auto text = [](std::int64_t step, bool dark) {
        return std::pair(HeatRamp::whiteText(step, dark, MapColor::blue),
                         HeatRamp::darkText(step, dark, MapColor::blue));
    };
    EXPECT_EQ(text(1, true), std::pair(true, false));
    EXPECT_EQ(text(1, false), std::pair(false, true));
    EXPECT_EQ(text(0, true), std::pair(false, false));
}

}  // namespace
}  // namespace tapcore
