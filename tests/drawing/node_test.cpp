#include "drawing/node.h"

#include <gtest/gtest.h>

#include <limits>

#include "drawing/accessibility.h"
#include "drawing/outline.h"

namespace drawing {
namespace {

using Grouping = Accessibility::Grouping;

Node text(std::string words) {
    return {Text{.text = std::move(words), .font = {}, .style = {}, .at = {}}, {}};
}

Node grouped(Grouping grouping, std::string label, std::string value = "") {
    Node bar = labelled(filled(roundedRectangle({0, 0, 1, 1}, 0), {}), "Mon", "12");
    Node node =
        group({text("Week"), bar, filled(roundedRectangle({0, 0, 1, 1}, 0), {}), hidden(text("axis"))});
    node.accessibility = {std::move(label), std::move(value), grouping};
    return node;
}

TEST(Accessibility, FollowsTheGroupingOfANode) {
    const Element week{"Week", "", {}};
    const Element monday{"Mon", "12", {}};
    const struct {
        Node node;
        std::vector<Element> elements;
    } cases[] = {
        {grouped(Grouping::separate, ""), {week, monday}},
        {grouped(Grouping::separate, "Chart", "7 days"), {{"Chart", "7 days", {week, monday}}}},
        {grouped(Grouping::combined, ""), {{"Week, Mon", "12", {}}}},
        {grouped(Grouping::combined, "Chart"), {{"Chart", "12", {}}}},
        {grouped(Grouping::single, "Board", "5"), {{"Board", "5", {}}}},
        {grouped(Grouping::hidden, "Board"), {}},
        {combined(group({group({grouped(Grouping::separate, "Chart", "7")})})),
         {{"Chart, Week, Mon", "7, 12", {}}}},
        {labelled(text("12,345"), "Today"), {{"Today", "", {}}}},
    };
    for (const auto& c : cases) EXPECT_EQ(elementsOf(c.node), c.elements);
}

TEST(Transform, TurnsClockwiseAndTakesItselfBack) {
    const Transform turn = Transform::turned(90, {10, 10});
    EXPECT_NEAR(turn({20, 10}).x, 10, 1e-12);
    EXPECT_NEAR(turn({20, 10}).y, 20, 1e-12);
    const Transform whole = Transform::scaled(3).then(turn).then(Transform::moved(-4, 7));
    const Point back = (*whole.inverse())(whole({2, 5}));
    EXPECT_NEAR(back.x, 2, 1e-12);
    EXPECT_NEAR(back.y, 5, 1e-12);
    EXPECT_FALSE(Transform::scaled(0).inverse());
    EXPECT_FALSE(Transform::moved(std::numeric_limits<double>::infinity(), 0).inverse());
}

TEST(Style, BecomesAColourOnlyForAnAppearance) {
    using Role = Style::Role;
    const Colour red{1, 0, 0};
    const Colour pink{1, 0.5, 0.5};
    const Colour gold{0.9, 0.7, 0};
    const Appearance light{};
    const Appearance dark{.theme = Theme::dark, .accent = gold};
    const Appearance accented{.theme = Theme::dark, .mode = RenderingMode::accented, .accent = gold};
    const Appearance vibrant{.theme = Theme::dark, .mode = RenderingMode::vibrant, .accent = gold};
    const auto faded = [](Colour colour, double alpha) {
        colour.alpha = alpha;
        return colour;
    };
    const struct {
        Style style;
        Appearance appearance;
        Colour colour;
    } cases[] = {
        {{.role = Role::quaternary, .opacity = 0.5}, light, Colour::grey(0, 0.045)},
        {{.role = Role::background}, vibrant, Colour::grey(1, 0)},
        {{.role = Role::accent}, dark, gold},
        {Style::given(red, pink), light, red},
        {Style::given(red, pink), dark, pink},
        {Style::given(red, pink).withOpacity(0.25), dark, faded(pink, 0.25)},
        {Style::given(red, pink).tonedTo(0.5), vibrant, Colour::grey(1, 0.46)},
        {Style::given(red, pink).tonedTo(0.5).asAccentable(), accented, faded(gold, 0.5)},
        {Style{.opacity = 7}, dark, Colour::grey(1, 0.92)},
        {Style{.opacity = std::numeric_limits<double>::quiet_NaN()}, dark, Colour::grey(1, 0)},
    };
    for (const auto& c : cases) EXPECT_EQ(resolved(c.style, c.appearance), c.colour) << &c - cases;
}

}  // namespace
}  // namespace drawing
