#include "app/ask/asking.h"

#include <fmt/format.h>

#include <cstdio>
#include <utility>

#include "app/ask/lesson_offer.h"
#include "app/ask/terminal_text.h"
#include "app/common/harmless_text.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/common/terminal/terminal.h"
#include "core/foundation/integers.h"
#include "core/foundation/json_fields.h"

namespace tappora {
namespace {

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

}  // namespace

void announce(const ProviderAccess& access, const std::string& model) {
    fmt::print(stderr, "Asking {} ({})\n", harmlessLine(model), shownAddress(access.base));
}

Turns withQuestion(Turns turns, const std::string& question) {
    turns.push_back({tapcore::ChatFile::Role::user, question, {}});
    return turns;
}

void askQuestion(const Asking& with, Turns turns, const std::string& question, bool isKept) {
    const Turns asked = withQuestion(std::move(turns), question);
    Answer got;
    if (const auto problem = problemIn([&] { got = with.questioner.ask(with.model, asked); }))
        throw Failure("ask", harmlessLine(*problem));
    printAnswer(got, with.environment);
    if (isKept && !got.text.empty()) with.kept.add(question, got);
    printUsage(got);
    if (!got.problem.empty()) throw Failure("ask", harmlessLine(got.problem));
    offerLesson(got.text, with.options.folder, with.environment);
}

std::optional<std::string> problemIn(const std::function<void()>& exchange) {
    try {
        exchange();
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

}  // namespace tappora
