#include "core/keyboard/layout.h"

#include <nlohmann/json.hpp>
#include <vector>

#include "core/foundation/fatal.h"
#include "core/foundation/integers.h"
#include "core/foundation/json_fields.h"

namespace tapcore {
namespace {

std::uint16_t keyCodeNamed(const std::string& name) {
    const auto code = parseKeyCode(name);
    if (!code) throw JsonError(name + " is not a key code");
    return *code;
}

std::vector<std::string> strings(const JsonValue& json) {
    std::vector<std::string> result;
    for (std::size_t i = 0; i < json.size(); ++i) result.push_back(json.element(i).string());
    return result;
}

Legends legendsOf(const JsonValue& json, Layout::Repeats repeats) {
    Legends legends;
    json.forEachMember([&](const std::string& name, const JsonValue& value) {
        const std::uint16_t code = keyCodeNamed(name);
        if (legends.emplace(code, strings(value)).second) return;
        const std::string message = "Duplicate values for key: '" + std::to_string(code) + "'";
        if (repeats == Layout::Repeats::fatal) fatal(message);
        json.fail(message);
    });
    return legends;
}

}  // namespace

Layout Layout::parse(std::string_view text, Repeats repeats) {
    const nlohmann::json document = JsonValue::parse(text);
    return decode(JsonValue(document), repeats);
}

Layout Layout::decode(const JsonValue& json, Repeats repeats) {
    return {.id = json.member("id").string(),
            .name = json.member("name").string(),
            .base = json.optionalMember("base", &JsonValue::string),
            .notes = json.optionalMember("notes", &JsonValue::string),
            .legends = legendsOf(json.member("legends"), repeats)};
}

nlohmann::json Layout::encoded() const {
    nlohmann::json json = {{"id", id}, {"name", name}};
    if (base) json["base"] = *base;
    if (notes) json["notes"] = *notes;
    json["legends"] = nlohmann::json::object();
    for (const auto& [code, legend] : legends) json["legends"][std::to_string(code)] = legend;
    return json;
}

std::string Layout::text() const { return jsonText(encoded()); }

}  // namespace tapcore
