#include "app/common/control/recorder_status.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "app/common/system/moment.h"

namespace tappora {
namespace {

using nlohmann::json;
using tapcore::JsonValue;

template <class Element>
json listOf(const std::vector<Element>& elements, json (*write)(const Element&)) {
    json list = json::array();
    for (const Element& element : elements) list.push_back(write(element));
    return list;
}

template <class Read>
auto elementsOf(const JsonValue& list, Read read) {
    std::vector<decltype(read(list))> elements;
    for (std::size_t i = 0; i < list.size(); ++i) elements.push_back(read(list.element(i)));
    return elements;
}

template <class Read>
auto readOptional(const JsonValue& value, std::string_view name, Read read) {
    const auto member = value.optionalMember(name);
    return member ? std::optional(read(*member)) : std::nullopt;
}

std::string optionalText(const JsonValue& value, std::string_view name) {
    return value.optionalMember(name, &JsonValue::string).value_or("");
}

json deviceJson(const DeviceList::Device& device) {
    return {{"name", device.name}, {"keyboard", device.isKeyboard}};
}

json unreadableJson(const DeviceList::Unreadable& device) {
    return {{"name", device.name}, {"why", device.why}, {"forbidden", device.isForbidden}};
}

DeviceList::Device readDevice(const JsonValue& value) {
    return {.name = value.member("name").string(), .isKeyboard = value.member("keyboard").boolean()};
}

DeviceList::Unreadable readUnreadable(const JsonValue& value) {
    return {.name = value.member("name").string(),
            .why = value.member("why").string(),
            .isForbidden = value.member("forbidden").boolean()};
}

RecorderStatus::Stored readStored(const JsonValue& value) {
    return {.at = readMoment(value.member("at")),
            .presses = value.member("presses").integer(),
            .clicks = value.member("clicks").integer()};
}

RecorderStatus::Unstored readUnstored(const JsonValue& value) {
    return {.why = value.member("why").string(), .what = value.member("what").string()};
}

RecorderStatus::Dropped readDropped(const JsonValue& value) {
    return {.times = value.member("times").integer(), .last = readMoment(value.member("last"))};
}

}  // namespace

json toJson(const Pause& pause) {
    json result = {{"since", utcText(pause.since)}};
    if (pause.until) result["until"] = utcText(*pause.until);
    return result;
}

json toJson(const RecorderStatus& status) {
    json result = {{"counts", status.isCounting()},
                   {"process", status.process},
                   {"folder", status.folder.string()},
                   {"since", utcText(status.since)},
                   {"devices", listOf(status.devices.read, deviceJson)},
                   {"unreadable", listOf(status.devices.unreadable, unreadableJson)},
                   {"locked", status.isLocked}};
    if (const auto& stored = status.stored)
        result["stored"] = {
            {"at", utcText(stored->at)}, {"presses", stored->presses}, {"clicks", stored->clicks}};
    if (const auto& unstored = status.unstored)
        result["unstored"] = {{"why", unstored->why}, {"what", unstored->what}};
    if (const auto& dropped = status.dropped)
        result["dropped"] = {{"times", dropped->times}, {"last", utcText(dropped->last)}};
    if (status.pause) result["pause"] = toJson(*status.pause);
    if (!status.pauseProblem.empty()) result["pauseProblem"] = status.pauseProblem;
    if (!status.lockProblem.empty()) result["lockProblem"] = status.lockProblem;
    return result;
}

tapcore::Instant readMoment(const JsonValue& value) {
    const auto moment = utcMoment(value.string());
    if (!moment) value.fail("not a time such as 2026-09-20T07:00:00Z");
    return *moment;
}

Pause readPause(const JsonValue& value) {
    return {.since = readMoment(value.member("since")), .until = readOptional(value, "until", readMoment)};
}

RecorderStatus readStatus(const JsonValue& value) {
    return {.process = value.member("process").integer(),
            .folder = value.member("folder").string(),
            .since = readMoment(value.member("since")),
            .devices = {.read = elementsOf(value.member("devices"), readDevice),
                        .unreadable = elementsOf(value.member("unreadable"), readUnreadable)},
            .stored = readOptional(value, "stored", readStored),
            .unstored = readOptional(value, "unstored", readUnstored),
            .dropped = readOptional(value, "dropped", readDropped),
            .pause = readOptional(value, "pause", readPause),
            .pauseProblem = optionalText(value, "pauseProblem"),
            .isLocked = value.member("locked").boolean(),
            .lockProblem = optionalText(value, "lockProblem")};
}

bool DeviceList::hasKeyboard() const {
    return std::any_of(read.begin(), read.end(), [](const Device& device) { return device.isKeyboard; });
}

}  // namespace tappora
