#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <nlohmann/json.hpp>

#include "core/keyboard/heat_ramp.h"
#include "drawing/accessibility.h"
#include "drawing/painter.h"
#include "tests/support/temporary_folder.h"
#include "widgets/bundle.h"
#include "widgets/heat_board.h"
#include "widgets/provider.h"
#include "widgets/views.h"

namespace tapwidgets {
namespace {

using namespace std::chrono_literals;
using drawing::Element;
using tapcore::MapColor;
using tapcore::WidgetSnapshot;
using tapcore::Words;
using testing::ElementsAre;

constexpr tapcore::Instant tenOClock = std::chrono::sys_days(std::chrono::year(2026) / 9 / 20) + 10h;
const Words english = Words::load(RESOURCES "/Words", "en");
const Words german = Words::load(RESOURCES "/Words", "de");
const drawing::TextWidth measured = drawing::systemTextWidth();

WidgetSnapshot sample() {
    WidgetSnapshot snapshot;
    snapshot.day = "2026-09-20";
    snapshot.today = 12345;
    snapshot.byHour = {(1LL << 53) + 1, 1500};
    snapshot.comparison = -7;
    snapshot.week = {{"Sa", 1000, false}, {"So", 12345, true}};
    snapshot.boardName = "Acme Two";
    snapshot.bounds = tapcore::Board::Rect{1, 2, 2, 1};
    snapshot.heat = {{.x = 1, .y = 2, .w = 1, .h = 1, .step = 3}, {.x = 2, .y = 2, .w = 1, .h = 1, .r = 90}};
    snapshot.language = "de";
    return snapshot;
}

TEST(Provider, GivesTodaysSnapshotAndNoOther) {
    const tapcore::TemporaryFolder folder;
    const WidgetSnapshot::SharedFolders places{{}, folder.path()};
    const Provider provider(
        Provider::groupID({{"PellotGroupID", 5}}), places, [] { return tenOClock; },
        tapcore::Calendar("UTC"));
    const std::string whole = sample().data();
    std::string yesterday = whole;
    yesterday.replace(yesterday.find("2026-09-20"), 10, "2026-09-19");
    EXPECT_EQ(provider.read(), std::nullopt);
    for (const std::string& text :
         {yesterday, whole.substr(0, 90), std::string(), std::string(17 << 20, ' ') + whole}) {
        folder.put("Tappora/widget.json", text);
        EXPECT_EQ(provider.read(), std::nullopt) << text.substr(0, 100);
    }
    folder.put("Tappora/widget.json", "{\"later\":[1]," + whole.substr(1));
    EXPECT_EQ(provider.getTimeline(), (Timeline{{{tenOClock, sample()}}, {tenOClock + 15min}}));
    EXPECT_EQ(provider.placeholder(), (Entry{tenOClock, std::nullopt}));
    std::filesystem::remove(folder / "Tappora/widget.json");
    std::filesystem::create_directory(folder / "Tappora/widget.json");
    EXPECT_EQ(provider.getSnapshot(), (Entry{tenOClock, std::nullopt}));
}

TEST(Provider, KnowsTheDayByTheZonesMidnight) {
    const tapcore::TemporaryFolder folder;
    folder.put("Tappora/widget.json", sample().data());
    const auto isShown = [&](tapcore::Instant moment) {
        const WidgetSnapshot::SharedFolders places{{}, folder.path()};
        const tapcore::Calendar berlin("Europe/Berlin");
        return Provider(
                   {}, places, [=] { return moment; }, berlin)
            .read()
            .has_value();
    };
    EXPECT_FALSE(isShown(tenOClock - 12h - 1s));
    EXPECT_TRUE(isShown(tenOClock - 12h));
    EXPECT_TRUE(isShown(tenOClock + 12h - 1s));
    EXPECT_FALSE(isShown(tenOClock + 12h));
}

TEST(Provider, TakesTheGroupFromTheInformationWhenItIsAText) {
    EXPECT_EQ(Provider::groupID({{"PellotGroupID", "ours"}}), "ours");
    EXPECT_EQ(Provider::groupID({{"PellotGroupID", true}}), std::nullopt);
    EXPECT_EQ(Provider::groupID(nlohmann::json::array()), std::nullopt);
}

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

TEST(Widgets, DimTheDaysThatAreNotToday) {
    const auto shown =
        picture(widget("TapWeek"), {tenOClock, sample()}, Family::small, {german, english, measured});
    const std::string text = drawing::svg(shown, {}, [](auto, const auto&) { return 10.0; });
    EXPECT_EQ(text.find("fill-opacity=\"0.55\""), text.rfind("fill-opacity=\"0.55\""));
    EXPECT_NE(text.find("fill-opacity=\"0.55\""), text.npos);
}

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
