#include "core/assistant/text_call.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <sstream>

#include "core/assistant/assistant_wire.h"
#include "core/foundation/characters.h"
#include "core/foundation/json_fields.h"

namespace tapcore {
namespace {

using nlohmann::json;

/// What calls begin with in the forms that models are taught.
constexpr std::array<std::string_view, 4> marks = {"<tool_call>", "[TOOL_REQUEST]", "[TOOL_CALLS]",
                                                   "<function="};

constexpr std::size_t longestCall = 20'000;  // bytes
constexpr int mostObjects = 200;             // that are looked at in one text

constexpr std::string_view thoughtStart = "<think>";
constexpr std::string_view thoughtEnd = "</think>";

/// The JSON value that a text begins with, whatever follows it; discarded when it begins with no value.
json valueAt(std::string_view text) {
    std::istringstream input(std::string(text.substr(0, longestCall)));
    json value;
    try {
        input >> value;
    } catch (const json::exception&) {
        return json::value_t::discarded;
    }
    return value;
}

std::optional<TextCall> callOf(const json& value) {
    if (!value.is_object() || !value.contains("name") || !value["name"].is_string()) return std::nullopt;
    for (const char* name : {"arguments", "parameters"}) {
        const auto arguments =
            value.contains(name) ? AssistantWire::argumentsObject(value[name]) : std::nullopt;
        if (arguments) return TextCall{value["name"].get<std::string>(), jsonLine(*arguments)};
    }
    return std::nullopt;
}

bool holds(std::string_view text, std::string_view part) { return text.find(part) != std::string_view::npos; }

/// Whether a call begins somewhere that is cut short or no JSON.
bool holdsBrokenCall(std::string_view text) {
    for (std::size_t at = text.find('{'); at != std::string_view::npos; at = text.find('{', at + 1)) {
        const std::string_view behind =
            text.substr(std::min(text.find_first_not_of(" \t\r\n", at + 1), text.size()));
        if (behind.starts_with("\"name\""))
            return holds(behind, "\"arguments\"") || holds(behind, "\"parameters\"");
    }
    return false;
}

}  // namespace

std::optional<TextCall> textCall(std::string_view text) {
    std::size_t at = text.find('{');
    for (int objects = 0; objects < mostObjects && at != std::string_view::npos; ++objects) {
        if (auto call = callOf(valueAt(text.substr(at)))) return call;
        at = text.find('{', at + 1);
    }
    return std::nullopt;
}

bool holdsCall(std::string_view text) {
    const bool isMarked =
        std::any_of(marks.begin(), marks.end(), [&](std::string_view mark) { return holds(text, mark); });
    return isMarked || textCall(text) || holdsBrokenCall(text);
}

std::string withoutThoughts(std::string_view text) {
    std::string rest;
    while (true) {
        const std::size_t start = text.find(thoughtStart);
        rest += text.substr(0, start);
        if (start == std::string_view::npos) break;
        const std::size_t end = text.find(thoughtEnd, start);
        if (end == std::string_view::npos) break;  // thought to the end
        text.remove_prefix(end + thoughtEnd.size());
    }
    return std::string(trimmedWhiteSpace(rest));
}

}  // namespace tapcore
