#include "core/assistant/text_call.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <sstream>

#include "core/assistant/assistant_wire.h"
#include "core/assistant/code_call.h"
#include "core/foundation/characters.h"
#include "core/foundation/json_fields.h"

namespace tapcore {
namespace {

using nlohmann::json;

/// What calls begin with in the forms that models are taught.
constexpr std::array<std::string_view, 5> marks = {"<tool_call>", "[TOOL_REQUEST]", "[TOOL_CALLS]",
                                                   "<function=", "```tool_code"};

/// The members that hold a call's name and its arguments, in the forms that models are taught.
constexpr std::array<const char*, 3> nameMembers = {"name", "function", "tool"};
constexpr std::array<const char*, 2> argumentMembers = {"arguments", "parameters"};

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

std::optional<std::string> nameOf(const json& call) {
    for (const char* member : nameMembers)
        if (call.contains(member) && call[member].is_string()) return call[member].get<std::string>();
    return std::nullopt;
}

std::optional<TextCall> callOf(const json& value) {
    const auto name = value.is_object() ? nameOf(value) : std::nullopt;
    if (!name) return std::nullopt;
    for (const char* member : argumentMembers) {
        const auto arguments =
            value.contains(member) ? AssistantWire::argumentsObject(value[member]) : std::nullopt;
        if (arguments) return TextCall{*name, jsonLine(*arguments)};
    }
    return std::nullopt;
}

bool holds(std::string_view text, std::string_view part) { return text.find(part) != std::string_view::npos; }

/// Whether one of the members is in a text, or at its beginning.
template <class Members>
bool holdsAny(std::string_view text, const Members& members, bool atStart) {
    return std::any_of(members.begin(), members.end(), [&](const char* member) {
        const std::string quoted = '"' + std::string(member) + '"';
        return atStart ? text.starts_with(quoted) : holds(text, quoted);
    });
}

/// Whether a call begins somewhere that is cut short or no JSON.
bool holdsBrokenCall(std::string_view text) {
    for (std::size_t at = text.find('{'); at != std::string_view::npos; at = text.find('{', at + 1)) {
        const std::string_view behind =
            text.substr(std::min(text.find_first_not_of(" \t\r\n", at + 1), text.size()));
        if (holdsAny(behind, nameMembers, true)) return holdsAny(behind, argumentMembers, false);
    }
    return false;
}

}  // namespace

std::optional<TextCall> textCall(std::string_view text, const std::vector<AssistantTools::Spec>& tools) {
    std::size_t at = text.find('{');
    for (int objects = 0; objects < mostObjects && at != std::string_view::npos; ++objects) {
        if (auto call = callOf(valueAt(text.substr(at)))) return call;
        at = text.find('{', at + 1);
    }
    const CodeCall call = codeCall(text, tools);
    return call.kind == CodeCall::Kind::whole ? std::optional(call.call) : std::nullopt;
}

bool holdsCall(std::string_view text, const std::vector<AssistantTools::Spec>& tools) {
    const bool isMarked =
        std::any_of(marks.begin(), marks.end(), [&](std::string_view mark) { return holds(text, mark); });
    return isMarked || textCall(text, tools) || holdsBrokenCall(text) ||
           codeCall(text, tools).kind != CodeCall::Kind::none;
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
