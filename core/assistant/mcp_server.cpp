#include "core/assistant/mcp_server.h"

#include <algorithm>
#include <array>
#include <deque>
#include <variant>

#include "core/assistant/tool_text.h"
#include "core/foundation/characters.h"
#include "core/foundation/json_fields.h"
#include "core/foundation/raw_values.h"

namespace tapcore::mcp {
namespace {

using nlohmann::json;

constexpr RawValues<Revision, 5> revisions{
    {"2024-11-05", "2025-03-26", "2025-06-18", "2025-11-25", "2026-07-28"}};
constexpr Revision modern = Revision::r2026_07_28;
constexpr Revision newestLegacy = Revision::r2025_11_25;

constexpr const char* versionKey = "io.modelcontextprotocol/protocolVersion";
constexpr const char* capabilitiesKey = "io.modelcontextprotocol/clientCapabilities";
constexpr const char* logLevelKey = "io.modelcontextprotocol/logLevel";
constexpr const char* serverInfoKey = "io.modelcontextprotocol/serverInfo";
constexpr const char* subscriptionKey = "io.modelcontextprotocol/subscriptionId";

constexpr std::array<std::string_view, 8> logLevels = {"debug", "info",     "notice", "warning",
                                                       "error", "critical", "alert",  "emergency"};
constexpr std::int64_t builtInForMilliseconds = 3600000;

json capabilities() {
    return {{"tools", json::object()}, {"prompts", json::object()}, {"resources", json::object()}};
}

json metaOf(const json& params) {
    const json meta = params.value("_meta", json());
    return meta.is_object() ? meta : json::object();
}

/// Refuses a request that does not say what r2026_07_28 wants every request to say.
void requireModern(const json& meta) {
    const json& version = meta.at(versionKey);
    if (!version.is_string())
        throw Error(invalidParams, std::string("Invalid params: ") + versionKey + " is not a string");
    if (version != revisions.of(modern))
        throw Error(unsupportedVersion, "Unsupported protocol version",
                    {{"supported", json::array({revisions.of(modern)})}, {"requested", version}});
    if (!meta.contains(capabilitiesKey) || !meta[capabilitiesKey].is_object())
        throw Error(invalidParams,
                    std::string("Invalid params: ") + capabilitiesKey + " is missing or not an object");
    const json level = meta.value(logLevelKey, json("info"));
    if (!level.is_string() ||
        std::find(logLevels.begin(), logLevels.end(), level.get<std::string>()) == logLevels.end())
        throw Error(invalidParams, std::string("Invalid params: ") + logLevelKey + " is not a log level");
}

[[noreturn]] void failAtMethod(const std::string& method) {
    throw Error(methodNotFound, "Method not found: " + shortened(method));
}

/// The id that a notification cancels; nullptr when the value is not such a notification.
const json* cancelledID(const json& value) {
    const bool isCancel = value.is_object() && !value.contains("id") &&
                          value.value("method", json()) == "notifications/cancelled" &&
                          value.contains("params") && value["params"].is_object() &&
                          value["params"].contains("requestId") && !value["params"]["requestId"].is_null();
    return isCancel ? &value["params"]["requestId"] : nullptr;
}

/// Whether a value is the request with this id. A handshake cannot be cancelled.
bool isRequest(const json& value, const json& id) {
    return value.is_object() && value.contains("method") && value["method"] != "initialize" &&
           value.contains("id") && value["id"] == id;
}

/// Takes a request out of what waits, a batch or the request itself; true when nothing is left then.
bool withdraw(json& value, const json& id) {
    if (!value.is_array()) return isRequest(value, id);
    const auto end =
        std::remove_if(value.begin(), value.end(), [&](const json& part) { return isRequest(part, id); });
    if (end == value.end()) return false;
    value.erase(end, value.end());
    return value.empty();
}

}  // namespace

struct Server::Implementation {
    /// A line that waits: what it holds, or why it cannot be read.
    using Received = std::variant<json, Error>;

    explicit Implementation(Offer offered) : offer(std::move(offered)) {}

    Offer offer;
    std::deque<Received> waiting;
    std::optional<Revision> negotiated;  ///< by a handshake
    std::vector<json> subscriptions;     ///< the ids of those that are open

    void receive(const json& value);
    void cancel(const json& id);

    std::vector<std::string> answer(const json& value);
    json answerBatch(const json& batch);
    /// The answer to one message, or null for none. `note` is what is to be sent before it.
    json answerOne(const json& value, bool inBatch, json* note);

    json result(const Message& message, json* note);
    json initialize(const json& params);
    json legacyResult(const Message& message);
    json modernResult(const Message& message, json* note);
    json discovery() const;
    json acknowledge(const Message& message);
};

Server::Server(Offer offer) : implementation_(std::make_unique<Implementation>(std::move(offer))) {}
Server::~Server() = default;

void Server::receive(std::string_view line) {
    if (trimmedWhiteSpace(line).empty()) return;
    try {
        implementation_->receive(JsonValue::parse(line));
    } catch (const JsonError& error) {
        implementation_->waiting.emplace_back(Error(notJSON, std::string("Parse error: ") + error.what()));
    }
}

void Server::receiveTooLong() {
    implementation_->waiting.emplace_back(Error(
        invalidRequest, "Invalid request: a line of more than " + std::to_string(longestLine) + " bytes"));
}

bool Server::isIdle() const { return implementation_->waiting.empty(); }

std::vector<std::string> Server::answerNext() {
    const auto next = std::move(implementation_->waiting.front());
    implementation_->waiting.pop_front();
    if (const auto* error = std::get_if<Error>(&next)) return {jsonLine(errorAnswer(nullptr, *error))};
    return implementation_->answer(std::get<json>(next));
}

std::vector<std::string> Server::end() {
    std::vector<std::string> lines;
    for (const json& id : implementation_->subscriptions)
        lines.push_back(
            jsonLine(resultAnswer(id, {{"resultType", "complete"}, {"_meta", {{subscriptionKey, id}}}})));
    implementation_->subscriptions.clear();
    return lines;
}

void Server::Implementation::receive(const json& value) {
    const json* id = cancelledID(value);
    if (!id) waiting.emplace_back(value);
    if (id) cancel(*id);
    else if (value.is_array())
        for (const json& part : value)
            if (const json* partID = cancelledID(part)) cancel(*partID);
}

void Server::Implementation::cancel(const json& id) {
    for (auto item = waiting.begin(); item != waiting.end();) {
        json* const value = std::get_if<json>(&*item);
        item = value && withdraw(*value, id) ? waiting.erase(item) : std::next(item);
    }
    subscriptions.erase(std::remove(subscriptions.begin(), subscriptions.end(), id), subscriptions.end());
}

std::vector<std::string> Server::Implementation::answer(const json& value) {
    std::vector<std::string> lines;
    json note;
    const bool isBatch = value.is_array() && negotiated == Revision::r2025_03_26;
    const json answer = isBatch ? answerBatch(value) : answerOne(value, false, &note);
    if (!note.is_null()) lines.push_back(jsonLine(note));
    if (!answer.is_null()) lines.push_back(jsonLine(answer));
    return lines;
}

json Server::Implementation::answerBatch(const json& batch) {
    if (batch.empty()) return errorAnswer(nullptr, Error(invalidRequest, "Invalid request: an empty batch"));
    json answers = json::array();
    for (const json& value : batch)
        if (json answer = answerOne(value, true, nullptr); !answer.is_null())
            answers.push_back(std::move(answer));
    return answers.empty() ? json() : answers;
}

json Server::Implementation::answerOne(const json& value, bool inBatch, json* note) {
    json id;
    try {
        const auto message = messageOf(value, id);
        if (!message || message->isNotification()) return nullptr;
        if (inBatch && message->method == "initialize")
            throw Error(invalidRequest, "Invalid request: initialize in a batch");
        json found = result(*message, note);
        return found.is_null() ? json() : resultAnswer(id, std::move(found));
    } catch (const Error& error) {
        return errorAnswer(id, error);
    } catch (const std::exception& error) {
        return errorAnswer(id, Error(internalError, std::string("Internal error: ") + error.what()));
    }
}

json Server::Implementation::result(const Message& message, json* note) {
    if (message.method == "initialize") return initialize(message.params);
    if (metaOf(message.params).contains(versionKey)) return modernResult(message, note);
    if (message.method == "ping") return json::object();
    if (negotiated) return legacyResult(message);
    throw Error(invalidParams, std::string("Invalid params: _meta has no ") + versionKey);
}

json Server::Implementation::initialize(const json& params) {
    const std::string version = stringParam(params, "protocolVersion");
    const json client = params.value("clientInfo", json());
    if (!params.value("capabilities", json()).is_object())
        throw Error(invalidParams, "Invalid params: capabilities is missing or not an object");
    if (!client.is_object())
        throw Error(invalidParams, "Invalid params: clientInfo is missing or not an object");
    stringParam(client, "name");
    stringParam(client, "version");
    const Revision asked = revisions.find(version).value_or(newestLegacy);
    negotiated = asked == modern ? newestLegacy : asked;
    return {{"protocolVersion", revisions.of(*negotiated)},
            {"capabilities", capabilities()},
            {"serverInfo", serverInfo(offer, *negotiated)},
            {"instructions", AgentPrompt::opening()}};
}

json Server::Implementation::legacyResult(const Message& message) {
    auto found = call(offer, *negotiated, message.method, message.params);
    if (!found) failAtMethod(message.method);
    return std::move(found->value);
}

json Server::Implementation::modernResult(const Message& message, json* note) {
    requireModern(metaOf(message.params));
    if (message.method == "subscriptions/listen" && note) {
        *note = acknowledge(message);
        return nullptr;
    }
    auto found = message.method == "server/discover" ? Result{discovery(), Caching::builtIn}
                                                     : call(offer, modern, message.method, message.params);
    if (!found) failAtMethod(message.method);
    json& value = found->value;
    value["resultType"] = "complete";
    value["_meta"][serverInfoKey] = serverInfo(offer, modern);
    if (found->caching == Caching::none) return value;
    const bool isBuiltIn = found->caching == Caching::builtIn;
    value["ttlMs"] = isBuiltIn ? builtInForMilliseconds : 0;
    value["cacheScope"] = isBuiltIn ? "public" : "private";
    return value;
}

json Server::Implementation::discovery() const {
    return {{"supportedVersions", json::array({revisions.of(modern)})},
            {"capabilities", capabilities()},
            {"instructions", AgentPrompt::opening()}};
}

/// Nothing here ever changes of itself, so a subscription is granted nothing and stays open.
json Server::Implementation::acknowledge(const Message& message) {
    if (!message.params.value("notifications", json()).is_object())
        throw Error(invalidParams, "Invalid params: notifications is missing or not an object");
    subscriptions.push_back(message.id);
    return {{"jsonrpc", "2.0"},
            {"method", "notifications/subscriptions/acknowledged"},
            {"params", {{"_meta", {{subscriptionKey, message.id}}}, {"notifications", json::object()}}}};
}

}  // namespace tapcore::mcp
