#include "core/assistant/text_call.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <utility>

#include "core/foundation/characters.h"
#include "core/foundation/json_fields.h"

namespace tapcore {
namespace {

using nlohmann::json;

/// The marks that enclose a call. The last two also enclose other code.
constexpr std::array<std::pair<std::string_view, std::string_view>, 5> marks = {{
    {"<tool_call>", "</tool_call>"},
    {"[TOOL_REQUEST]", "[END_TOOL_REQUEST]"},
    {"[TOOL_CALLS]", ""},
    {"```json", "```"},
    {"```", "```"},
}};
constexpr std::size_t surePairs = 3;

constexpr std::string_view thoughtStart = "<think>";
constexpr std::string_view thoughtEnd = "</think>";

/// What stands between the marks; the text itself without any.
std::string_view unwrapped(std::string_view text) {
    for (const auto& [start, end] : marks)
        if (text.starts_with(start) && text.ends_with(end) && text.size() >= start.size() + end.size())
            return trimmedWhiteSpace(text.substr(start.size(), text.size() - start.size() - end.size()));
    return text;
}

}  // namespace

std::optional<TextCall> textCall(std::string_view text) {
    json call = JsonValue::tryParse(unwrapped(trimmedWhiteSpace(text))).value_or(json());
    if (call.is_array() && call.size() == 1) call = json(call[0]);
    if (!call.is_object() || !call.contains("name") || !call["name"].is_string()) return std::nullopt;
    for (const char* name : {"arguments", "parameters"})
        if (call.contains(name) && call[name].is_object())
            return TextCall{call["name"].get<std::string>(), call[name].dump()};
    return std::nullopt;
}

bool looksLikeCall(std::string_view text) {
    text = trimmedWhiteSpace(text);
    const bool isMarked = std::any_of(marks.begin(), marks.begin() + surePairs,
                                      [&](const auto& mark) { return text.starts_with(mark.first); });
    return isMarked || text.starts_with("<function=") || textCall(text);
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
