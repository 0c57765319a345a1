#include "core/foundation/json_once.h"

#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

#include "core/foundation/json_fields.h"

namespace tapcore {

void requireEachOnce(std::string_view text) {
    using nlohmann::json;
    (void)JsonValue::parse(text);  // says where it is not JSON, and refuses what is too deep
    std::vector<std::set<std::string>> open;
    const auto note = [&](int, json::parse_event_t event, const json& value) {
        if (event == json::parse_event_t::object_start) open.emplace_back();
        if (event == json::parse_event_t::object_end) open.pop_back();
        if (event == json::parse_event_t::key && !open.back().insert(value.get<std::string>()).second)
            throw JsonError(value.get<std::string>() + ": set twice");
        return true;
    };
    const json seen = json::parse(text, note);
}

}  // namespace tapcore
