#include "widgets/bundle.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

#include "drawing/accessibility.h"
#include "tests/widgets/sample.h"

namespace tapwidgets {
namespace {

using drawing::Element;
using tapcore::WidgetSnapshot;
using tapcore::Words;
using testing::ElementsAre;

const Widget& widget(std::string_view kind) {
    return *std::find_if(bundle.begin(), bundle.end(), [&](const Widget& each) { return each.kind == kind; });
}

/// What assistive tools are told of a widget.
std::vector<Element> elements(std::string_view kind, const std::optional<WidgetSnapshot>& snapshot) {
    const auto shown = picture(widget(kind), {tenOClock, snapshot}, widget(kind).families.front(),
                               {german, english, measured});
    return drawing::elementsOf(shown.content).front().children;
}

std::string total(const std::optional<std::int64_t>& comparison) {
    WidgetSnapshot snapshot = sample();
    snapshot.comparison = comparison;
    return elements("TapToday", snapshot).front().label;
}

TEST(Widgets, ShowTodayInOneElement) {
    EXPECT_EQ(total({}), "Heute, 12.345");
    EXPECT_EQ(total(0), "Heute, 12.345, +0\u00A0% zum Schnitt");
    EXPECT_EQ(total(-7), "Heute, 12.345, -7\u00A0% zum Schnitt");
}

TEST(Widgets, NameAndMeasureWhatTheyDraw) {
    const auto hours = elements("TapHours", sample());
    EXPECT_THAT(hours.back().children,
                ElementsAre(Element{"Stunde 0", "Tastenanschläge: 9.007.199.254.740.993", {}},
                            Element{"Stunde 1", "Tastenanschläge: 1.500", {}}));
    EXPECT_THAT(elements("TapWeek", sample()).back().children,
                ElementsAre(Element{"Sa", "1.000", {}}, Element{"So", "12.345", {}}));
    EXPECT_THAT(elements("TapHeatmap", sample()),
                ElementsAre(Element{"Acme Two", "", {}}, Element{german.text("heatmap.title"), "", {}}));
}

TEST(Widgets, WaitInTheUsersLanguageForWhatIsMissing) {
    const std::vector<Element> waiting = {{english.text("widget.waiting"), "", {}}};
    WidgetSnapshot snapshot = sample();
    snapshot.week = {};
    EXPECT_EQ(elements("TapWeek", snapshot), waiting);
    for (const double width : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN()}) {
        snapshot.bounds->w = width;
        EXPECT_EQ(elements("TapHeatmap", snapshot), waiting);
    }
    snapshot.bounds = {};
    EXPECT_EQ(elements("TapHeatmap", snapshot), waiting);
    for (const Widget& each : bundle) EXPECT_EQ(elements(each.kind, std::nullopt), waiting);
}

TEST(Waiting, BreaksItsTextWhereTheFontHasNoRoom) {
    const auto fivePoints = [](std::string_view text, const auto&) {
        return 5.0 * static_cast<double>(text.size());
    };
    const drawing::Node shown =
        Waiting{{{105, 105}, Words::load(RESOURCES "/Words", "es")}, fivePoints}.drawing();
    std::vector<std::string> lines;
    for (const drawing::Node& part : std::get<drawing::Group>(shown.content).children)
        if (const auto* text = std::get_if<drawing::Text>(&part.content)) lines.push_back(text->text);
    EXPECT_THAT(lines, ElementsAre("Esperando las", "primeras pulsaciones", "de hoy"));
}

TEST(Widgets, AreDrawnWhateverTheNumbers) {
    constexpr double huge = 1e308;
    constexpr auto most = std::numeric_limits<std::int64_t>::max();
    WidgetSnapshot snapshot = sample();
    snapshot.today = std::numeric_limits<std::int64_t>::min();
    snapshot.comparison = most;
    snapshot.byHour.assign(100000, most);
    snapshot.week.assign(3000, {std::string(500, 'x') + "\xFF", most, true});
    snapshot.heat.assign(
        20000, {.x = huge, .y = -huge, .w = huge, .h = 1e-308, .r = huge, .rx = -huge, .step = most});
    snapshot.heat.push_back(
        {.x = 1, .y = 2, .w = -3, .h = 1, .second = tapcore::Board::Rect{huge, 0, huge, 1}});
    for (const double size : {huge, 1e-308, 3.0}) {
        snapshot.bounds = tapcore::Board::Rect{-size, 0, size, size};
        for (const Widget& each : bundle)
            for (const Family family : each.families) {
                const auto shown = picture(each, {tenOClock, snapshot}, family, {german, english, measured});
                EXPECT_FALSE(drawing::png(shown, {}, 0.05).empty());
            }
    }
}

}  // namespace
}  // namespace tapwidgets
