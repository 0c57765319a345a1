#include "core/keyboard/heat_ramp.h"

#include <gtest/gtest.h>

namespace tapcore {
namespace {

using HeatRamp::HSB;

TEST(HeatRamp, HotterIsDarkerInLightAndBrighterInDarkAppearance) {
    EXPECT_EQ(HeatRamp::hsb(0, false, false, MapColor::rust), std::nullopt);
    EXPECT_EQ(HeatRamp::hsb(1, false, false, MapColor::rust),
              (HSB{0.02, 0.2 * 0.82 + 0.12, 0.2 * -0.58 + 1.0}));
    EXPECT_EQ(HeatRamp::hsb(5, true, false, MapColor::green), (HSB{0.36, (0.4 + 0.5) * 0.8, 0.78 + 0.22}));
    EXPECT_EQ(HeatRamp::hsb(9, true, true, MapColor::teal), HeatRamp::hsb(5, true, true, MapColor::teal));
    EXPECT_EQ(HeatRamp::hsb(5, true, true, MapColor::amber)->b, 1.0);
    EXPECT_EQ(HeatRamp::hsb(5, false, true, MapColor::amber)->b, 1.15 * -0.58 + 1.0);
    for (std::int64_t step = 1; step <= 5; ++step)
        EXPECT_EQ(HeatRamp::hsb(step, false, false, MapColor::graphite)->s, 0);
}

TEST(HeatRamp, TurnsEachSectorOfTheHueCircleIntoItsColours) {
    const struct {
        double h;
        HeatRamp::RGB rgb;
    } cases[] = {{0.0, {1, 0, 0}},     {1.0 / 6, {1, 1, 0}},    {0.25, {0.5, 1, 0}},
                 {1.0 / 3, {0, 1, 0}}, {5.0 / 12, {0, 1, 0.5}}, {0.5, {0, 1, 1}},
                 {2.0 / 3, {0, 0, 1}}, {5.0 / 6, {1, 0, 1}},    {1.0, {1, 0, 0}}};
    for (const auto& [h, expected] : cases) {
        const auto rgb = HeatRamp::rgb({h, 1, 1});
        EXPECT_NEAR(rgb.red, expected.red, 1e-12) << h;
        EXPECT_NEAR(rgb.green, expected.green, 1e-12) << h;
        EXPECT_NEAR(rgb.blue, expected.blue, 1e-12) << h;
    }
}

TEST(HeatRamp, ContrastIsThatOfTheWebsGuidelines) {
    // Graphite at its brightest is white: 1 to 21.
    const auto white = HeatRamp::contrast(5, true, MapColor::graphite);
    ASSERT_TRUE(white);
    EXPECT_NEAR(white->white, 1, 1e-9);
    EXPECT_NEAR(white->black, 21, 1e-9);
    // The grey #6B6B6B, of luminance 0.1470, contrasts 5.33 to 1 with white.
    const auto grey = HeatRamp::contrast(5, false, MapColor::graphite);
    ASSERT_TRUE(grey);
    EXPECT_NEAR(grey->white, 5.33, 0.01);
}

TEST(HeatRamp, TextIsWhiteOnDarkStepsAndDarkOnLightOnesAndNeitherOnNone) {
    EXPECT_FALSE(HeatRamp::whiteText(0, true, MapColor::rust));
    EXPECT_FALSE(HeatRamp::darkText(0, true, MapColor::rust));
    EXPECT_TRUE(HeatRamp::whiteText(1, true, MapColor::blue));
    EXPECT_FALSE(HeatRamp::darkText(1, true, MapColor::blue));
    EXPECT_TRUE(HeatRamp::darkText(1, false, MapColor::blue));
    EXPECT_FALSE(HeatRamp::whiteText(1, false, MapColor::blue));
}

TEST(MapColor, IsStoredByItsWord) {
    for (const MapColor color : MapColor::allCases) EXPECT_EQ(MapColor::parse(color.rawValue()), color);
    EXPECT_EQ(MapColor::parse("graphite")->saturation(), 0);
    EXPECT_EQ(MapColor::parse("Rust"), std::nullopt);
    EXPECT_EQ(MapColor().id(), "rust");
}

}  // namespace
}  // namespace tapcore
