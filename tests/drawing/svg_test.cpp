#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "drawing/outline.h"
#include "drawing/painter.h"
#include "drawing/svg_text.h"

namespace drawing {
namespace {

double halfAnEm(std::string_view text, const Font& font) {
    return static_cast<double>(text.size()) * font.size / 2;
}

std::string svgOf(Node content, const Appearance& appearance = {}) {
    return svg({{100, 50}, std::move(content)}, appearance, halfAnEm);
}

constexpr std::string_view head =
    "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"100\" height=\"50\" viewBox=\"0 0 100 50\" "
    "role=\"graphics-document\" font-family=\"system-ui, sans-serif\">\n";

TEST(Svg, WritesElementsForAssistiveToolsAndTextAsText) {
    Node key = group({filled(roundedRectangle({0, 0, 20, 20}, 0), Style::given({1, 0, 0}, {})),
                      {Text{.text = "E",
                            .font = {.size = 9, .weight = Weight::semibold, .monospacedDigits = true},
                            .style = Style::given(Colour::grey(1), {}),
                            .at = {10, 10},
                            .alignment = Alignment::centre,
                            .anchor = Text::Anchor::middle},
                       {}}},
                     Transform::turned(90, {0, 0}).then(Transform::moved(30, 10)));
    Node picture = group({labelled(std::move(key), "E", "1,234 presses"),
                          hidden(stroked(line({0, 40}, {100, 40}), {.role = Style::Role::quaternary}, 1.5)),
                          group({{Text{.text = "less",
                                       .font = {.design = Design::monospaced},
                                       .style = {},
                                       .at = {1, 45},
                                       .width = 13,
                                       .minimumScale = 0.5},
                                  {}}},
                                Transform::moved(2, 0), 0.5)});
    picture.accessibility = {"Heat <map>", "20 & \"more\"", Accessibility::Grouping::separate};
    EXPECT_EQ(
        svgOf(picture),
        std::string(head) +
            "<title>Heat &lt;map&gt;</title>\n"
            "<desc>20 &amp; &quot;more&quot;</desc>\n"
            "<g role=\"img\">\n"
            "<title>E</title>\n"
            "<desc>1,234 presses</desc>\n"
            "<g transform=\"matrix(0 1 -1 0 30 10)\">\n"
            "<path d=\"M20 0v20h-20v-20z\" fill=\"#ff0000\"/>\n"
            "<text x=\"10\" y=\"13.2\" font-size=\"9\" font-weight=\"600\" "
            "style=\"font-variant-numeric:tabular-nums\" text-anchor=\"middle\" fill=\"#ffffff\">E</text>\n"
            "</g>\n"
            "</g>\n"
            "<g aria-hidden=\"true\">\n"
            "<path d=\"M0 40h100\" fill=\"none\" stroke=\"#000000\" stroke-opacity=\"0.09\" "
            "stroke-width=\"1.5\" stroke-linecap=\"round\" stroke-linejoin=\"round\"/>\n"
            "</g>\n"
            "<g transform=\"translate(2 0)\" opacity=\"0.5\">\n"
            "<text x=\"1\" y=\"45\" font-size=\"6.5\" font-family=\"ui-monospace, monospace\" "
            "fill=\"#000000\" fill-opacity=\"0.88\">less</text>\n"
            "</g>\n"
            "</svg>\n");
}

TEST(Svg, IsOneImageWhenItsPartsAreNotToldOf) {
    EXPECT_EQ(svgOf(labelled(group({}), "Board")),
              "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"100\" height=\"50\" viewBox=\"0 0 100 50\" "
              "role=\"img\" "
              "font-family=\"system-ui, sans-serif\">\n<title>Board</title>\n</svg>\n");
}

TEST(Svg, LeavesOutWhatHasNoPlaceInThePlane) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    const Path far = line({0, 0}, {1e300, 0});
    const Node none[] = {stroked(far, {}, 1),
                         stroked(line({0, nan}, {1, 1}), {}, 1),
                         group({stroked(line({0, 0}, {1, 1}), {}, 1)}, Transform::scaled(1e9)),
                         group({stroked(line({0, 0}, {1, 1}), {}, 1)}, Transform::scaled(0)),
                         group({stroked(line({0, 0}, {1, 1}), {}, 1)}, {}, nan),
                         {Text{.text = "x", .font = {}, .style = {}, .at = {nan, 0}}, {}}};
    for (const Node& node : none)
        EXPECT_THAT(svgOf(node), testing::Not(testing::ContainsRegex("<path|<text")));
}

TEST(Svg, WritesNumbersWithoutNeedlessDigits) {
    const struct {
        double value;
        std::string text;
    } cases[] = {{7, "7"},
                 {-0.001, "0"},
                 {12.5, "12.5"},
                 {-0.04, "-0.04"},
                 {100, "100"},
                 {1e300, "10000000000"},
                 {std::numeric_limits<double>::quiet_NaN(), "0"}};
    for (const auto& c : cases) EXPECT_EQ(svgNumber(c.value), c.text);
    EXPECT_EQ(svgPath(line({0.004, 0}, {0.008, 0.004})), "M0 0h0.01");
}

TEST(Svg, EscapesWhatXmlDoesNotAllow) {
    EXPECT_EQ(svgEscaped("a<b & \"c\"\x01\xFF\uFFFEd\n"), "a&lt;b &amp; &quot;c&quot;\uFFFD\uFFFD\uFFFDd\n");
    EXPECT_EQ(svgColour({0.5, -1, 7}), "#8000ff");
}

}  // namespace
}  // namespace drawing
