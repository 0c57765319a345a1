#include "core/settings/setting.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "core/foundation/alternatives.h"
#include "core/foundation/ascii.h"
#include "core/foundation/fatal.h"
#include "core/foundation/integers.h"
#include "core/foundation/json_fields.h"
#include "core/foundation/text_pieces.h"

namespace tapcore {
namespace {

using nlohmann::json;
using Type = Setting::Type;

bool isCapital(char c) { return c >= 'A' && c <= 'Z'; }

/// Whether a key is one of a family: a run of capitals stands for any text.
bool isOf(std::string_view family, std::string_view key) {
    while (!family.empty()) {
        const auto literal = static_cast<std::size_t>(
            std::find_if_not(family.begin(), family.end(), isCapital) - family.begin());
        family.remove_prefix(literal);
        if (literal > 0 && family.empty()) return !key.empty();
        if (literal > 0) key.remove_prefix(std::min(key.find(family.front(), 1), key.size()));
        if (key.empty() || key.front() != family.front()) return false;
        family.remove_prefix(1);
        key.remove_prefix(1);
    }
    return key.empty();
}

/// An integer as files may hold one: 1.0 too.
std::optional<std::int64_t> integerIn(const json& value) {
    try {
        return JsonValue(value).integer();
    } catch (const JsonError&) {
        return std::nullopt;
    }
}

/// "q Q", or "q" alone.
std::optional<json> parseKey(std::string_view text) {
    const std::string plain(takePiece(text, ' '));
    if (plain.empty() || text.find(' ') != std::string_view::npos) return std::nullopt;
    return json{{"plain", plain}, {"shifted", text}};
}

bool isKey(const json& value) {
    return value.is_object() && value.value("plain", json("")).is_string() &&
           value.value("shifted", json("")).is_string();
}

}  // namespace

std::string_view Setting::group() const { return key.substr(0, key.find('.')); }

std::string Setting::bounds() const {
    switch (type) {
        case Type::text:
            return "text";
        case Type::word:
            return alternatives(words());
        case Type::flag:
            return "true or false";
        case Type::integer:
            return "a whole number from " + std::to_string(least) +
                   (most == anyCount ? " up" : " to " + std::to_string(most));
        case Type::list:
            return "names with blanks between them";
        case Type::key:
            return "one or two texts with a blank between them";
    }
    return "";
}

bool Setting::accepts(const json& value) const {
    switch (type) {
        case Type::flag:
            return value.is_boolean();
        case Type::integer: {
            const auto number = integerIn(value);
            return number && *number >= least && *number <= most;
        }
        case Type::key:
            return isKey(value);
        case Type::text:
        case Type::list:
            return value.is_string();
        case Type::word: {
            const auto known = words();
            return value.is_string() &&
                   std::find(known.begin(), known.end(), value.get<std::string>()) != known.end();
        }
    }
    return false;
}

std::optional<json> Setting::parse(std::string_view text) const {
    std::optional<json> value = json(text);
    if (type == Type::flag) value = text == "true" ? json(true) : text == "false" ? json(false) : json();
    if (type == Type::integer) value = parseInteger(text);
    if (type == Type::key) value = parseKey(text);
    return value && accepts(*value) ? value : std::nullopt;
}

json Setting::usualValue() const { return usual.empty() ? json() : *parse(usual); }

std::string settingText(const json& value) {
    if (value.is_string()) return value.get<std::string>();
    if (!isKey(value) || !value.contains("plain")) return jsonLine(value);
    const std::string shifted = value.value("shifted", "");
    return value.value("plain", "") + (shifted.empty() ? "" : " " + shifted);
}

const Setting* findSetting(std::string_view key) {
    const auto all = allSettings();
    const auto found = std::find_if(all.begin(), all.end(), [&](const Setting& setting) {
        return setting.isFamily ? isOf(setting.key, key) : setting.key == key;
    });
    return found == all.end() ? nullptr : &*found;
}

const Setting& settingOf(std::string_view key) {
    const Setting* const found = findSetting(key);
    if (!found) fatal("no setting " + std::string(key));
    return *found;
}

}  // namespace tapcore
