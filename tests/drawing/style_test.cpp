#include "drawing/style.h"

#include <gtest/gtest.h>

#include "drawing/svg_text.h"

namespace drawing {
namespace {

using Role = Style::Role;

/// "#rrggbb", and the opacity unless that is 1.
std::string shown(const Style& style, const Appearance& appearance) {
    const Colour colour = resolved(style, appearance);
    return svgColour(colour) + (colour.alpha < 1 ? " " + svgNumber(colour.alpha, 3) : "");
}

TEST(Style, HasAShadeForEachRoleAndTheme) {
    const Appearance light{}, dark{.theme = Theme::dark};
    const Appearance vibrant{.mode = RenderingMode::vibrant};
    const struct {
        Role role;
        const char *light, *dark, *vibrant;
    } cases[] = {
        {Role::primary, "#000000 0.88", "#ffffff 0.92", "#000000 0.88"},
        {Role::secondary, "#000000 0.6", "#ffffff 0.6", "#000000 0.6"},
        {Role::tertiary, "#000000 0.3", "#ffffff 0.3", "#000000 0.3"},
        {Role::quaternary, "#000000 0.09", "#ffffff 0.13", "#000000 0.09"},
        {Role::tertiaryFill, "#000000 0.05", "#ffffff 0.08", "#000000 0.05"},
        {Role::background, "#ffffff", "#1c1c1c", "#000000 0"},
        {Role::accent, "#0066d9", "#4d9eff", "#000000 0.88"},
        {Role::given, "#ff0000", "#0000ff", "#000000 0.88"},
    };
    for (const auto& c : cases) {
        const Style style{.role = c.role, .light = {1, 0, 0}, .dark = {0, 0, 1}};
        EXPECT_EQ(shown(style, light), c.light) << int(c.role);
        EXPECT_EQ(shown(style, dark), c.dark) << int(c.role);
        EXPECT_EQ(shown(style, vibrant), c.vibrant) << int(c.role);
    }
}

}  // namespace
}  // namespace drawing
