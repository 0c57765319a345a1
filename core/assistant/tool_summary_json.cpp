// What the tool `summary` adds up, as JSON for clients that read structured results.

#include <algorithm>
#include <nlohmann/json.hpp>

#include "core/assistant/tool_summary.h"
#include "core/assistant/tool_text.h"
#include "core/counting/chords.h"

namespace tapcore {
namespace {

using nlohmann::json;

json object(const json& properties, const std::vector<std::string>& optional = {}) {
    json required = json::array();
    for (const auto& [name, schema] : properties.items())
        if (std::find(optional.begin(), optional.end(), name) == optional.end()) required.push_back(name);
    return {{"type", "object"}, {"properties", properties}, {"required", required}};
}

json typed(std::string_view type, std::string_view description) {
    return {{"type", type}, {"description", description}};
}

json listOf(const json& items, std::string_view description) {
    return {{"type", "array"}, {"items", items}, {"description", description}};
}

json counted(const char* name, std::string_view description) {
    return object({{name, typed("string", description)}, {"count", typed("integer", "Presses.")}});
}

}  // namespace

json periodJson(const AssistantTools::PeriodFigures& period, const Legends& legends) {
    const Summary& sum = period.sum;
    json keys = json::array();
    for (const KeyRow& row : topKeys(sum.byKey, legends, keysShown))
        keys.push_back({{"key", shortened(row.name)}, {"count", row.count}});
    json shortcuts = json::array();
    for (const ChordRow& row : Chords::top(sum.byChord, legends, chordsShown))
        shortcuts.push_back({{"shortcut", shortened(Chords::compact(row.keys))}, {"count", row.count}});
    json days = json::array();
    for (const auto& [day, keystrokes] : sum.byDay)
        days.push_back({{"day", day.description()}, {"keystrokes", keystrokes}});

    json record = {{"from", period.first.description()},
                   {"to", period.last.description()},
                   {"days", period.days},
                   {"cut", period.isCut},
                   {"keystrokes", sum.keystrokes},
                   {"activeHours", sum.activeHours},
                   {"averagePerActiveHour", sum.averagePerActiveHour()},
                   {"peakPerMinute", sum.peakPerMinute},
                   {"clicks", sum.clicks()},
                   {"movedMetres", sum.movedMetres()},
                   {"byHour", sum.byHour},
                   {"topKeys", keys},
                   {"topShortcuts", shortcuts},
                   {"byDay", days}};
    if (const auto share = sum.keyboardShare()) record["keyboardShare"] = *share;
    for (const FileProblem& problem : period.problems)
        record["notComplete"].push_back(shortened(problem.path.string()) + ": " + problem.why);
    return record;
}

json periodSchema() {
    const json day =
        object({{"day", typed("string", "YYYY-MM-DD.")}, {"keystrokes", typed("integer", "Presses.")}});
    return object(
        {{"from", typed("string", "First day, YYYY-MM-DD.")},
         {"to", typed("string", "Last day, YYYY-MM-DD.")},
         {"days", typed("integer", "Days of the period, both ends included.")},
         {"cut", typed("boolean", "Whether the period asked for was longer.")},
         {"keystrokes", typed("integer", "Key presses.")},
         {"activeHours", typed("integer", "Hours with a key press.")},
         {"averagePerActiveHour", typed("integer", "Key presses per active hour.")},
         {"peakPerMinute", typed("integer", "Key presses of the busiest minute.")},
         {"clicks", typed("integer", "Clicks of all mouse buttons.")},
         {"movedMetres", typed("number", "Distance of the mouse pointer in metres.")},
         {"keyboardShare", typed("integer", "Key presses among all presses and clicks, in per cent.")},
         {"byHour", listOf(typed("integer", "Key presses."), "Key presses by hour of the day, 0 to 23.")},
         {"topKeys", listOf(counted("key", "The key's name."), "The most pressed keys.")},
         {"topShortcuts", listOf(counted("shortcut", "Its keys."), "The most used shortcuts.")},
         {"byDay", listOf(day, "Key presses of every day of the period.")},
         {"notComplete",
          listOf(typed("string", "Path and reason."), "What could not be read, if anything.")}},
        {"keyboardShare", "notComplete"});
}

}  // namespace tapcore
