#include "app/ask/ask_command.h"

#include <fmt/format.h>

#include <cmath>
#include <functional>
#include <iostream>
#include <optional>

#include "app/ask/ask_options.h"
#include "app/ask/kept_conversation.h"
#include "app/ask/lesson_offer.h"
#include "app/ask/provider_choice.h"
#include "app/ask/questioner.h"
#include "app/ask/terminal_text.h"
#include "app/common/command_line/command_line.h"
#include "app/common/folder/language.h"
#include "app/common/folder/settings.h"
#include "app/common/harmless_text.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/common/system/signals.h"
#include "app/common/terminal/terminal.h"
#include "core/assistant/ask_starters.h"
#include "core/foundation/characters.h"
#include "core/foundation/integers.h"
#include "core/foundation/json_fields.h"
#include "core/foundation/language_rules.h"

namespace tappora {
namespace {

HttpLimits limitsOf(const AskOptions& options) {
    HttpLimits limits;
    if (options.timeout)
        limits.total =
            std::chrono::milliseconds(static_cast<std::int64_t>(std::ceil(*options.timeout * 1000)));
    return limits;
}

/// Prints an answer: for a person as text, for a program as it was written.
void printAnswer(const Answer& answer, const Environment& environment) {
    if (answer.text.empty()) return;
    print(environment.onTerminal ? terminalText(answer.text, Terminal::of(environment))
                                 : harmless(answer.text) + "\n");
}

void printUsage(const Answer& answer) {
    const auto& budget = answer.budget;
    const std::string limits = budget.paid ? fmt::format("of {} and {}", tapcore::grouped(budget.inputTokens),
                                                         tapcore::grouped(budget.outputTokens))
                                           : std::string("nothing is charged");
    std::fflush(stdout);
    fmt::print(stderr, "{} tokens read, {} written; {}\n", tapcore::grouped(budget.input),
               tapcore::grouped(budget.output), limits);
}

/// The model to ask, when the options name none.
std::string chooseModel(const AskOptions& options, const ProviderClient& provider) {
    if (options.model) return *options.model;
    if (options.shows && provider.access().provider != Provider::claude)
        throw UsageError("--show: needs --model, since nothing is sent to ask which there are");
    const auto models = provider.models();
    if (models.empty()) throw Failure("--model", "the provider lists no model");
    return models.front();
}

void announce(const ProviderAccess& access, const std::string& model) {
    fmt::print(stderr, "Asking {} ({})\n", harmlessLine(model), shownAddress(access.base));
}

/// What ends a question but not a conversation, as text; nothing for anything else.
std::optional<std::string> attempt(const std::function<void()>& question) {
    try {
        question();
        return std::nullopt;
    } catch (const Refused& error) {
        return error.what();
    } catch (const HttpError& error) {
        return error.what();
    } catch (const Stopped& error) {
        return error.what();
    } catch (const tapcore::JsonError& error) {
        return std::string("a reply of unknown shape: ") + error.what();
    }
}

/// By whom questions are put and where they are kept, and with what choices.
struct Asking {
    const Questioner& questioner;
    const KeptConversation& kept;
    const std::string& model;
    const AskOptions& options;
    const Environment& environment;
};

/// One question and everything that follows from it. Throws Failure when no whole answer came.
void answer(const Asking& with, Turns turns, const std::string& question, bool isKept) {
    turns.push_back({tapcore::ChatFile::Role::user, question, {}});
    Answer got;
    if (const auto problem = attempt([&] { got = with.questioner.ask(with.model, turns); }))
        throw Failure("ask", harmlessLine(*problem));
    printAnswer(got, with.environment);
    if (isKept && !got.text.empty()) with.kept.add(question, got);
    printUsage(got);
    if (!got.problem.empty()) throw Failure("ask", harmlessLine(got.problem));
    offerLesson(got.text, with.options.folder, with.environment);
}

void printStarters(const tapcore::Words& words) {
    int number = 0;
    for (const auto& starter : tapcore::AskStarters::featured)
        print(fmt::format("  {}  {}\n", ++number, words.text(starter.label)));
    for (const std::string_view key : tapcore::AskStarters::plain)
        print(fmt::format("  {}  {}\n", ++number, words.text(key)));
}

/// The question that a line means; the number of a starter means that starter.
std::string questionOf(const std::string& line, const tapcore::Words& words) {
    const auto& [featured, plain] = std::pair(tapcore::AskStarters::featured, tapcore::AskStarters::plain);
    if (line.size() != 1 || line[0] < '1' || line[0] > '9') return tapcore::repairedUtf8(line);
    const auto number = static_cast<std::size_t>(line[0] - '1');
    if (number < featured.size()) return std::string(featured[number].prompt);
    if (number < featured.size() + plain.size()) return words.text(plain[number - featured.size()]);
    return line;
}

/// The next line of a conversation; nothing at its end.
std::optional<std::string> nextLine(const Environment& environment) {
    if (environment.onTerminal) print("> ");
    std::fflush(stdout);
    std::string line;
    if (!std::getline(std::cin, line)) {
        if (environment.onTerminal) print("\n");
        return std::nullopt;
    }
    const std::string_view text = tapcore::trimmedWhiteSpace(line);
    return text == "/quit" ? std::nullopt : std::optional<std::string>(text);
}

/// Whether a line is one word behind a slash, and so no question.
bool isCommand(std::string_view line) {
    return line.starts_with('/') && line.find(' ') == std::string_view::npos;
}

void converse(const Asking& with, const tapcore::Words& words) {
    announce(with.questioner.provider().access(), with.model);
    if (const auto turns = with.kept.read().turns.size(); turns > 0)
        fmt::print(stderr, "Continuing a conversation of {} turns\n", turns);
    fmt::print(stderr, "Ask, or type a number; /new starts another conversation, /quit ends\n");
    printStarters(words);
    while (const auto text = nextLine(with.environment)) {
        if (text->empty()) continue;
        if (*text == "/new") {
            with.kept.shelve();
            continue;
        }
        if (isCommand(*text)) {
            complain(*text + ": no such command; there are /new and /quit");
            continue;
        }
        const Interruption interruption(Interruption::Waiting::ends);
        try {
            answer(with, with.kept.read().turns, questionOf(*text, words), true);
        } catch (const Failure& failure) {
            complain(failure.what());
        }
    }
}

/// The ids on standard output; on standard error, before them, which server lists them.
void listModels(const std::vector<ProviderClient>& providers) {
    for (const ProviderClient& provider : providers) {
        std::vector<std::string> models;
        if (const auto problem = attempt([&] { models = provider.models(); }))
            throw Failure("ask", harmlessLine(*problem));
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
    std::optional<Interruption> interruption(Interruption::Waiting::ends);
    const auto isStopped = [&] { return Interruption::isRequested(); };
    std::vector<ProviderClient> providers;
    for (ProviderAccess& access : chooseProviders(options, environment, !options.shows, isStopped))
        providers.emplace_back(std::move(access), limitsOf(options), words, isStopped);
    if (options.listsModels) return listModels(providers);
    const ProviderClient& provider = providers.front();

    const Questioner questioner(options, environment, provider);
    const KeptConversation kept(options.folder, environment);
    std::string model;
    if (const auto problem = attempt([&] { model = chooseModel(options, provider); }))
        throw Failure("ask", harmlessLine(*problem));
    if (options.startsAnew && !options.shows) kept.shelve();
    const bool isKept = options.goesOn || options.startsAnew;
    const Turns turns = isKept && !options.startsAnew ? kept.read().turns : Turns();
    if (options.shows) {
        Turns shown = turns;
        shown.push_back({tapcore::ChatFile::Role::user, *options.question, {}});
        return questioner.show(model, shown);
    }
    if (!options.question) {
        interruption.reset();
        return converse({questioner, kept, model, options, environment}, words);
    }
    announce(provider.access(), model);
    answer({questioner, kept, model, options, environment}, turns, *options.question, isKept);
}

}  // namespace tappora
