#include "core/keyboard/layout.h"

#include <gtest/gtest.h>

#include "core/foundation/json_fields.h"
#include "tests/support/message_of.h"

namespace tapcore {
namespace {

std::string withLegends(std::string_view legends) {
    return R"({"id": "l", "name": "L", "base": null, "legends": )" + std::string(legends) + "}";
}

TEST(Layout, ReadsKeyCodesInAnySpellingAndWritesThemInDecimal) {
    const Layout layout = Layout::parse(withLegends(R"({"07": ["x", "X"], "+48": ["tab"], "65535": []})"));
    EXPECT_EQ(layout,
              (Layout{.id = "l", .name = "L", .legends = {{7, {"x", "X"}}, {48, {"tab"}}, {65535, {}}}}));
    EXPECT_EQ(layout.text(), R"({"id":"l","legends":{"48":["tab"],"65535":[],"7":["x","X"]},"name":"L"})"
                             "\n");
    EXPECT_EQ(Layout::parse(layout.text()), layout);
}

TEST(LayoutDeathTest, EndsAtTwoSpellingsOfOneKeyCode) {
    const std::string twice = withLegends(R"({"7": ["x"], "07": ["y"]})");
    EXPECT_DEATH(Layout::parse(twice), "Duplicate values for key: '7'");
    EXPECT_EQ(messageOf<JsonError>([&] { return Layout::parse(twice, Layout::Repeats::refused); }),
              "legends: Duplicate values for key: '7'");
}

}  // namespace
}  // namespace tapcore
