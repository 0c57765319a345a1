#include "app/common/keyboard/xkb_setting.h"

#include <algorithm>

#include "core/foundation/characters.h"

namespace tappora {
namespace {

using tapcore::trimmedWhiteSpace;

std::string firstOf(std::string_view list) {
    return std::string(trimmedWhiteSpace(list.substr(0, list.find(','))));
}

/// The value that a text starts with, without what may follow it, such as a comment.
std::string_view unquoted(std::string_view text) {
    text = trimmedWhiteSpace(text);
    const bool isQuoted = text.starts_with('"') || text.starts_with('\'');
    if (!isQuoted) return text.substr(0, text.find_first_of(" \t#"));
    const auto end = text.find(text.front(), 1);
    return text.substr(1, end == std::string_view::npos ? end : end - 1);
}

/// The part of a line behind its first word, when that is `name`: the word ends at `separator`.
std::optional<std::string_view> valueIn(std::string_view line, std::string_view name, char separator) {
    const auto end = line.find(separator);
    if (end == std::string_view::npos || trimmedWhiteSpace(line.substr(0, end)) != name) return std::nullopt;
    return unquoted(line.substr(end + 1));
}

/// The value of a name in a text of lines; the last one counts, "" when it has none.
std::string_view valueOf(std::string_view text, std::string_view name, char separator) {
    std::string_view value;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        value = valueIn(line, name, separator).value_or(value);
        text.remove_prefix(std::min(line.size() + 1, text.size()));
    }
    return value;
}

/// The value of Xorg's option, whose line is `Option "NAME" "VALUE"`; "" when it has none.
std::string_view xorgOption(std::string_view text, std::string_view name) {
    const std::string quoted = '"' + std::string(name) + '"';
    const auto at = text.find(quoted);
    if (at == std::string_view::npos) return "";
    const std::string_view rest = text.substr(at + quoted.size());
    return unquoted(rest.substr(0, rest.find('\n')));
}

/// "us+dvorak" or "us(dvorak)".
XkbLayout split(std::string_view name) {
    const auto end = name.find_first_of("+(");
    if (end == std::string_view::npos) return {std::string(name)};
    std::string_view variant = name.substr(end + 1);
    if (variant.ends_with(')')) variant.remove_suffix(1);
    return {std::string(name.substr(0, end)), std::string(variant)};
}

}  // namespace

std::optional<XkbLayout> firstXkbLayout(std::string_view layouts, std::string_view variants) {
    XkbLayout first = split(firstOf(layouts));
    if (first.layout.empty()) return std::nullopt;
    if (first.variant.empty()) first.variant = firstOf(variants);
    return first;
}

std::optional<XkbLayout> xkbFromAssignments(std::string_view text, std::string_view layoutName,
                                            std::string_view variantName) {
    return firstXkbLayout(valueOf(text, layoutName, '='), valueOf(text, variantName, '='));
}

std::optional<XkbLayout> xkbFromXorg(std::string_view text) {
    return firstXkbLayout(xorgOption(text, "XkbLayout"), xorgOption(text, "XkbVariant"));
}

std::optional<XkbLayout> xkbFromQuery(std::string_view text) {
    return firstXkbLayout(valueOf(text, "layout", ':'), valueOf(text, "variant", ':'));
}

std::optional<XkbLayout> xkbFromInputSources(std::string_view text) {
    constexpr std::string_view start = "('xkb', '";
    const auto at = text.find(start);
    if (at == std::string_view::npos) return std::nullopt;
    const std::string_view name = text.substr(at + start.size());
    return firstXkbLayout(name.substr(0, name.find('\'')), "");
}

}  // namespace tappora
