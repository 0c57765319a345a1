#include "widgets/heat_board.h"

#include <gtest/gtest.h>

#include "core/keyboard/heat_ramp.h"
#include "tests/widgets/sample.h"

namespace tapwidgets {
namespace {

using tapcore::MapColor;

TEST(HeatBoard, ColoursStepsByTheRampOrByOpacity) {
    using drawing::Colour;
    using drawing::RenderingMode;
    const auto alpha = [](std::int64_t step, RenderingMode mode) {
        return resolved(heatStyle(step, MapColor::teal), {.mode = mode, .accent = Colour{}}).alpha;
    };
    const auto [red, green, blue] = tapcore::HeatRamp::rgb({0.5, (0.6 * 0.82 + 0.12) * 0.85, 1 - 0.6 * 0.58});
    EXPECT_EQ(resolved(heatStyle(3, MapColor::teal), {}), (Colour{red, green, blue}));
    for (const auto& [step, opacity] : {std::pair{-9, 0.08}, {0, 0.08}, {1, 0.36}, {5, 1.0}, {99, 1.0}}) {
        EXPECT_DOUBLE_EQ(alpha(step, RenderingMode::accented), opacity);
        EXPECT_DOUBLE_EQ(alpha(step, RenderingMode::vibrant), 0.88 * opacity);
    }
}

TEST(HeatBoard, FitsTheRoomInItsMiddleAndTurnsAKeyAboutItsCorner) {
    const HeatBoard board{sample().heat, *sample().bounds, "Board", MapColor::usual};
    const drawing::Node node = board.drawing({0, 0, 100, 80});
    const auto& whole = std::get<drawing::Group>(node.content);
    EXPECT_EQ(whole.transform, drawing::Transform::moved(0, 15));
    const auto& turned = std::get<drawing::Group>(whole.children[1].content);
    const drawing::Point bottomRight = turned.transform({50, 50});
    EXPECT_NEAR(bottomRight.x, 0, 1e-9);
    EXPECT_NEAR(bottomRight.y, 50, 1e-9);
}

}  // namespace
}  // namespace tapwidgets
