#include "core/assistant/assistant_wire.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <set>

#include "core/foundation/ascii.h"
#include "core/foundation/json_fields.h"

namespace tapcore::AssistantWire {
namespace {

using nlohmann::json;

/// What a model that cannot hold a conversation in text has in its id.
constexpr std::array<std::string_view, 9> otherModels = {
    "audio", "realtime", "image", "transcribe", "embedding", "search", "instruct", "moderation", "codex"};

bool isChatModel(std::string_view id) {
    const bool isReasoning = id.size() > 1 && id[0] == 'o' && isDigit(id[1]);
    return (id.starts_with("gpt-") || isReasoning) &&
           std::none_of(otherModels.begin(), otherModels.end(),
                        [&](std::string_view part) { return id.find(part) != std::string_view::npos; });
}

/// The entries of a model listing that have an id; some servers write null for none.
std::vector<json> listed(const json& listing) {
    std::vector<json> models;
    if (!listing.is_object() || !listing.contains("data")) return models;
    for (const json& model : listing["data"])
        if (model.is_object() && model.contains("id") && model["id"].is_string()) models.push_back(model);
    return models;
}

std::int64_t created(const json& model) {
    const auto found = model.find("created");
    return found != model.end() && found->is_number_integer() ? found->get<std::int64_t>() : 0;
}

json functionTool(const AssistantTools::Spec& tool) {
    return {
        {"type", "function"},
        {"function", {{"name", tool.name}, {"description", tool.description}, {"parameters", schema(tool)}}}};
}

}  // namespace

Headers claudeHeaders(std::string_view key, std::string_view model) {
    Headers headers = {{"x-api-key", std::string(key)}, {"anthropic-version", std::string(anthropicVersion)}};
    if (usesFallbacks(model)) headers["anthropic-beta"] = fallbackBeta;
    return headers;
}

json schema(const AssistantTools::Spec& tool) {
    json properties = json::object();
    for (const auto& [name, description] : tool.properties)
        properties[name] = {{"type", "string"}, {"description", description}};
    return {{"type", "object"},
            {"properties", properties},
            {"required", tool.required},
            {"additionalProperties", false}};
}

json claudeBody(std::string_view model, std::string_view system,
                const std::vector<AssistantTools::Spec>& tools, const json& messages, bool effort,
                bool fallbacks) {
    json body = {
        {"model", model}, {"max_tokens", maxAnswerTokens}, {"messages", messages}, {"tools", json::array()}};
    // The mark keeps the long prompt, and the tools before it, in the provider's cache between the steps of a
    // question.
    body["system"] =
        json::array({{{"type", "text"}, {"text", system}, {"cache_control", {{"type", "ephemeral"}}}}});
    for (const auto& tool : tools)
        body["tools"].push_back(
            {{"name", tool.name}, {"description", tool.description}, {"input_schema", schema(tool)}});
    if (effort) body["output_config"] = {{"effort", "medium"}};
    if (fallbacks) body["fallbacks"] = json::array({{{"model", fallbackModel}}});
    return body;
}

json chatBody(std::string_view model, std::string_view system, const std::vector<AssistantTools::Spec>& tools,
              const json& messages) {
    json body = {{"model", model}, {"messages", messages}};
    if (!system.empty())
        body["messages"].insert(body["messages"].begin(), json{{"role", "system"}, {"content", system}});
    if (!tools.empty())
        for (const auto& tool : tools) body["tools"].push_back(functionTool(tool));
    return body;
}

json history(const std::vector<ChatFile::Turn>& turns) {
    json messages = json::array();
    for (const ChatFile::Turn& turn : turns)
        messages.push_back({{"role", ChatFile::roles.of(turn.role)}, {"content", turn.text}});
    return messages;
}

json sendable(const json& messages) {
    json sent = json::array();
    for (const json& message : messages) {
        const auto& text = message["content"].get_ref<const std::string&>();
        const bool isAnswer = message["role"] == ChatFile::roles.of(ChatFile::Role::assistant);
        if (text.empty() || (sent.empty() && isAnswer)) continue;
        if (!sent.empty() && sent.back()["role"] == message["role"])
            sent.back()["content"].get_ref<std::string&>().append("\n\n").append(text);
        else sent.push_back(message);
    }
    return sent;
}

std::optional<json> argumentsObject(const json& arguments) {
    if (arguments.is_object()) return arguments;
    if (arguments.is_null()) return json::object();
    if (!arguments.is_string()) return std::nullopt;
    const auto& text = arguments.get_ref<const std::string&>();
    if (text.empty()) return json::object();
    const auto parsed = JsonValue::tryParse(text);
    return parsed && parsed->is_object() ? parsed : std::nullopt;
}

std::map<std::string, std::string> arguments(const json& arguments) {
    std::map<std::string, std::string> strings;
    const json object = argumentsObject(arguments).value_or(json::object());
    for (const auto& [name, value] : object.items())
        if (value.is_string()) strings[name] = value.get<std::string>();
    return strings;
}

std::vector<std::string> modelIDs(const json& listing) {
    std::vector<std::string> ids;
    for (const json& model : listed(listing)) ids.push_back(model["id"].get<std::string>());
    return unique(ids);
}

std::vector<std::string> openaiChatModels(const json& listing) {
    std::vector<json> models = listed(listing);
    std::stable_sort(models.begin(), models.end(),
                     [](const json& a, const json& b) { return created(a) > created(b); });
    std::vector<std::string> ids;
    for (const json& model : models)
        if (isChatModel(model["id"].get_ref<const std::string&>()))
            ids.push_back(model["id"].get<std::string>());
    return unique(ids);
}

std::vector<std::string> unique(const std::vector<std::string>& list) {
    std::vector<std::string> first;
    std::set<std::string_view> seen;
    std::copy_if(list.begin(), list.end(), std::back_inserter(first),
                 [&](const std::string& item) { return seen.insert(item).second; });
    return first;
}

std::optional<std::string_view> problemKey(int status) {
    if (status == 401 || status == 403) return "ai.error.key";
    if (status == 429) return "ai.error.rate";
    if (status >= 500 && status <= 599) return "ai.error.busy";
    return std::nullopt;
}

std::optional<std::string> problemMessage(const json& body) {
    if (!body.is_object() || !body.contains("error")) return std::nullopt;
    const json& error = body["error"];
    if (error.is_string()) return error.get<std::string>();
    if (error.is_object() && error.contains("message") && error["message"].is_string())
        return error["message"].get<std::string>();
    return std::nullopt;
}

bool usesFallbacks(std::string_view model) { return model == "claude-opus-5" || model == "claude-fable-5-1"; }

bool takesEffort(std::string_view model) { return model.find("haiku") == std::string_view::npos; }

}  // namespace tapcore::AssistantWire
