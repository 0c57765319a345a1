#include "core/assistant/mcp_message.h"

#include <cmath>

namespace tapcore::mcp {
namespace {

using nlohmann::json;

bool isID(const json& value) {
    return value.is_string() || value.is_number_integer() ||
           (value.is_number_float() && std::trunc(value.get<double>()) == value.get<double>());
}

bool hasString(const json& object, const char* name) {
    return object.contains(name) && object[name].is_string();
}

}  // namespace

std::optional<Message> messageOf(const json& value, json& id) {
    if (!value.is_object()) throw Error(invalidRequest, "Invalid request: not an object");
    const bool hasMethod = hasString(value, "method");
    if (!hasMethod && (value.contains("result") || value.contains("error"))) return std::nullopt;
    if (hasMethod && !value.contains("id")) {
        const bool isSound = value.value("jsonrpc", json()) == "2.0";
        return isSound ? std::optional(Message{nullptr, value["method"], value.value("params", json())})
                       : std::nullopt;
    }
    if (value.contains("id") && !isID(value["id"]))
        throw Error(invalidRequest, "Invalid request: id is not a string or an integer");
    id = value.value("id", json());
    if (value.value("jsonrpc", json()) != "2.0")
        throw Error(invalidRequest, "Invalid request: jsonrpc is not \"2.0\"");
    if (!hasMethod) throw Error(invalidRequest, "Invalid request: method is missing or not a string");
    json params = value.value("params", json::object());
    if (!params.is_object()) throw Error(invalidParams, "Invalid params: not an object");
    return Message{id, value["method"], std::move(params)};
}

json resultAnswer(const json& id, json result) {
    return {{"jsonrpc", "2.0"}, {"id", id}, {"result", std::move(result)}};
}

json errorAnswer(const json& id, const Error& error) {
    json answer = {{"jsonrpc", "2.0"}, {"error", {{"code", error.code}, {"message", error.what()}}}};
    if (!error.data.is_null()) answer["error"]["data"] = error.data;
    if (!id.is_null()) answer["id"] = id;
    return answer;
}

}  // namespace tapcore::mcp
