#include "app/ask/ask_options.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "app/ask/http_client.h"
#include "app/common/assistant/assistant.h"
#include "app/common/command_line/command_line.h"
#include "app/common/folder/settings.h"
#include "app/common/program.h"
#include "core/foundation/characters.h"
#include "core/settings/setting.h"

namespace tappora {
namespace {

constexpr double shortestTimeout = 0.001;  // seconds
constexpr double longestTimeout = 86400;

/// UsageError for what no question can be put with.
void check(const AskOptions& options) {
    requireUtf8("QUESTION", options.question);
    requireUtf8("--model", options.model);
    requireUtf8("--language", options.language);
    if (options.question && tapcore::trimmedWhiteSpace(*options.question).empty())
        throw UsageError("QUESTION: empty");
    if (options.url && !isAddress(*options.url))
        throw UsageError("--url: not an address such as https://HOST/v1");
}

}  // namespace

void takeSettings(AskOptions& options, const Settings& settings) {
    const auto provider = settings.text("ai.provider");
    const bool isOther = options.provider && provider && *options.provider != *provider;
    if (!options.provider) options.provider = provider;
    if (!options.model && !isOther) options.model = settings.text("ai.model");
}

void readOptions(CommandLine& line, AskOptions& options) {
    line.describe(
        "Ask a language model about your typing; it reads your data folder through a few tools\n"
        "Without a question, hold a conversation, which is kept in the data folder",
        "tappora ask \"Which hours are my busiest?\" --provider local");
    line.option("QUESTION", options.question, "The question");
    line.option("--provider", options.provider,
                "Whom to ask; the setting ai.provider, else the first that can be used")
        .type(fmt::format("{}", fmt::join(tapcore::settingOf("ai.provider").words(), "|")));
    line.option("--model", options.model, "The model's id; the setting ai.model when not given").type("ID");
    line.option("--url", options.url, "The address of the provider's interface, instead of its own")
        .type("URL");
    line.option("--language", options.language,
                "The language to answer in, such as Dutch; yours when not given")
        .type("LANGUAGE");
    line.option("--timeout", options.timeout, "How long to wait for a reply; 600 when not given")
        .type("SECONDS")
        .between(shortestTimeout, longestTimeout);
    line.flag("--show", options.shows, "Print exactly what would be sent, and send nothing");
    line.flag("--tools", options.showsTools, "Show each call of a tool and the size of its result");
    line.flag("--models", options.listsModels, "List the models to choose from");
    line.flag("--continue", options.continues, "Continue the current conversation");
    line.flag("--new", options.startsNew, "Archive the current conversation and start another");
    addFolderOptions(line, options.folder);
    line.parse();
    check(options);
}

}  // namespace tappora
