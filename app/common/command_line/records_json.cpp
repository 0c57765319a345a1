#include "app/common/command_line/records_json.h"

#include <nlohmann/json.hpp>

#include "app/common/harmless_text.h"
#include "core/foundation/json_fields.h"

namespace tappora {
namespace {

using nlohmann::json;
using tapcore::Tally;

json toJson(const Tally::KeyCounts& counts) {
    json result = json::object();
    for (const auto& [code, count] : counts) result[std::to_string(code)] = count;
    return result;
}

json toJson(const Tally::Chord& chord) {
    return {{"modifiers", chord.modifiers.name()}, {"keyCode", chord.keyCode}};
}

json toJson(const Tally::ChordCounts& counts) {
    json result = json::array();
    for (const auto& [chord, count] : counts) result.push_back({{"chord", toJson(chord)}, {"count", count}});
    return result;
}

json toJson(const Tally::MouseHour& mouse) {
    return {{"clicks", mouse.clicks},
            {"right", mouse.right},
            {"middle", mouse.middle},
            {"scrolls", mouse.scrolls},
            {"moved", mouse.moved}};
}

template <class Slot>
json hourly(const Tally::Hourly<Slot>& slots) {
    json result = json::array();
    for (const Slot& slot : slots) result.push_back(toJson(slot));
    return result;
}

}  // namespace

json toJson(const Tally& tally) {
    return {{"keys", hourly(tally.keys)},
            {"chords", hourly(tally.chords)},
            {"unkeyed", tally.unkeyed},
            {"mouse", hourly(tally.mouse)}};
}

json toJson(const tapcore::DayFile& file, const tapcore::Day& day) {
    json result = {{"day", day.description()},
                   {"tally", toJson(file.tally)},
                   {"peakPerMinute", file.peakPerMinute},
                   {"pausedMinutes", file.pausedMinutes},
                   {"otherMeta", file.otherMeta}};
    if (file.board) result["board"] = *file.board;
    if (file.layout) result["layout"] = *file.layout;
    return result;
}

json toJson(const std::vector<tapcore::Summary::DayTotal>& days) {
    json result = json::array();
    for (const auto& entry : days)
        result.push_back({{"day", entry.day.description()}, {"keystrokes", entry.keystrokes}});
    return result;
}

json toJson(const tapcore::Summary& summary) {
    json result = {{"keystrokes", summary.keystrokes},
                   {"activeHours", summary.activeHours},
                   {"peakPerMinute", summary.peakPerMinute},
                   {"byHour", summary.byHour},
                   {"byDay", toJson(summary.byDay)},
                   {"byKey", toJson(summary.byKey)},
                   {"byChord", toJson(summary.byChord)},
                   {"mouse", hourly(summary.mouse)},
                   {"averagePerActiveHour", summary.averagePerActiveHour()},
                   {"clicks", summary.clicks()},
                   {"movedMetres", summary.movedMetres()}};
    if (const auto share = summary.keyboardShare()) result["keyboardShare"] = *share;
    return result;
}

json toJson(const std::vector<tapcore::KeyRow>& rows) {
    json result = json::array();
    for (const tapcore::KeyRow& row : rows)
        result.push_back({{"keyCode", row.keyCode}, {"name", row.name}, {"count", row.count}});
    return result;
}

json toJson(const std::vector<tapcore::ChordRow>& rows) {
    json result = json::array();
    for (const tapcore::ChordRow& row : rows)
        result.push_back({{"chord", toJson(row.chord)}, {"count", row.count}, {"keys", row.keys}});
    return result;
}

std::string jsonText(const json& value) { return harmlessJson(tapcore::jsonText(value)); }

}  // namespace tappora
