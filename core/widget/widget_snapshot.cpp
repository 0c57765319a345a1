#include "core/widget/widget_snapshot.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <utility>

#include "core/foundation/json_fields.h"
#include "core/foundation/weekday_names.h"

namespace tapcore {
namespace {

using nlohmann::json;
using DayBar = WidgetSnapshot::DayBar;
using HeatKey = WidgetSnapshot::HeatKey;

std::vector<DayBar> barsOf(const Summary& week, const Day& today, std::string_view locale) {
    const std::array<std::string, 7> names = weekdayNames(locale);
    std::vector<DayBar> bars;
    for (const auto& [day, keystrokes] : week.byDay)
        bars.push_back({names[day.weekday()], keystrokes, day == today});
    return bars;
}

HeatKey heatKeyOf(const Heatmap::Cell& cell) {
    const Board::Key& key = cell.key;
    return {.x = key.x,
            .y = key.y,
            .w = key.w,
            .h = key.h,
            .r = key.r,
            .rx = key.rx,
            .ry = key.ry,
            .second = key.second,
            .step = cell.step};
}

/// A number as JSON, which has no others than finite ones.
json finite(double value) {
    if (!std::isfinite(value)) throw std::domain_error("not a finite number");
    return value;
}

json encoded(const Board::Rect& rect) {
    json object;
    object["h"] = finite(rect.h);
    object["w"] = finite(rect.w);
    object["x"] = finite(rect.x);
    object["y"] = finite(rect.y);
    return object;
}

json encoded(const DayBar& bar) {
    return {{"label", bar.label}, {"keystrokes", bar.keystrokes}, {"today", bar.today}};
}

json encoded(const HeatKey& key) {
    json object = encoded(Board::Rect{key.x, key.y, key.w, key.h});
    object["r"] = finite(key.r);
    if (key.rx) object["rx"] = finite(*key.rx);
    if (key.ry) object["ry"] = finite(*key.ry);
    if (key.second) object["second"] = encoded(*key.second);
    object["step"] = key.step;
    return object;
}

template <class Item>
json encoded(const std::vector<Item>& items) {
    json array = json::array();
    for (const Item& item : items) array.push_back(encoded(item));
    return array;
}

json encoded(const WidgetSnapshot& snapshot) {
    json object = {{"day", snapshot.day},
                   {"today", snapshot.today},
                   {"byHour", snapshot.byHour},
                   {"week", encoded(snapshot.week)},
                   {"heat", encoded(snapshot.heat)},
                   {"language", snapshot.language}};
    if (snapshot.comparison) object["comparison"] = *snapshot.comparison;
    if (snapshot.boardName) object["boardName"] = *snapshot.boardName;
    if (snapshot.bounds) object["bounds"] = encoded(*snapshot.bounds);
    if (snapshot.mapColor) object["mapColor"] = snapshot.mapColor->rawValue();
    return object;
}

DayBar dayBar(const JsonValue& value) {
    return {value.member("label").string(), value.member("keystrokes").integer(),
            value.member("today").boolean()};
}

HeatKey heatKey(const JsonValue& value) {
    const auto [x, y, w, h] = Board::Rect::decode(value);
    return {.x = x,
            .y = y,
            .w = w,
            .h = h,
            .r = value.member("r").number(),
            .rx = value.optionalMember("rx", &JsonValue::number),
            .ry = value.optionalMember("ry", &JsonValue::number),
            .second = value.optionalMember("second", &Board::Rect::decode),
            .step = value.member("step").integer()};
}

MapColor mapColor(const JsonValue& value) {
    const auto color = MapColor::parse(value.string());
    if (!color) value.fail("not a colour of heat maps");
    return *color;
}

/// The elements of an array, each read by `read`.
template <class Read>
auto list(const JsonValue& value, Read read) {
    if (value.size() > WidgetSnapshot::longestList) value.fail("too long a list");
    std::vector<decltype(std::invoke(read, value))> items;
    items.reserve(value.size());
    for (std::size_t i = 0; i < value.size(); ++i) items.push_back(std::invoke(read, value.element(i)));
    return items;
}

WidgetSnapshot snapshotOf(const JsonValue& value) {
    WidgetSnapshot snapshot;
    snapshot.day = value.member("day").string();
    snapshot.today = value.member("today").integer();
    snapshot.byHour = list(value.member("byHour"), &JsonValue::integer);
    snapshot.comparison = value.optionalMember("comparison", &JsonValue::integer);
    snapshot.week = list(value.member("week"), dayBar);
    snapshot.boardName = value.optionalMember("boardName", &JsonValue::string);
    snapshot.bounds = value.optionalMember("bounds", &Board::Rect::decode);
    snapshot.heat = list(value.member("heat"), heatKey);
    snapshot.language = value.member("language").string();
    snapshot.mapColor = value.optionalMember("mapColor", mapColor);
    return snapshot;
}

}  // namespace

WidgetSnapshot::WidgetSnapshot(const Day& ofDay, const Tally& tally, std::optional<std::int64_t> compared,
                               const Summary& summary, const Heatmap* heatmap, const Board* board,
                               std::string_view locale, std::string ofLanguage, const Calendar&)
    : day(ofDay.description()), comparison(compared), language(std::move(ofLanguage)) {
    const auto hours = tally.byHour();
    byHour.assign(hours.begin(), hours.end());
    today = tally.total();
    week = barsOf(summary, ofDay, locale);
    if (board) {
        boardName = board->maker + " " + board->name;
        bounds = board->bounds();
    }
    if (heatmap)
        for (const Heatmap::Cell& cell : heatmap->cells) heat.push_back(heatKeyOf(cell));
}

std::optional<std::filesystem::path> WidgetSnapshot::url(const std::optional<std::string>& groupID,
                                                         const SharedFolders& folders) {
    if (const auto container = groupID && folders.container ? folders.container(*groupID) : std::nullopt)
        return *container / fileName;
    if (folders.applicationSupport) return *folders.applicationSupport / "Tappora" / fileName;
    return std::nullopt;
}

std::string WidgetSnapshot::data() const {
    try {
        return encoded(*this).dump();
    } catch (const std::exception&) {  // a text that is no UTF-8, or what `finite` refuses
        return "";
    }
}

std::optional<WidgetSnapshot> WidgetSnapshot::decode(std::string_view data) {
    try {
        const json document = JsonValue::parse(data);
        return snapshotOf(JsonValue(document));
    } catch (const JsonError&) {
        return std::nullopt;
    }
}

}  // namespace tapcore
