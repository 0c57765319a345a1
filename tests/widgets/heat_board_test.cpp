#include "widgets/heat_board.h"

#include <gtest/gtest.h>

#include "tests/widgets/sample.h"

namespace tapwidgets {
namespace {

using tapcore::MapColor;

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
