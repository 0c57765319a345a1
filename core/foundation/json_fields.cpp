#include "core/foundation/json_fields.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>

#include "core/foundation/characters.h"
#include "core/foundation/text_pieces.h"
#include "core/foundation/utf8.h"

namespace tapcore {

using nlohmann::json;

namespace {

constexpr std::size_t deepest = 500;

/// Text from a file, short enough for a message and fit to print.
std::string excerpt(std::string_view text, std::size_t limit = 200) {
    const std::string whole = repairedUtf8(text.substr(0, limit * 8));
    const std::string_view start = firstCharacters(whole, limit);
    return std::string(start).append(start.size() < text.size() ? "…" : "");
}

/// Where an array or object opens that is nested too deep, or npos.
std::size_t tooDeep(std::string_view text) {
    std::size_t depth = 0;
    bool inString = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '"') inString = !inString;
        if (inString && c == '\\') ++i;
        if (inString) continue;
        if ((c == '[' || c == '{') && ++depth > deepest) return i;
        if ((c == ']' || c == '}') && depth > 0) --depth;
    }
    return std::string_view::npos;
}

void refuseDepth(std::string_view text) {
    const std::size_t at = tooDeep(text);
    if (at == std::string_view::npos) return;
    throw JsonError("nested more than " + std::to_string(deepest) + " deep at " + placeIn(text, at));
}

/// The parser takes a NUL for the end, whatever follows it.
void refuseNul(std::string_view text) {
    const std::size_t at = text.find('\0');
    if (at != std::string_view::npos) throw JsonError("a NUL at " + placeIn(text, at));
}

/// "[json.exception.parse_error.101] parse error at line 1, column 4: …" without its number, and with the
/// column in characters, where the parser counts bytes.
std::string explained(const json::parse_error& error, std::string_view text) {
    const std::string_view what = error.what();
    const std::size_t place = what.find("] parse error at ");
    const std::size_t why = what.find(": ", place);
    if (place == std::string_view::npos || why == std::string_view::npos) return excerpt(what);
    const std::size_t at = std::max<std::size_t>(error.byte, 1) - 1;
    return "parse error at " + placeIn(text, at) + excerpt(what.substr(why));
}

/// A JsonError about a value that is not what was wanted, which it shows.
[[noreturn]] void failAt(const JsonValue& value, std::string_view why) {
    constexpr std::size_t limit = 40;
    value.fail(std::string(why) + ": " + excerpt(jsonLine(value.raw()), limit));
}

constexpr std::size_t widestLine = 100;

bool holdsList(const json& value) {
    return std::any_of(value.begin(), value.end(), [](const json& inner) {
        return inner.is_array() || (inner.is_object() && holdsList(inner));
    });
}

/// Appends a value behind `indent` columns; `isRow` is one that is an element of a list.
void appendText(std::string& text, const json& value, std::size_t indent, bool isRow) {
    const std::string line = jsonLine(value);
    if (!value.is_structured() || indent + line.size() <= widestLine || (isRow && !holdsList(value))) {
        text += line;
        return;
    }
    const bool isObject = value.is_object();
    text += isObject ? '{' : '[';
    for (auto item = value.begin(); item != value.end(); ++item) {
        text.append(item == value.begin() ? "\n" : ",\n").append(indent + 2, ' ');
        if (isObject) text.append(jsonLine(item.key())).append(": ");
        appendText(text, *item, indent + 2, !isObject);
    }
    text.append("\n").append(indent, ' ') += isObject ? '}' : ']';
}

}  // namespace

std::string jsonLine(const json& value) { return value.dump(-1, ' ', false, json::error_handler_t::replace); }

json JsonValue::parse(std::string_view text) {
    refuseDepth(text);
    try {
        json document = json::parse(text.begin(), text.end());
        refuseNul(text);
        return document;
    } catch (const json::parse_error& error) {
        throw JsonError(explained(error, text));
    } catch (const json::exception& error) {
        throw JsonError(excerpt(error.what()));
    }
}

std::optional<json> JsonValue::tryParse(std::string_view text) {
    try {
        return parse(text);
    } catch (const JsonError&) {
        return std::nullopt;
    }
}

void JsonValue::fail(std::string_view why) const {
    throw JsonError((place_.empty() ? "the document" : place_) + ": " + std::string(why));
}

std::string JsonValue::string() const {
    if (!value_->is_string()) failAt(*this, "not a string");
    return value_->get<std::string>();
}

double JsonValue::number() const {
    if (!value_->is_number()) failAt(*this, "not a number");
    return value_->get<double>();
}

std::int64_t JsonValue::integer() const {
    if (value_->is_number_unsigned()) {
        const auto value = value_->get<std::uint64_t>();
        if (value > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()))
            failAt(*this, "not a 64-bit integer");
        return static_cast<std::int64_t>(value);
    }
    if (value_->is_number_integer()) return value_->get<std::int64_t>();
    if (!value_->is_number_float()) failAt(*this, "not an integer");
    const double value = value_->get<double>();
    constexpr double limit = 9223372036854775808.0;  // 2 to the 63rd
    // At the limit itself the double means many integers, of which all but one are too small.
    if (value != std::trunc(value) || value <= -limit || value >= limit)
        failAt(*this, "not a 64-bit integer");
    return static_cast<std::int64_t>(value);
}

bool JsonValue::boolean() const {
    if (!value_->is_boolean()) failAt(*this, "not true or false");
    return value_->get<bool>();
}

std::optional<JsonValue> JsonValue::optionalMember(std::string_view name) const {
    if (!value_->is_object()) failAt(*this, "not an object");
    const auto found = value_->find(name);
    if (found == value_->end() || found->is_null()) return std::nullopt;
    return at(name, *found);
}

JsonValue JsonValue::at(std::string_view name, const json& value) const {
    return JsonValue(value, place_.empty() ? std::string(name) : place_ + "." + std::string(name));
}

JsonValue JsonValue::member(std::string_view name) const {
    auto found = optionalMember(name);
    if (!found) fail("\"" + std::string(name) + "\" is missing");
    return *found;
}

std::size_t JsonValue::size() const {
    if (!value_->is_array()) failAt(*this, "not an array");
    return value_->size();
}

JsonValue JsonValue::element(std::size_t index) const {
    if (index >= size()) fail("has too few elements");
    return JsonValue((*value_)[index], place_ + "[" + std::to_string(index) + "]");
}

std::vector<std::pair<std::string, JsonValue>> JsonValue::members() const {
    if (!value_->is_object()) failAt(*this, "not an object");
    std::vector<std::pair<std::string, JsonValue>> members;
    members.reserve(value_->size());
    for (auto item = value_->begin(); item != value_->end(); ++item)
        members.emplace_back(item.key(), at(item.key(), *item));
    return members;
}

void JsonValue::failAtUnknownWord() const { fail("unknown word \"" + excerpt(string()) + "\""); }

std::string jsonText(const json& document) {
    std::string text;
    appendText(text, document, 0, false);
    return text + "\n";
}

std::string indentedJson(const json& document) {
    return document.dump(2, ' ', false, json::error_handler_t::replace) + "\n";
}

}  // namespace tapcore
