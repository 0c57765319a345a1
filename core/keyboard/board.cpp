#include "core/keyboard/board.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>
#include <numbers>

#include "core/foundation/json_fields.h"

namespace tapcore {
namespace {

KeyCode keyCodeOf(const JsonValue& json) {
    const std::int64_t code = json.integer();
    if (code < 0 || code > std::numeric_limits<KeyCode>::max()) json.fail("not a key code");
    return static_cast<KeyCode>(code);
}

std::vector<Board::Key> keysOf(const JsonValue& json) {
    std::vector<Board::Key> keys;
    keys.reserve(json.size());
    for (std::size_t i = 0; i < json.size(); ++i) keys.push_back(Board::Key::decode(json.element(i)));
    return keys;
}

template <class Value>
void put(nlohmann::json& json, const char* name, const std::optional<Value>& value) {
    if (value) json[name] = *value;
}

std::array<Board::Point, 4> corners(const Board::Rect& rect) {
    const double right = rect.x + rect.w;
    const double bottom = rect.y + rect.h;
    return {{{rect.x, rect.y}, {right, rect.y}, {right, bottom}, {rect.x, bottom}}};
}

/// The box around all points it was shown.
struct Box {
    double minX = std::numeric_limits<double>::infinity();
    double minY = std::numeric_limits<double>::infinity();
    double maxX = -std::numeric_limits<double>::infinity();
    double maxY = -std::numeric_limits<double>::infinity();

    void widen(const Board::Point& point) {
        minX = std::min(minX, point.x);
        minY = std::min(minY, point.y);
        maxX = std::max(maxX, point.x);
        maxY = std::max(maxY, point.y);
    }
};

void widen(Box& box, const Board::Key& key, const Board::Rect& rect) {
    for (const Board::Point& corner : corners(rect)) box.widen(key.turned(corner));
}

}  // namespace

Board::Point Board::Key::turned(Point point) const {
    if (!isTurned()) return point;
    const double angle = r * std::numbers::pi / 180;
    const double dx = point.x - *rx;
    const double dy = point.y - *ry;
    return {*rx + std::cos(angle) * dx - std::sin(angle) * dy,
            *ry + std::sin(angle) * dx + std::cos(angle) * dy};
}

Board::Point Board::Key::center() const { return turned({x + w / 2, y + h / 2}); }

Board::Rect Board::Rect::decode(const JsonValue& json) {
    return {json.member("x").number(), json.member("y").number(), json.member("w").number(),
            json.member("h").number()};
}

nlohmann::json Board::Rect::encoded() const { return {{"x", x}, {"y", y}, {"w", w}, {"h", h}}; }

Board::Key Board::Key::decode(const JsonValue& json) {
    return {.id = json.member("id").string(),
            .keyCode = json.optionalMember("keyCode", keyCodeOf),
            .x = json.member("x").number(),
            .y = json.member("y").number(),
            .w = json.optionalMember("w", &JsonValue::number).value_or(1),
            .h = json.optionalMember("h", &JsonValue::number).value_or(1),
            .r = json.optionalMember("r", &JsonValue::number).value_or(0),
            .rx = json.optionalMember("rx", &JsonValue::number),
            .ry = json.optionalMember("ry", &JsonValue::number),
            .second = json.optionalMember("second", &Rect::decode),
            .hand = json.member("hand").word(hands),
            .finger = json.member("finger").word(fingers),
            .row = json.member("row").word(rows),
            .home = json.optionalMember("home", &JsonValue::boolean).value_or(false)};
}

nlohmann::json Board::Key::encoded() const {
    nlohmann::json json = rect().encoded();
    json["id"] = id;
    put(json, "keyCode", keyCode);
    json["r"] = r;
    put(json, "rx", rx);
    put(json, "ry", ry);
    if (second) json["second"] = second->encoded();
    json["hand"] = hands.of(hand);
    json["finger"] = fingers.of(finger);
    json["row"] = rows.of(row);
    json["home"] = home;
    return json;
}

Board Board::parse(std::string_view text) {
    const nlohmann::json document = JsonValue::parse(text);
    return decode(JsonValue(document));
}

Board Board::decode(const JsonValue& json) {
    return {.id = json.member("id").string(),
            .name = json.member("name").string(),
            .maker = json.member("maker").string(),
            .geometry = json.member("geometry").word(geometries),
            .source = json.optionalMember("source", &JsonValue::string),
            .notes = json.optionalMember("notes", &JsonValue::string),
            .keys = keysOf(json.member("keys"))};
}

nlohmann::json Board::encoded() const {
    nlohmann::json json = {
        {"id", id}, {"name", name}, {"maker", maker}, {"geometry", geometries.of(geometry)}};
    put(json, "source", source);
    put(json, "notes", notes);
    json["keys"] = nlohmann::json::array();
    for (const Key& key : keys) json["keys"].push_back(key.encoded());
    return json;
}

std::string Board::text() const { return jsonText(encoded()); }

const Board::Key* Board::key(KeyCode code) const {
    for (const Key& key : keys)
        if (key.keyCode == code) return &key;
    return nullptr;
}

std::set<KeyCode> Board::keyCodes() const {
    std::set<KeyCode> codes;
    for (const Key& key : keys)
        if (key.keyCode) codes.insert(*key.keyCode);
    return codes;
}

Board::Rect Board::bounds() const {
    Box box;
    for (const Key& key : keys) {
        widen(box, key, key.rect());
        if (key.second) widen(box, key, *key.second);
    }
    if (std::isinf(box.minX)) return {};
    return {box.minX, box.minY, box.maxX - box.minX, box.maxY - box.minY};
}

}  // namespace tapcore
