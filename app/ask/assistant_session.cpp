#include "app/ask/assistant_session.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "app/common/harmless_text.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "core/assistant/tool_text.h"
#include "core/foundation/characters.h"

namespace tappora {
namespace {

namespace wire = tapcore::AssistantWire;
using Turns = std::vector<tapcore::ChatFile::Turn>;

Provider parseProvider(const std::string& name) {
    const auto provider = wire::providers.find(name);
    if (!provider) throw UsageError("--provider: " + noSuch("provider", name, {"claude", "openai", "local"}));
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

void printCall(const tapcore::ToolCall& call, const tapcore::AssistantTools::Output& output) {
    std::string text = call.name;
    for (const auto& [name, value] : call.arguments) text += fmt::format(" {}={}", name, value);
    complain(fmt::format("{}: {} characters{}", harmlessLine(tapcore::shortened(text)),
                         tapcore::characterCount(output.text), output.isError ? ", an error" : ""));
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

AssistantSession::AssistantSession(const AskOptions& options, const Environment& environment)
    : options_(options),
      environment_(environment),
      store_(openStore(options.folder, environment)),
      keyboard_(AssistantKeyboard::of({}, environment, store_)) {}

std::unique_ptr<tapcore::Dialogue> AssistantSession::dialogue(Provider provider, const std::string& model,
                                                              const Turns& turns) const {
    const tapcore::Day day = currentDay();
    tapcore::DialogueStart start{model, assistantPrompt(store_, keyboard_, options_.language).inApp(day),
                                 assistantTools(store_, keyboard_, day).specs(), turns};
    return provider == Provider::claude ? tapcore::Dialogue::claude(std::move(start))
                                        : tapcore::Dialogue::chat(std::move(start));
}

/// A conversation may last over midnight.
tapcore::Day AssistantSession::currentDay() const {
    const Environment current = atThisMoment(environment_);
    return today(options_.folder, current, current.calendar);
}

void AssistantSession::show(const ProviderAccess& access, const std::string& model,
                            const Turns& turns) const {
    const std::string text =
        access.shown(access.question(model, dialogue(access.provider, model, turns)->request()));
    print(environment_.onTerminal ? harmless(text) : text);
}

Answer AssistantSession::ask(const ProviderLine& line, const std::string& model, const Turns& turns) const {
    const auto put = dialogue(line.access().provider, model, turns);
    const auto send = [&](const nlohmann::json& body) {
        return line.exchange(line.access().question(model, body));
    };
    const auto onCall = [&](const tapcore::ToolCall& call, const tapcore::AssistantTools::Output& output) {
        if (options_.showsTools) printCall(call, output);
        line.goOn();
    };
    return putQuestion(*put, assistantTools(store_, keyboard_, currentDay()), line.access().isPaid(), send,
                       onCall);
}

void AssistantSession::keep(const std::string& question, const Answer& answer) const {
    const LockedStore locked(options_.folder, environment_);
    const tapcore::Store& own = locked.store;
    tapcore::ChatFile chat = own.readChat();
    chat.turns.push_back({tapcore::ChatFile::Role::user, question, {}});
    chat.turns.push_back({tapcore::ChatFile::Role::assistant, answer.text, answer.read});
    own.writeChat(chat);
}

tapcore::ChatFile AssistantSession::conversation() const {
    return LockedStore(options_.folder, environment_).store.readChat();
}

void AssistantSession::shelve() const {
    const LockedStore own(options_.folder, environment_);
    const Environment current = atThisMoment(environment_);
    own.store.shelveChat(current.now, current.calendar);
}

}  // namespace tappora
