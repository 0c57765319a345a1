#include <gtest/gtest.h>

#include <algorithm>

#include "core/foundation/characters.h"
#include "tests/support/short_svg.h"
#include "tests/widgets/sample.h"
#include "widgets/bundle.h"

// Each widget as the whole picture that it is written as: SVG, with a font whose letters are half an em wide.

namespace tapwidgets {
namespace {

double halfAnEm(std::string_view text, const drawing::Font& font) {
    return static_cast<double>(tapcore::characterCount(text)) * font.size / 2;
}

std::string drawn(std::string_view kind, Family family,
                  const std::optional<tapcore::WidgetSnapshot>& snapshot,
                  const drawing::Appearance& appearance = {}) {
    const Widget& widget =
        *std::find_if(bundle.begin(), bundle.end(), [&](const Widget& each) { return each.kind == kind; });
    const drawing::Picture shown =
        picture(widget, {tenOClock, snapshot}, family, {english, english, halfAnEm});
    return "\n" + drawing::shortSvg(drawing::svg(shown, appearance, halfAnEm));
}

TEST(WidgetAsSvg, OfToday) {
    EXPECT_EQ(drawn("TapToday", Family::small, sample()), R"svg(
<svg xmlns="http://www.w3.org/2000/svg" width="170" height="170" viewBox="0 0 170 170" role="graphics-document" font-family="system-ui, sans-serif">
<title>Today</title>
<path d="12 curves in 0 0 170 170" fill="#ffffff"/>
<path d="12 curves in 0 0 170 170" fill="#000000" fill-opacity="0.05"/>
<g transform="translate(16 16)">
<g role="img">
<title>Today, 12,345, -7% vs. average</title>
<g aria-hidden="true">
<g transform="translate(0 1.1)">
<path d="12 curves in 0.4 0.4 14.1 9.1" fill="none" stroke="#000000" stroke-opacity="0.6" stroke-width="0.9"/>
<path d="132 curves in 2.9 2.2 9.1 5.5" fill="#000000" fill-opacity="0.6"/>
</g>
</g>
<text x="20" y="9.5" font-size="10" fill="#000000" fill-opacity="0.6">Today</text>
<text x="0" y="118.78" font-size="26" font-weight="600" font-family="ui-rounded, system-ui, sans-serif" fill="#000000" fill-opacity="0.88">12,345</text>
<text x="0" y="135.3" font-size="10" fill="#000000" fill-opacity="0.6">-7% vs. average</text>
</g>
</g>
</svg>
)svg");
}

TEST(WidgetAsSvg, OfTheWeekInTheDark) {
    EXPECT_EQ(drawn("TapWeek", Family::small, sample(), {.theme = drawing::Theme::dark}), R"svg(
<svg xmlns="http://www.w3.org/2000/svg" width="170" height="170" viewBox="0 0 170 170" role="graphics-document" font-family="system-ui, sans-serif">
<title>Last 7 days</title>
<path d="12 curves in 0 0 170 170" fill="#1c1c1c"/>
<path d="12 curves in 0 0 170 170" fill="#ffffff" fill-opacity="0.08"/>
<g transform="translate(16 16)">
<text x="0" y="9.5" font-size="10" fill="#ffffff" fill-opacity="0.6">Last 7 days</text>
<g transform="translate(0 18.2)">
<g role="group">
<title>Keystrokes, Day</title>
<g role="img">
<title>Sa</title>
<desc>1,000</desc>
<path d="12 curves in 13.1 97.1 42.8 8.5" fill="#4d9eff" fill-opacity="0.55"/>
</g>
<g role="img">
<title>So</title>
<desc>12,345</desc>
<path d="12 curves in 82.1 0 42.8 105.6" fill="#4d9eff"/>
</g>
<g aria-hidden="true">
<text x="34.5" y="117.25" font-size="10" text-anchor="middle" fill="#ffffff" fill-opacity="0.6">Sa</text>
<text x="103.5" y="117.25" font-size="10" text-anchor="middle" fill="#ffffff" fill-opacity="0.6">So</text>
</g>
</g>
</g>
</g>
</svg>
)svg");
}

TEST(WidgetAsSvg, OfTheHours) {
    tapcore::WidgetSnapshot snapshot = sample();
    snapshot.byHour = {0, 1500, 20};
    EXPECT_EQ(drawn("TapHours", Family::medium, snapshot), R"svg(
<svg xmlns="http://www.w3.org/2000/svg" width="364" height="170" viewBox="0 0 364 170" role="graphics-document" font-family="system-ui, sans-serif">
<title>Today by hour</title>
<path d="12 curves in 0 0 364 170" fill="#ffffff"/>
<path d="12 curves in 0 0 364 170" fill="#000000" fill-opacity="0.05"/>
<g transform="translate(16 16)">
<text x="0" y="9.5" font-size="10" fill="#000000" fill-opacity="0.6">Today by hour</text>
<text x="332" y="9.5" font-size="10" font-weight="600" text-anchor="end" fill="#000000" fill-opacity="0.88">12,345</text>
<g transform="translate(0 18.2)">
<g role="group">
<title>Today by hour</title>
<path d="M0 107.6h295M0 73.4h295M0 39.2h295M0 5h295M0 5v102.6M76.96 5v102.6M153.91 5v102.6M230.87 5v102.6" fill="none" stroke="#000000" stroke-opacity="0.09" stroke-width="1"/>
<g aria-hidden="true">
<text x="332" y="111.15" font-size="10" text-anchor="end" fill="#000000" fill-opacity="0.6">0</text>
<text x="332" y="76.95" font-size="10" text-anchor="end" fill="#000000" fill-opacity="0.6">500</text>
<text x="332" y="42.75" font-size="10" text-anchor="end" fill="#000000" fill-opacity="0.6">1,000</text>
<text x="332" y="8.55" font-size="10" text-anchor="end" fill="#000000" fill-opacity="0.6">1,500</text>
<text x="0" y="117.25" font-size="10" fill="#000000" fill-opacity="0.6">0</text>
<text x="76.96" y="117.25" font-size="10" text-anchor="middle" fill="#000000" fill-opacity="0.6">6</text>
<text x="153.91" y="117.25" font-size="10" text-anchor="middle" fill="#000000" fill-opacity="0.6">12</text>
<text x="230.87" y="117.25" font-size="10" text-anchor="middle" fill="#000000" fill-opacity="0.6">18</text>
</g>
<path d="M0 107.6c4.28-34.2 8.55-102.6 12.83-102.6c4.27 0 8.55 67.49 12.82 101.23v1.37h-25.65z" fill="#0066d9" fill-opacity="0.3"/>
<path d="M0 107.6c4.28-34.2 8.55-102.6 12.83-102.6c4.27 0 8.55 67.49 12.82 101.23" fill="none" stroke="#0066d9" stroke-width="2"/>
<g role="img">
<title>Hour 0</title>
<desc>Keystrokes: 0</desc>
<path d="M6.41 5v102.6h-6.41v-102.6z" fill="#000000" fill-opacity="0"/>
</g>
<g role="img">
<title>Hour 1</title>
<desc>Keystrokes: 1,500</desc>
<path d="M19.24 5v102.6h-12.83v-102.6z" fill="#000000" fill-opacity="0"/>
</g>
<g role="img">
<title>Hour 2</title>
<desc>Keystrokes: 20</desc>
<path d="M32.07 5v102.6h-12.83v-102.6z" fill="#000000" fill-opacity="0"/>
</g>
</g>
</g>
</g>
</svg>
)svg");
}

TEST(WidgetAsSvg, OfTheBoardInOneColour) {
    const drawing::Appearance accented{.mode = drawing::RenderingMode::accented};
    EXPECT_EQ(drawn("TapHeatmap", Family::medium, sample(), accented), R"svg(
<svg xmlns="http://www.w3.org/2000/svg" width="364" height="170" viewBox="0 0 364 170" role="graphics-document" font-family="system-ui, sans-serif">
<title>Heat map</title>
<path d="12 curves in 0 0 364 170" fill="#000000" fill-opacity="0"/>
<path d="12 curves in 0 0 364 170" fill="#000000" fill-opacity="0.05"/>
<g transform="translate(16 16)">
<text x="0" y="9.5" font-size="10" fill="#000000" fill-opacity="0.6">Acme Two</text>
<g role="img">
<title>Keyboard heat map</title>
<g transform="translate(46.2 18.2)">
<path d="12 curves in 7.2 7.2 105.4 105.4" fill="#0066d9" fill-opacity="0.68"/>
<g transform="matrix(0 1 -1 0 119.8 0)">
<path d="12 curves in 7.2 7.2 105.4 105.4" fill="#0066d9" fill-opacity="0.08"/>
</g>
</g>
</g>
</g>
</svg>
)svg");
}

TEST(WidgetAsSvg, OfWaiting) {
    EXPECT_EQ(drawn("TapToday", Family::small, std::nullopt), R"svg(
<svg xmlns="http://www.w3.org/2000/svg" width="170" height="170" viewBox="0 0 170 170" role="graphics-document" font-family="system-ui, sans-serif">
<title>Today</title>
<path d="12 curves in 0 0 170 170" fill="#ffffff"/>
<path d="12 curves in 0 0 170 170" fill="#000000" fill-opacity="0.05"/>
<g transform="translate(16 16)">
<g role="img">
<title>Waiting for today’s first keystrokes</title>
<g aria-hidden="true">
<g transform="translate(52.5 42.8)">
<path d="12 curves in 1 1 31 20" fill="none" stroke="#000000" stroke-opacity="0.88" stroke-width="1.98"/>
<path d="132 curves in 6.5 4.8 20 12.1" fill="#000000" fill-opacity="0.88"/>
</g>
</g>
<text x="69" y="80.3" font-size="10" text-anchor="middle" fill="#000000" fill-opacity="0.6">Waiting for today’s first</text>
<text x="69" y="92.5" font-size="10" text-anchor="middle" fill="#000000" fill-opacity="0.6">keystrokes</text>
</g>
</g>
</svg>
)svg");
}

}  // namespace
}  // namespace tapwidgets
