#include "app/desktop/places.h"

#include <gtest/gtest.h>

#include "app/common/folder/settings.h"
#include "app/common/system/environment.h"
#include "tests/support/environment.h"
#include "tests/support/temporary_folder.h"

namespace tappora {

static void PrintTo(const WidgetPlace& place, std::ostream* stream) {
    *stream << place.connector << ' ' << place.x << ' ' << place.y;
}

namespace {

using tapcore::TemporaryFolder;

constexpr drawing::Size medium{364, 170};
const MonitorArea laptop{"eDP-1", 1280, 800, 0, 200};
const MonitorArea screen{"DP-2", 1920, 1080, 1280, 0};

TEST(WidgetPlaces, ADraggedWidgetIsOnTheMonitorOfItsMiddle) {
    struct Case {
        drawing::Point leftTop;
        WidgetPlace place;
    };
    const Case cases[] = {
        {{40, 240}, {"eDP-1", 40, 40}},
        {{1090, 300}, {"eDP-1", 916, 100}},  // its middle is still on the left, so it is at the edge
        {{1100, 300}, {"DP-2", 0, 300}},
        {{3500, -90}, {"DP-2", 1556, 0}},
        {{-4000, 20}, {"eDP-1", 0, 0}},  // on none of them
    };
    for (const Case& each : cases) EXPECT_EQ(placeAt(each.leftTop, medium, {laptop, screen}), each.place);
}

TEST(WidgetPlaces, AreKeptForEachMonitorAndTheLastOneThereIsGoes) {
    const TemporaryFolder folder;
    const Environment environment = environmentWith({{"XDG_CONFIG_HOME", folder.path().string()}});
    const WidgetPlaces places(environment);
    EXPECT_EQ(places.find("week:small", {laptop, screen}, medium), std::nullopt);
    places.keep("week:small", {"DP-2", 1500, 900});
    places.keep("week:small", {"eDP-1", 10, 20});
    const auto find = [&](const std::vector<MonitorArea>& there) {
        return places.find("week:small", there, medium).value();
    };
    EXPECT_EQ(find({screen, laptop}), (WidgetPlace{"eDP-1", 10, 20}));
    EXPECT_EQ(find({screen}), (WidgetPlace{"DP-2", 1500, 900}));
    EXPECT_EQ(find({{"DP-2", 1280, 800}}), (WidgetPlace{"DP-2", 916, 630}));
    EXPECT_EQ(find({{"DP-2", 100, 100}}), (WidgetPlace{"DP-2", 0, 0}));

    Settings::change(environment, [](Settings& settings) {
        settings.setText("widgets.place.today:small@DP-2", "at the left");
    });
    EXPECT_EQ(places.find("today:small", {screen}, medium), std::nullopt);
}

TEST(WidgetPlaces, TheOthersAreInRows) {
    const std::vector<drawing::Size> sizes = {{170, 170}, {364, 170}, {364, 382}, {170, 170}};
    const std::vector<WidgetPlace> expected = {
        {"a", 40, 40}, {"a", 226, 40}, {"a", 40, 218}, {"a", 420, 226}};
    EXPECT_EQ(rowsOn({"a", 800, 600}, sizes), expected);
    const std::vector<WidgetPlace> narrow = {{"a", 30, 40}, {"a", 0, 130}, {"a", 0, 0}, {"a", 30, 130}};
    EXPECT_EQ(rowsOn({"a", 200, 300}, sizes), narrow);
}

}  // namespace
}  // namespace tappora
