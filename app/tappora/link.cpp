#include "app/tappora/link.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

#include "app/common/folder/data_folder.h"
#include "app/common/harmless_text.h"
#include "app/common/program.h"
#include "core/foundation/characters.h"
#include "core/foundation/text_pieces.h"
#include "core/foundation/utf8.h"

namespace tappora {
namespace {

constexpr std::string_view scheme = "tappora://";
constexpr std::size_t longest = 400;

enum class Value { day, letters };

struct Parameter {
    std::string_view name;
    Value value;
};

struct Target {
    std::string_view name;
    std::vector<Parameter> parameters;
};

/// All that links can do. The name of a target is the command, and that of a parameter its option.
const std::vector<Target>& targets() {
    static const std::vector<Target> all = {
        {"summary", {{"from", Value::day}, {"to", Value::day}}},
        {"heatmap", {{"from", Value::day}, {"to", Value::day}}},
        {"report", {{"from", Value::day}, {"to", Value::day}}},
        {"practice", {{"letters", Value::letters}}},
    };
    return all;
}

[[noreturn]] void refuse(std::string_view link, std::string_view why) {
    throw UsageError(fmt::format("LINK: {}: {}", harmlessLine(std::string(link)), why));
}

std::optional<int> digit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return std::nullopt;
}

/// A value with each "%C3" as the byte that it stands for; nothing when it is not text then.
std::optional<std::string> decoded(std::string_view value) {
    std::string text;
    for (std::size_t at = 0; at < value.size(); ++at) {
        if (value[at] != '%') {
            text += value[at];
            continue;
        }
        const auto high = at + 2 < value.size() ? digit(value[at + 1]) : std::nullopt;
        const auto low = at + 2 < value.size() ? digit(value[at + 2]) : std::nullopt;
        if (!high || !low) return std::nullopt;
        text += static_cast<char>(*high * 16 + *low);
        at += 2;
    }
    if (tapcore::firstInvalidUtf8(text) != text.npos || harmlessLine(text) != text) return std::nullopt;
    return text;
}

bool areLetters(std::string_view text) {
    const auto all = tapcore::pieces(text, ',');
    return std::all_of(all.begin(), all.end(), [](std::string_view letter) {
        return tapcore::isSingleCharacter(letter) && tapcore::isLetter(letter);
    });
}

void requireValue(Value kind, std::string_view name, const std::string& value) {
    const std::string what = fmt::format("LINK: {}", name);
    if (kind == Value::day) (void)parseDay(what, value);
    else if (!areLetters(value))
        throw UsageError(fmt::format("{}: {}: not letters with commas between them", what, value));
}

const Target& targetNamed(std::string_view link, std::string_view name) {
    for (const Target& target : targets())
        if (target.name == name) return target;
    refuse(link, "opens nothing here; use summary, heatmap, report or practice");
}

const Parameter& parameterNamed(std::string_view link, const Target& target, std::string_view name) {
    for (const Parameter& parameter : target.parameters)
        if (parameter.name == name) return parameter;
    refuse(link, fmt::format("{} has no parameter \"{}\"", target.name, harmlessLine(std::string(name))));
}

}  // namespace

std::vector<std::string> commandOf(std::string_view link) {
    if (link.size() > longest) refuse(link.substr(0, 40), "too long for a link");
    if (tapcore::lowercased(link.substr(0, scheme.size())) != scheme)
        refuse(link, "not a link that begins with tappora://");
    std::string_view query = link.substr(scheme.size());
    query = query.substr(0, query.find('#'));  // a place in a page, which these have not
    std::string_view name = tapcore::takePiece(query, '?');
    if (name.ends_with('/')) name.remove_suffix(1);  // as browsers write it
    const Target& target = targetNamed(link, name);
    std::vector<std::string> command = {std::string(target.name)};
    while (!query.empty()) {
        std::string_view value = tapcore::takePiece(query, '&');
        const Parameter& parameter = parameterNamed(link, target, tapcore::takePiece(value, '='));
        const auto text = decoded(value);
        if (!text || text->empty())
            refuse(link, fmt::format("{} has no value that can be read", parameter.name));
        const std::string option = fmt::format("--{}", parameter.name);
        if (std::find(command.begin(), command.end(), option) != command.end())
            refuse(link, fmt::format("{} is there twice", parameter.name));
        requireValue(parameter.value, parameter.name, *text);
        command.insert(command.end(), {option, *text});
    }
    return command;
}

}  // namespace tappora
