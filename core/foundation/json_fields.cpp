#include "core/foundation/json_fields.h"

#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>

namespace tapcore {

using nlohmann::json;

json JsonValue::parse(std::string_view text) {
    try {
        return json::parse(text.begin(), text.end());
    } catch (const json::exception& error) {
        // "[json.exception.parse_error.101] parse error at line 1, column 4: …" without its number.
        const std::string_view what = error.what();
        const auto end = what.find("] ");
        throw JsonError(std::string(end == std::string_view::npos ? what : what.substr(end + 2)));
    }
}

void JsonValue::fail(std::string_view why) const {
    throw JsonError((place_.empty() ? "the document" : place_) + ": " + std::string(why));
}

std::string JsonValue::string() const {
    if (!value_->is_string()) fail("not a string");
    return value_->get<std::string>();
}

double JsonValue::number() const {
    if (!value_->is_number()) fail("not a number");
    return value_->get<double>();
}

std::int64_t JsonValue::integer() const {
    if (value_->is_number_unsigned()) {
        const auto value = value_->get<std::uint64_t>();
        if (value > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()))
            fail("not a 64-bit integer");
        return static_cast<std::int64_t>(value);
    }
    if (value_->is_number_integer()) return value_->get<std::int64_t>();
    if (!value_->is_number_float()) fail("not an integer");
    const double value = value_->get<double>();
    constexpr double limit = 9223372036854775808.0;  // 2 to the 63rd
    if (value != std::trunc(value) || value < -limit || value >= limit) fail("not a 64-bit integer");
    return static_cast<std::int64_t>(value);
}

bool JsonValue::boolean() const {
    if (!value_->is_boolean()) fail("not true or false");
    return value_->get<bool>();
}

std::optional<JsonValue> JsonValue::optionalMember(std::string_view name) const {
    if (!value_->is_object()) fail("not an object");
    const auto found = value_->find(name);
    if (found == value_->end() || found->is_null()) return std::nullopt;
    return JsonValue(*found, place_.empty() ? std::string(name) : place_ + "." + std::string(name));
}

JsonValue JsonValue::member(std::string_view name) const {
    auto found = optionalMember(name);
    if (!found) fail("\"" + std::string(name) + "\" is missing");
    return *found;
}

std::size_t JsonValue::size() const {
    if (!value_->is_array()) fail("not an array");
    return value_->size();
}

JsonValue JsonValue::element(std::size_t index) const {
    if (index >= size()) fail("has too few elements");
    return JsonValue((*value_)[index], place_ + "[" + std::to_string(index) + "]");
}

std::vector<std::string> JsonValue::memberNames() const {
    if (!value_->is_object()) fail("not an object");
    std::vector<std::string> names;
    for (auto item = value_->begin(); item != value_->end(); ++item) names.push_back(item.key());
    return names;
}

}  // namespace tapcore
