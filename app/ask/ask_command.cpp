#include "app/ask/ask_command.h"

#include <fmt/format.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/ask/ask_options.h"
#include "app/ask/asking.h"
#include "app/ask/conversation.h"
#include "app/ask/kept_conversation.h"
#include "app/ask/provider_choice.h"
#include "app/ask/questioner.h"
#include "app/common/command_line/command_line.h"
#include "app/common/folder/language.h"
#include "app/common/folder/settings.h"
#include "app/common/harmless_text.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/common/system/signals.h"
#include "core/foundation/language_rules.h"
#include "core/foundation/utf8.h"

namespace tappora {
namespace {

HttpLimits limitsOf(const AskOptions& options) {
    HttpLimits limits;
    if (options.timeout)
        limits.total =
            std::chrono::milliseconds(static_cast<std::int64_t>(std::ceil(*options.timeout * 1000)));
    return limits;
}

/// The models that a provider lists. Failure says why it lists none.
std::vector<std::string> modelsOf(const ProviderClient& provider) {
    std::vector<std::string> models;
    if (const auto problem = problemIn([&] { models = provider.models(); }))
        throw Failure("ask", harmlessLine(*problem));
    return models;
}

/// The model to ask, when the options name none.
std::string chooseModel(const AskOptions& options, const ProviderClient& provider) {
    if (options.model) return *options.model;
    if (options.shows && provider.access().provider != Provider::claude)
        throw UsageError("--show: needs --model, since nothing is sent to ask which there are");
    const auto models = modelsOf(provider);
    if (models.empty()) throw Failure("--model", "the provider lists no model");
    return models.front();
}

std::vector<ProviderClient> providersFor(const AskOptions& options, const tapcore::Words& words,
                                         const Environment& environment) {
    const auto isStopped = [] { return Interruption::isRequested(); };
    std::vector<ProviderClient> providers;
    for (ProviderAccess& access : chooseProviders(options, environment, !options.shows, isStopped))
        providers.emplace_back(std::move(access), limitsOf(options), words, isStopped);
    return providers;
}

/// The ids on standard output; on standard error, before them, which server lists them.
void listModels(const std::vector<ProviderClient>& providers) {
    for (const ProviderClient& provider : providers) {
        const auto models = modelsOf(provider);
        if (providers.size() > 1) fmt::print(stderr, "{}\n", shownAddress(provider.access().base));
        for (const std::string& model : models) print(harmlessLine(model) + "\n");
        std::fflush(stdout);
    }
}

}  // namespace

void askCommand(CommandLine& line, const Environment& environment) {
    AskOptions options;
    readOptions(line, options);
    if (options.shows && !options.question) throw UsageError("--show: needs a QUESTION");
    takeSettings(options, Settings::read(environment));
    const tapcore::Words words = chosenWords(environment);
    if (!options.language) options.language = tapcore::englishName(words.language());
    std::optional<Interruption> interruption(Interruption::Blocked::ends);
    const auto providers = providersFor(options, words, environment);
    if (options.listsModels) return listModels(providers);

    const Questioner questioner(options, environment, providers.front());
    const KeptConversation kept(options.folder, environment);
    const std::string model = chooseModel(options, providers.front());
    if (options.startsNew && !options.shows) kept.archive();
    const bool isKept = options.continues || options.startsNew;
    const Turns turns = options.continues && !options.startsNew ? kept.read().turns : Turns();
    const Asking asking{questioner, kept, model, options, environment};
    if (options.shows) return questioner.show(model, withQuestion(turns, *options.question));
    if (!options.question) {
        interruption.reset();
        return converse(asking, words);
    }
    announce(providers.front().access(), model);
    askQuestion(asking, turns, *options.question, isKept);
}

}  // namespace tappora
