#include "core/widget/widget_snapshot.h"

#include <gtest/gtest.h>

#include <limits>

namespace tapcore {
namespace {

const Calendar utc("UTC");
const Day sunday{2026, 9, 20};

Tally typed() {
    Tally tally;
    tally.add(0, 9, 7);
    tally.add(36, 23, 2);
    tally.addUnkeyed(1, 0);
    return tally;
}

Summary weekUpTo(const Day& last, std::int64_t days) {
    Summary week;
    for (std::int64_t i = days - 1; i >= 0; --i) week.byDay.push_back({last.adding(-i, utc), 100 * i});
    return week;
}

Board twoKeys() {
    return {.id = "two",
            .name = "Two",
            .maker = "Tester",
            .keys = {{.id = "a", .keyCode = 0, .x = 0.5, .y = 1},
                     {.id = "return",
                      .keyCode = 36,
                      .x = 2,
                      .y = 1,
                      .w = 1.25,
                      .h = 2,
                      .r = 90,
                      .rx = 2,
                      .ry = 1,
                      .second = Board::Rect{1.75, 1, 1.5, 1}}}};
}

TEST(WidgetSnapshot, IsOneLineOfSortedJson) {
    const Board board = twoKeys();
    const Heatmap heatmap(board, {}, typed().byKey(), {36});
    WidgetSnapshot snapshot(sunday, typed(), -7, weekUpTo(sunday, 2), &heatmap, &board, "de_DE", "de", utc);
    snapshot.mapColor = MapColor::teal;
    EXPECT_EQ(
        snapshot.data(),
        R"({"boardName":"Tester Two","bounds":{"h":1.5,"w":2.0,"x":0.0,"y":0.75},)"
        R"("byHour":[1,0,0,0,0,0,0,0,0,7,0,0,0,0,0,0,0,0,0,0,0,0,0,2],"comparison":-7,"day":"2026-09-20",)"
        R"("heat":[{"h":1.0,"r":0.0,"step":5,"w":1.0,"x":0.5,"y":1.0},)"
        R"({"h":2.0,"r":90.0,"rx":2.0,"ry":1.0,"second":{"h":1.0,"w":1.5,"x":1.75,"y":1.0},"step":0,)"
        R"("w":1.25,"x":2.0,"y":1.0}],"language":"de","mapColor":"teal","today":10,)"
        R"("week":[{"keystrokes":100,"label":"Sa","today":false},)"
        R"({"keystrokes":0,"label":"So","today":true}]})");
    EXPECT_EQ(WidgetSnapshot::decode(snapshot.data()), snapshot);
}

TEST(WidgetSnapshot, LeavesOutWhatThereIsNot) {
    EXPECT_EQ(WidgetSnapshot({33, 1, 2}, {}, {}, {}, nullptr, nullptr, "en", "en", utc).data(),
              R"({"byHour":[0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0],"day":"0033-01-02","heat":[],)"
              R"("language":"en","today":0,"week":[]})");
    const Board nameless{.id = "b", .name = "Board"};
    const WidgetSnapshot empty(sunday, {}, 0, {}, nullptr, &nameless, "en", "en", utc);
    EXPECT_EQ(empty.boardName, " Board");
    EXPECT_EQ(empty.bounds, Board::Rect{});
    EXPECT_EQ(empty.comparison, 0);
}

std::string labels(std::string_view locale) {
    std::string text;
    const WidgetSnapshot snapshot(sunday, {}, {}, weekUpTo(sunday, 7), nullptr, nullptr, locale, "en", utc);
    for (const auto& bar : snapshot.week) text += bar.label + ' ';
    return text;
}

TEST(WidgetSnapshot, NamesWeekdaysAsTheyStandAlone) {
    EXPECT_EQ(labels("en_US"), "Mon Tue Wed Thu Fri Sat Sun ");
    EXPECT_EQ(labels("ru"), "пн вт ср чт пт сб вс ");
    EXPECT_EQ(labels("fr-CA"), "lun. mar. mer. jeu. ven. sam. dim. ");
    EXPECT_EQ(labels("th_TH_TRADITIONAL@calendar=buddhist"), "จ. อ. พ. พฤ. ศ. ส. อา. ");
    EXPECT_EQ(labels("nb"), labels("no"));
    EXPECT_EQ(labels("de_AT_EURO"), labels("de"));
    EXPECT_EQ(labels("no such locale"), labels("en"));
    EXPECT_EQ(labels(std::string(5000, 'x')), labels("en"));
}

TEST(WidgetSnapshot, IsEmptyBytesWhereJsonHasNoWordForIt) {
    WidgetSnapshot snapshot;
    snapshot.bounds = Board::Rect{0, 0, std::numeric_limits<double>::infinity(), 1};
    EXPECT_EQ(snapshot.data(), "");
    snapshot.bounds = {};
    snapshot.heat = {{.r = std::numeric_limits<double>::quiet_NaN()}};
    EXPECT_EQ(snapshot.data(), "");
    snapshot.heat = {};
    snapshot.language = "\xFF";
    EXPECT_EQ(snapshot.data(), "");
    EXPECT_FALSE(WidgetSnapshot::decode(""));
}

TEST(WidgetSnapshot, IsReadByExactTypesAndNothingElse) {
    const std::string small =
        R"({"day":"2026-09-20","today":1,"byHour":[1],"week":[{"label":"So","keystrokes":1,"today":true}],)"
        R"("heat":[{"x":0,"y":0,"w":1,"h":1,"r":0,"step":1}],"language":"de"})";
    const auto with = [&](std::string_view piece, std::string_view replacement) {
        std::string text = small;
        return WidgetSnapshot::decode(text.replace(text.find(piece), piece.size(), replacement));
    };
    const auto snapshot = WidgetSnapshot::decode(small);
    ASSERT_TRUE(snapshot);
    const struct {
        std::string_view piece, replacement;
        bool isSame;
    } cases[] = {
        {"\"today\":1", "\"today\":1.0", true},
        {"\"today\":1", "\"comparison\":null,\"mapColor\":null,\"today\":1", true},
        {"\"step\":1", "\"step\":1,\"rx\":null,\"second\":null,\"code\":[{}]", true},
        {"\"today\":1", "\"today\":1.5", false},
        {"\"today\":1", "\"today\":\"1\"", false},
        {"\"today\":1", "\"today\":true", false},
        {"\"today\":1", "\"today\":1e400", false},
        {"\"today\":1", "\"today\":9223372036854775808", false},
        {"\"today\":1", "\"today\":-9223372036854775809", false},
        {"\"today\":true", "\"today\":1", false},
        {"\"byHour\":[1]", "\"byHour\":null", false},
        {"\"byHour\":[1]", "\"byHour\":[null]", false},
        {"\"step\":1", "\"step\":1,\"second\":{\"x\":1}", false},
        {"\"r\":0,", "", false},
        {"\"week\"", "\"Week\"", false},
        {"\"language\"", "\"mapColor\":\"pink\",\"language\"", false},
        {"\"language\"", "\"mapColor\":1,\"language\"", false},
    };
    std::string hours = "\"byHour\":[1";
    for (std::size_t hour = 1; hour < WidgetSnapshot::longestList; ++hour) hours += ",1";
    EXPECT_TRUE(with("\"byHour\":[1", hours));
    EXPECT_FALSE(with("\"byHour\":[1", hours + ",1"));
    for (const auto& [piece, replacement, isSame] : cases)
        EXPECT_EQ(with(piece, replacement), isSame ? snapshot : std::nullopt) << replacement;
    for (std::size_t size = 0; size < small.size(); ++size)
        EXPECT_FALSE(WidgetSnapshot::decode(small.substr(0, size))) << size;
    EXPECT_EQ(with("\"byHour\":[1]", "\"byHour\":[-5,1e3]")->byHour, (std::vector<std::int64_t>{-5, 1000}));
}

TEST(WidgetSnapshot, LiesInTheGroupsContainerElseWithTheUsersSupportFiles) {
    const auto container = [](const std::string& group) {
        return group == "ours" ? std::optional<std::filesystem::path>("/groups/ours") : std::nullopt;
    };
    const WidgetSnapshot::SharedFolders both{container, "/support"};
    EXPECT_EQ(WidgetSnapshot::url("ours", both), "/groups/ours/widget.json");
    EXPECT_EQ(WidgetSnapshot::url("theirs", both), "/support/Tappora/widget.json");
    EXPECT_EQ(WidgetSnapshot::url({}, both), "/support/Tappora/widget.json");
    EXPECT_EQ(WidgetSnapshot::url("theirs", {container, {}}), std::nullopt);
    EXPECT_EQ(WidgetSnapshot::url("ours", {{}, {}}), std::nullopt);
}

TEST(WidgetSnapshotDeathTest, EndsForADayPast64Bits) {
    Tally tally;
    tally.add(0, 1, std::numeric_limits<std::int64_t>::max());
    tally.add(0, 2, 1);
    EXPECT_DEATH(WidgetSnapshot(sunday, tally, {}, {}, nullptr, nullptr, "en", "en", utc), "fatal");
}

}  // namespace
}  // namespace tapcore
