#include "app/ask/provider_client.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <thread>

#include "app/ask/retry.h"
#include "app/common/program.h"
#include "core/foundation/json_fields.h"

namespace tappora {
namespace {

using nlohmann::json;
namespace wire = tapcore::AssistantWire;

constexpr std::string_view blankedKey = "(your key)";

std::string without(std::string text, const std::string& secret) {
    if (secret.empty()) return text;
    for (auto at = text.find(secret); at != std::string::npos; at = text.find(secret, at + blankedKey.size()))
        text.replace(at, secret.size(), blankedKey);
    return text;
}

wire::Headers keyHeaders(const ProviderAccess& access, const std::string& model) {
    if (access.provider == Provider::claude) return wire::claudeHeaders(access.key, model);
    if (access.key.empty()) return {};
    return {{"authorization", "Bearer " + access.key}};
}

/// A body that need not be JSON, and then says nothing.
json parsed(const std::string& body) { return tapcore::JsonValue::tryParse(body).value_or(json()); }

}  // namespace

HttpRequest ProviderAccess::question(const std::string& model, const json& body) const {
    const char* const path = provider == Provider::claude ? "/messages" : "/chat/completions";
    return {addressUnder(base, path), keyHeaders(*this, model), tapcore::jsonLine(body)};
}

HttpRequest ProviderAccess::modelListing() const {
    return {addressUnder(base, "/models"), keyHeaders(*this, ""), std::nullopt};
}

std::string ProviderAccess::shown(const HttpRequest& request) const {
    std::string text = (request.body ? "POST " : "GET ") + shownAddress(request.url) + "\n";
    for (const auto& [name, value] : request.headers) text += name + ": " + without(value, key) + "\n";
    if (request.body) text += "content-type: application/json\n\n" + *request.body + "\n";
    return text;
}

json ProviderClient::exchange(const HttpRequest& request) const {
    const HttpReply reply = sendTwice(request);
    const bool isFine = reply.status >= 200 && reply.status < 300;
    if (!isFine) throw Refused(explanation(reply), reply.body);
    json body = tapcore::JsonValue::parse(reply.body);
    // Some servers tell a failure with the status of a success.
    if (wire::problemMessage(body)) throw Refused(explanation(reply), reply.body);
    return body;
}

std::string ProviderClient::explanation(const HttpReply& reply) const {
    if (const auto key = wire::problemKey(reply.status)) return words_.text(*key);
    if (const auto message = wire::problemMessage(parsed(reply.body))) return without(*message, access_.key);
    return "HTTP status " + std::to_string(reply.status);
}

std::vector<std::string> ProviderClient::models() const {
    if (access_.provider == Provider::claude) {
        std::vector<std::string> ids;
        for (const auto& model : wire::claudeModels) ids.emplace_back(model.id);
        return ids;
    }
    const json listing = exchange(access_.modelListing());
    return access_.provider == Provider::openai ? wire::openaiChatModels(listing) : wire::modelIDs(listing);
}

HttpReply ProviderClient::sendTwice(const HttpRequest& request) const {
    HttpReply reply = send(request, limits_, isStopped_);
    const auto now = std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
    const auto delay = retryDelay(access_.provider, reply, now);
    if (!delay) return reply;
    wait(*delay);
    return send(request, limits_, isStopped_);
}

void ProviderClient::goOn() const {
    if (isStopped_()) throw Stopped();
}

void ProviderClient::wait(std::chrono::milliseconds delay) const {
    const auto end = std::chrono::steady_clock::now() + delay;
    if (delay >= std::chrono::seconds(3))
        complain("ask: the provider asks to wait " + std::to_string(delay.count() / 1000) + " seconds");
    while (std::chrono::steady_clock::now() < end) {
        goOn();
        std::this_thread::sleep_for(std::min(delay, std::chrono::milliseconds(50)));
    }
}

}  // namespace tappora
