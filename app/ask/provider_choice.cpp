#include "app/ask/provider_choice.h"

#include <fmt/format.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "app/common/folder/settings.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/common/system/file_text.h"
#include "core/foundation/characters.h"
#include "core/foundation/file_io.h"
#include "core/foundation/json_fields.h"
#include "core/settings/setting.h"

namespace tappora {
namespace {

using nlohmann::json;
namespace wire = tapcore::AssistantWire;

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

/// The key of a provider: from the environment (ANTHROPIC_API_KEY, OPENAI_API_KEY), else from the file
/// claude.key or openai.key beside the settings, which nobody else may be able to read. Failure when others
/// can.
std::optional<std::string> findKey(Provider provider, const Environment& environment) {
    const bool isClaude = provider == Provider::claude;
    const char* const variable = isClaude ? "ANTHROPIC_API_KEY" : "OPENAI_API_KEY";
    const auto value = environment.variable(variable);
    if (value && !value->empty()) return soundKey(variable, *value);
    const auto file = Settings::url(environment).parent_path() / (isClaude ? "claude.key" : "openai.key");
    const auto text = optionalText(file, tapcore::readStoredFile(file));
    if (!text) return std::nullopt;
    requirePrivate(file);
    return soundKey(file.string(), *text);
}

/// The addresses of the servers found on this machine: first those that list `model`, or any model when none
/// is named, each kind in the order of `AssistantWire::localAddresses`.
std::vector<std::string> findLocalServers(const std::optional<std::string>& model,
                                          const std::function<bool()>& isStopped) {
    const HttpLimits quick = {.connect = std::chrono::milliseconds(500), .total = std::chrono::seconds(3)};
    std::vector<std::string> fitting;
    std::vector<std::string> others;
    for (const std::string_view address : wire::localAddresses) {
        const ProviderAccess access{Provider::local, std::string(address), ""};
        try {
            const std::string reply = send(access.modelListing(), quick, isStopped).body;
            const json listing = tapcore::JsonValue::tryParse(reply).value_or(json());
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

Provider parseProvider(const std::string& name) {
    const auto provider = wire::providers.find(name);
    if (!provider)
        throw UsageError("--provider: " +
                         noSuch("provider", name, tapcore::settingOf("ai.provider").words()));
    if (provider == Provider::apple)
        throw Failure("--provider apple", "the system's own model is not available here");
    return *provider;
}

ProviderAccess withKey(Provider provider, const AskOptions& options, const Environment& environment) {
    const std::string_view usual = provider == Provider::claude ? wire::anthropicURL : wire::openaiURL;
    const auto key = findKey(provider, environment);
    if (!key && !options.shows)
        throw Failure(wire::providers.of(provider),
                      fmt::format("no key; set {} or put it into {}.key beside the settings",
                                  provider == Provider::claude ? "ANTHROPIC_API_KEY" : "OPENAI_API_KEY",
                                  wire::providers.of(provider)));
    return {provider, options.url.value_or(std::string(usual)), key.value_or("none")};
}

std::vector<ProviderAccess> foundHere(const AskOptions& options, const std::function<bool()>& isStopped) {
    std::vector<ProviderAccess> found;
    for (std::string& address : findLocalServers(options.model, isStopped))
        found.push_back({Provider::local, std::move(address), ""});
    return found;
}

std::vector<ProviderAccess> local(const AskOptions& options, bool looksAround,
                                  const std::function<bool()>& isStopped) {
    if (options.url || !looksAround)
        return {{Provider::local, options.url.value_or(std::string(wire::localAddresses[0])), ""}};
    auto found = foundHere(options, isStopped);
    if (found.empty())
        throw Failure("local", "no server answers on port 11434, 1234 or 8080; name one with --url");
    return found;
}

}  // namespace

std::vector<ProviderAccess> chooseProviders(const AskOptions& options, const Environment& environment,
                                            bool looksAround, const std::function<bool()>& isStopped) {
    if (options.provider) {
        const Provider provider = parseProvider(*options.provider);
        if (provider == Provider::local) return local(options, looksAround, isStopped);
        return {withKey(provider, options, environment)};
    }
    if (options.url) throw UsageError("--url: needs --provider, since addresses do not say whose they are");
    for (const Provider provider : {Provider::claude, Provider::openai})
        if (findKey(provider, environment)) return {withKey(provider, options, environment)};
    if (looksAround)
        if (auto found = foundHere(options, isStopped); !found.empty()) return found;
    throw Failure("ask",
                  "no provider: set ANTHROPIC_API_KEY or OPENAI_API_KEY, or start a server on port 11434, "
                  "1234 or 8080");
}

}  // namespace tappora
