#include "app/ask/provider_access.h"

#include <sys/stat.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <thread>

#include "app/ask/retry.h"
#include "app/common/folder/settings.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "core/foundation/characters.h"
#include "core/foundation/file_io.h"
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

/// A key as a file or the environment holds it. Whatever could end a header line is refused.
std::string soundKey(std::string_view what, std::string_view text) {
    const std::string_view key = tapcore::trimmedWhiteSpace(text);
    const bool isSound =
        !key.empty() && std::all_of(key.begin(), key.end(), [](char c) { return c > ' ' && c < '\x7F'; });
    if (!isSound) throw Failure(what, "holds no key");
    return std::string(key);
}

void requirePrivate(const std::filesystem::path& file) {
    struct stat status {};
    if (::stat(file.c_str(), &status) == 0 && (status.st_mode & (S_IRWXG | S_IRWXO)) != 0)
        throw Failure(file.string(), "others can read this key; make it yours alone with chmod 600");
}

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

json ProviderLine::exchange(const HttpRequest& request) const {
    const HttpReply reply = sendTwice(request);
    const bool isFine = reply.status >= 200 && reply.status < 300;
    if (!isFine) throw Refused(explanation(reply), reply.body);
    json body = tapcore::JsonValue::parse(reply.body);
    // Some servers tell a failure with the status of a success.
    if (wire::problemMessage(body)) throw Refused(explanation(reply), reply.body);
    return body;
}

std::string ProviderLine::explanation(const HttpReply& reply) const {
    if (const auto key = wire::problemKey(reply.status)) return words_.text(*key);
    if (const auto message = wire::problemMessage(parsed(reply.body))) return without(*message, access_.key);
    return "HTTP status " + std::to_string(reply.status);
}

std::vector<std::string> ProviderLine::models() const {
    if (access_.provider == Provider::claude) {
        std::vector<std::string> ids;
        for (const auto& model : wire::claudeModels) ids.emplace_back(model.id);
        return ids;
    }
    const json listing = exchange(access_.modelListing());
    return access_.provider == Provider::openai ? wire::openaiChatModels(listing) : wire::modelIDs(listing);
}

HttpReply ProviderLine::sendTwice(const HttpRequest& request) const {
    HttpReply reply = send(request, limits_, isStopped_);
    const auto now = std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
    const auto delay = retryDelay(access_.provider, reply, now);
    if (!delay) return reply;
    wait(*delay);
    return send(request, limits_, isStopped_);
}

void ProviderLine::goOn() const {
    if (isStopped_()) throw Stopped();
}

void ProviderLine::wait(std::chrono::milliseconds delay) const {
    const auto end = std::chrono::steady_clock::now() + delay;
    if (delay >= std::chrono::seconds(3))
        complain("ask: the provider asks to wait " + std::to_string(delay.count() / 1000) + " seconds");
    while (std::chrono::steady_clock::now() < end) {
        goOn();
        std::this_thread::sleep_for(std::min(delay, std::chrono::milliseconds(50)));
    }
}

std::optional<std::string> findKey(Provider provider, const Environment& environment) {
    const bool isClaude = provider == Provider::claude;
    const char* const variable = isClaude ? "ANTHROPIC_API_KEY" : "OPENAI_API_KEY";
    const auto value = environment.variable(variable);
    if (value && !value->empty()) return soundKey(variable, *value);
    const auto file = Settings::url(environment).parent_path() / (isClaude ? "claude.key" : "openai.key");
    const auto read = tapcore::readStoredFile(file);
    if (read.status == tapcore::FileRead::Status::missing) return std::nullopt;
    if (read.status == tapcore::FileRead::Status::unreadable)
        throw Failure(file.string(), read.error.message());
    requirePrivate(file);
    return soundKey(file.string(), read.text);
}

std::vector<std::string> findLocalServers(const std::optional<std::string>& model,
                                          const std::function<bool()>& isStopped) {
    const HttpLimits quick = {.connect = std::chrono::milliseconds(500), .total = std::chrono::seconds(3)};
    std::vector<std::string> fitting;
    std::vector<std::string> others;
    for (const std::string_view address : wire::localAddresses) {
        const ProviderAccess access{Provider::local, std::string(address), ""};
        try {
            const json listing = parsed(send(access.modelListing(), quick, isStopped).body);
            if (!listing.contains("data")) continue;  // something else answers there
            const auto models = wire::modelIDs(listing);
            const bool fits =
                model ? std::find(models.begin(), models.end(), *model) != models.end() : !models.empty();
            (fits ? fitting : others).push_back(access.base);
        } catch (const HttpError&) {
            continue;  // nobody there
        }
    }
    fitting.insert(fitting.end(), others.begin(), others.end());
    return fitting;
}

}  // namespace tappora
