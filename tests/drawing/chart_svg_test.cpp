#include <gtest/gtest.h>

#include "core/foundation/characters.h"
#include "drawing/chart.h"
#include "drawing/painter.h"
#include "tests/support/short_svg.h"

// Whole charts as they are written to a file. A change of the look changes these texts: compare the pictures
// of before and after before taking them over.

namespace drawing {
namespace {

double halfAnEm(std::string_view text, const Font& font) {
    return static_cast<double>(tapcore::characterCount(text)) * font.size / 2;
}

/// What is inside of the picture's element, from a line break on.
std::string drawn(Size size, Node chart, const Appearance& appearance = {}) {
    const std::string whole = shortSvg(svg({size, std::move(chart)}, appearance, halfAnEm));
    const std::size_t start = whole.find('\n');
    return whole.substr(start, whole.find("</svg>") - start);
}

std::string thousands(double value) {
    return value < 1000 ? std::to_string(static_cast<int>(value))
                        : std::to_string(static_cast<int>(value / 1000)) + "k";
}

TEST(ChartAsSvg, OfADayByTheHour) {
    AreaChart chart{.size = {120, 60},
                    .label = "Hours",
                    .points = {{"0 h", 0}, {"1 h", 500}, {"2 h", 1200, "1,200 presses"}},
                    .lastX = 4,
                    .xMarks = {{0, "0"}, {2, "2"}, {4, "4"}},
                    .number = thousands,
                    .unit = "keystrokes",
                    .style = Style::given({1, 0.5, 0}, {})};
    EXPECT_EQ(drawn(chart.size, areaChart(chart)), R"svg(
<title>Hours</title>
<path d="M0 47.8h96.2M0 33.53h96.2M0 19.27h96.2M0 5h96.2M0 5v42.8M48.1 5v42.8M96.2 5v42.8" fill="none" stroke="#000000" stroke-opacity="0.09" stroke-width="1"/>
<g aria-hidden="true">
<text x="120" y="51.35" font-size="10" text-anchor="end" fill="#000000" fill-opacity="0.6">0</text>
<text x="120" y="37.08" font-size="10" text-anchor="end" fill="#000000" fill-opacity="0.6">500</text>
<text x="120" y="22.82" font-size="10" text-anchor="end" fill="#000000" fill-opacity="0.6">1k</text>
<text x="120" y="8.55" font-size="10" text-anchor="end" fill="#000000" fill-opacity="0.6">1k</text>
<text x="0" y="57.45" font-size="10" fill="#000000" fill-opacity="0.6">0</text>
<text x="48.1" y="57.45" font-size="10" text-anchor="middle" fill="#000000" fill-opacity="0.6">2</text>
<text x="96.2" y="57.45" font-size="10" text-anchor="middle" fill="#000000" fill-opacity="0.6">4</text>
</g>
<path d="M0 47.8c8.02-4.76 16.03-8.56 24.05-14.27c8.02-5.7 16.03-13.31 24.05-19.97v34.24h-48.1z" fill="#ff8000" fill-opacity="0.3"/>
<path d="M0 47.8c8.02-4.76 16.03-8.56 24.05-14.27c8.02-5.7 16.03-13.31 24.05-19.97" fill="none" stroke="#ff8000" stroke-width="2"/>
<g role="img">
<title>0 h</title>
<desc>keystrokes: 0</desc>
<path d="M12.03 5v42.8h-12.03v-42.8z" fill="#000000" fill-opacity="0"/>
</g>
<g role="img">
<title>1 h</title>
<desc>keystrokes: 500</desc>
<path d="M36.08 5v42.8h-24.05v-42.8z" fill="#000000" fill-opacity="0"/>
</g>
<g role="img">
<title>2 h</title>
<desc>keystrokes: 1,200 presses</desc>
<path d="M60.13 5v42.8h-24.05v-42.8z" fill="#000000" fill-opacity="0"/>
</g>
)svg");
    chart.points = {{"0 h", 3}};
    EXPECT_EQ(drawn(chart.size, areaChart(chart)), R"svg(
<title>Hours</title>
<path d="M0 47.8h109.4M0 33.53h109.4M0 19.27h109.4M0 5h109.4M0 5v42.8M54.7 5v42.8M109.4 5v42.8" fill="none" stroke="#000000" stroke-opacity="0.09" stroke-width="1"/>
<g aria-hidden="true">
<text x="120" y="51.35" font-size="10" text-anchor="end" fill="#000000" fill-opacity="0.6">0</text>
<text x="120" y="37.08" font-size="10" text-anchor="end" fill="#000000" fill-opacity="0.6">1</text>
<text x="120" y="22.82" font-size="10" text-anchor="end" fill="#000000" fill-opacity="0.6">2</text>
<text x="120" y="8.55" font-size="10" text-anchor="end" fill="#000000" fill-opacity="0.6">3</text>
<text x="0" y="57.45" font-size="10" fill="#000000" fill-opacity="0.6">0</text>
<text x="54.7" y="57.45" font-size="10" text-anchor="middle" fill="#000000" fill-opacity="0.6">2</text>
<text x="109.4" y="57.45" font-size="10" text-anchor="middle" fill="#000000" fill-opacity="0.6">4</text>
</g>
<g role="img">
<title>0 h</title>
<desc>keystrokes: 3</desc>
<path d="M13.68 5v42.8h-13.68v-42.8z" fill="#000000" fill-opacity="0"/>
</g>
)svg");
}

TEST(ChartAsSvg, OfAWeekDayByDay) {
    const Style accent{.role = Style::Role::accent};
    BarChart chart{.size = {90, 50},
                   .label = "Week",
                   .bars = {{{"Mon", 20}, accent},
                            {{"Tue", 1500, "1,500"}, accent.withOpacity(0.5)},
                            {{"We", 0}, accent}},
                   .number = thousands};
    EXPECT_EQ(drawn(chart.size, barChart(chart)), R"svg(
<title>Week</title>
<g role="img">
<title>Mon</title>
<desc>20</desc>
<path d="M24.06 35.32c0.13 0 0.24 0.11 0.24 0.24c0 0.13-0.11 0.24-0.24 0.24h-18.12c-0.13 0-0.24-0.11-0.24-0.24c0-0.13 0.11-0.24 0.24-0.24z" fill="#0066d9"/>
</g>
<g role="img">
<title>Tue</title>
<desc>1,500</desc>
<path d="12 curves in 35.7 0 18.6 35.8" fill="#0066d9" fill-opacity="0.5"/>
</g>
<g role="img">
<title>We</title>
<desc>0</desc>
</g>
<g aria-hidden="true">
<text x="15" y="47.45" font-size="10" text-anchor="middle" fill="#000000" fill-opacity="0.6">Mon</text>
<text x="45" y="47.45" font-size="10" text-anchor="middle" fill="#000000" fill-opacity="0.6">Tue</text>
<text x="75" y="47.45" font-size="10" text-anchor="middle" fill="#000000" fill-opacity="0.6">We</text>
</g>
)svg");
    chart.showsValues = true;
    chart.label = "";
    EXPECT_EQ(drawn(chart.size, barChart(chart), {.theme = Theme::dark}), R"svg(
<g role="img">
<title>Mon</title>
<desc>20</desc>
<path d="M24.14 35.49c0.09 0 0.16 0.07 0.16 0.15c0 0.09-0.07 0.16-0.16 0.16h-18.28c-0.09 0-0.16-0.07-0.16-0.16c0-0.08 0.07-0.15 0.16-0.15z" fill="#4d9eff"/>
<text x="15" y="32.94" font-size="10" text-anchor="middle" fill="#ffffff" fill-opacity="0.6">20</text>
</g>
<g role="img">
<title>Tue</title>
<desc>1,500</desc>
<path d="12 curves in 35.7 12.2 18.6 23.6" fill="#4d9eff" fill-opacity="0.5"/>
<text x="45" y="9.65" font-size="10" text-anchor="middle" fill="#ffffff" fill-opacity="0.6">1k</text>
</g>
<g role="img">
<title>We</title>
<desc>0</desc>
<text x="75" y="33.25" font-size="10" text-anchor="middle" fill="#ffffff" fill-opacity="0.6">0</text>
</g>
<g aria-hidden="true">
<text x="15" y="47.45" font-size="10" text-anchor="middle" fill="#ffffff" fill-opacity="0.6">Mon</text>
<text x="45" y="47.45" font-size="10" text-anchor="middle" fill="#ffffff" fill-opacity="0.6">Tue</text>
<text x="75" y="47.45" font-size="10" text-anchor="middle" fill="#ffffff" fill-opacity="0.6">We</text>
</g>
)svg");
}

TEST(ChartAsSvg, OfManyDaysNamesOnlySome) {
    BarChart chart{.size = {60, 30}, .label = "", .bars = {}, .number = thousands};
    for (int day = 1; day <= 4; ++day)
        chart.bars.push_back({{"Sep " + std::to_string(day), double(day)}, {}});
    EXPECT_EQ(drawn(chart.size, barChart(chart)), R"svg(
<g role="img">
<title>Sep 1</title>
<desc>1</desc>
<path d="M10.18 11.85c1.09 0 1.97 0.88 1.97 1.98c0 1.09-0.88 1.97-1.97 1.97h-5.36c-1.09 0-1.97-0.88-1.97-1.97c0-1.1 0.88-1.98 1.97-1.98z" fill="#000000" fill-opacity="0.88"/>
</g>
<g role="img">
<title>Sep 2</title>
<desc>2</desc>
<path d="12 curves in 17.9 7.9 9.3 7.9" fill="#000000" fill-opacity="0.88"/>
</g>
<g role="img">
<title>Sep 3</title>
<desc>3</desc>
<path d="12 curves in 32.8 4 9.3 11.9" fill="#000000" fill-opacity="0.88"/>
</g>
<g role="img">
<title>Sep 4</title>
<desc>4</desc>
<path d="12 curves in 47.8 0 9.3 15.8" fill="#000000" fill-opacity="0.88"/>
</g>
<g aria-hidden="true">
<text x="11.9" y="26.46" font-size="7.21" text-anchor="middle" fill="#000000" fill-opacity="0.6">Sep 1</text>
<text x="37.5" y="26.46" font-size="7.21" text-anchor="middle" fill="#000000" fill-opacity="0.6">Sep 3</text>
</g>
)svg");
}

}  // namespace
}  // namespace drawing
