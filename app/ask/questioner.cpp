#include "app/ask/questioner.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "app/common/harmless_text.h"
#include "app/common/keyboard/key_remaps.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "core/assistant/dialogue.h"
#include "core/assistant/tool_text.h"
#include "core/foundation/characters.h"

namespace tappora {
namespace {

void printCall(const tapcore::ToolCall& call, const tapcore::AssistantTools::Output& output) {
    std::string text = call.name;
    for (const auto& [name, value] : call.arguments) text += fmt::format(" {}={}", name, value);
    complain(fmt::format("{}: {} characters{}", harmlessLine(tapcore::shortened(text)),
                         tapcore::characterCount(output.text), output.isError ? ", an error" : ""));
}

}  // namespace

Questioner::Questioner(const AskOptions& options, const Environment& environment,
                       const ProviderClient& provider)
    : options_(options),
      environment_(environment),
      provider_(provider),
      store_(openShown(options.folder, environment)),
      keyboard_(AssistantKeyboard::of({}, environment, store_)) {}

std::unique_ptr<tapcore::Dialogue> Questioner::dialogue(const std::string& model, const Turns& turns) const {
    const tapcore::Day day = currentDay();
    tapcore::DialogueStart start{model, assistantPrompt(store_, keyboard_, options_.language).inApp(day),
                                 assistantTools(store_, keyboard_, day).specs(), turns};
    return provider_.access().provider == Provider::claude ? tapcore::Dialogue::claude(std::move(start))
                                                           : tapcore::Dialogue::chat(std::move(start));
}

/// A conversation may last over midnight.
tapcore::Day Questioner::currentDay() const {
    const Environment current = atThisMoment(environment_);
    return today(options_.folder, current, current.calendar);
}

void Questioner::show(const std::string& model, const Turns& turns) const {
    const ProviderAccess& access = provider_.access();
    const std::string text = access.shown(access.question(model, dialogue(model, turns)->request()));
    print(environment_.onTerminal ? harmless(text) : text);
}

Answer Questioner::ask(const std::string& model, const Turns& turns) const {
    const ProviderAccess& access = provider_.access();
    const auto put = dialogue(model, turns);
    const auto send = [&](const nlohmann::json& body) {
        return provider_.exchange(access.question(model, body));
    };
    const auto onCall = [&](const tapcore::ToolCall& call, const tapcore::AssistantTools::Output& output) {
        if (options_.showsTools) printCall(call, output);
        provider_.goOn();
    };
    return putQuestion(*put, assistantTools(store_, keyboard_, currentDay()), access.isPaid(), send, onCall);
}

}  // namespace tappora
