#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "app/common/command_line/records_json.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/common/terminal/terminal.h"
#include "app/practice/figures.h"
#include "app/practice/tasks.h"
#include "core/foundation/language_rules.h"
#include "core/practice/practice_course.h"

namespace tappora {
namespace {

using nlohmann::json;
using tapcore::LetterCounts;
using tapcore::LetterState;
using tapcore::LetterStats;
using tapcore::PracticeCourse;
using tapcore::PracticeRules;
using Letters = std::vector<std::string>;

constexpr std::int64_t recentDays = 14;

/// A letter and how far it is.
struct LetterRow {
    std::string letter;
    LetterState state = LetterState::notStarted;
    LetterStats total;
    double progress = 0;
};

/// All practice on the layout, and that of the last days.
struct Practised {
    LetterCounts total, recent;
};

void appendRows(std::vector<LetterRow>& rows, const Letters& order, const Letters& open,
                const Practised& practised, const PracticeRules& rules) {
    for (const std::string& letter : order) {
        const LetterStats total = statsOf(letter, practised.total);
        const bool isOpen = std::find(open.begin(), open.end(), letter) != open.end();
        rows.push_back({letter, rules.state(isOpen, total, statsOf(letter, practised.recent)), total,
                        rules.progress(total)});
    }
}

/// The language's letters in teaching order, then the digits and marks that were ever practised.
std::vector<LetterRow> letterRows(const TrainerSetup& setup, const Practised& practised) {
    std::vector<LetterRow> rows;
    const PracticeRules& rules = setup.rules;
    const Letters& order = setup.model->order;
    appendRows(rows, order, rules.open(order, practised.total, std::nullopt, setup.wish.lettersOpened),
               practised, rules);
    for (const PracticeCourse course : {PracticeCourse::digits, PracticeCourse::marks}) {
        Letters typed = course.order();
        std::erase_if(typed,
                      [&](const std::string& character) { return !practised.total.contains(character); });
        appendRows(rows, typed, typed, practised, rules);
    }
    return rows;
}

/// A bar of ten for how far a letter is.
std::string bar(double progress, bool unicode) {
    const auto full = static_cast<std::size_t>(progress * 10);
    std::string text;
    for (std::size_t i = 0; i < 10; ++i) text += i < full ? (unicode ? "█" : "#") : (unicode ? "·" : ".");
    return text;
}

std::string stateText(LetterState state) {
    return state == LetterState::notStarted ? "not started" : std::string(tapcore::letterStates.of(state));
}

std::string rowText(const LetterRow& row, const Terminal& terminal) {
    const LetterStats& stats = row.total;
    const std::string line = fmt::format("  {}       {:<11}  {}  {:>6}  {:>5}  {:>6}  {:>4}\n", row.letter,
                                         stateText(row.state), bar(row.progress, terminal.unicode),
                                         stats.timed, speedText(stats), accuracyText(stats), stats.days);
    return row.state == LetterState::notStarted ? terminal.faint(line) : line;
}

std::string tableText(const TrainerSetup& setup, const std::vector<LetterRow>& rows,
                      const Terminal& terminal) {
    const PracticeRules& rules = setup.rules;
    std::string text = fmt::format("{} on {}\n\n", tapcore::englishName(setup.model->language), setup.layout);
    text += "  letter  state        progress     timed    wpm   right  days\n";
    for (const LetterRow& row : rows) text += rowText(row, terminal);
    return text + fmt::format("\n  learned at                           {:>6}  {:>5}  {:>6}  {:>4}\n",
                              rules.samples, rules.targetWPM(), percent(rules.targetAccuracy), rules.minDays);
}

json toJson(const LetterRow& row) {
    json result = {{"letter", row.letter},
                   {"state", tapcore::letterStates.of(row.state)},
                   {"progress", row.progress},
                   {"presses", row.total.presses},
                   {"misses", row.total.misses},
                   {"timed", row.total.timed},
                   {"milliseconds", row.total.milliseconds},
                   {"days", row.total.days},
                   {"accuracy", row.total.accuracy()}};
    if (const auto average = row.total.averageMilliseconds()) result["averageMilliseconds"] = *average;
    return result;
}

}  // namespace

void printLetters(const PracticeOptions& options, const Environment& environment) {
    const tapcore::Calendar& calendar = environment.calendar;
    const tapcore::Store store = openStore(options.folder, environment);
    const TrainerSetup setup = choosePractice(options, environment, Settings::read(environment), store).setup;
    const tapcore::PracticeHistory history = readHistory(store);
    const tapcore::Day since = today(options.folder, environment, calendar).adding(1 - recentDays, calendar);
    const auto rows = letterRows(setup, {history.totals(setup.layout), history.recent(since, setup.layout)});
    if (options.json) {
        json letters = json::array();
        for (const LetterRow& row : rows) letters.push_back(toJson(row));
        print(jsonText({{"language", setup.model->language},
                        {"layout", setup.layout},
                        {"targetWPM", setup.rules.targetWPM()},
                        {"letters", std::move(letters)}}));
    } else {
        print(tableText(setup, rows, Terminal::of(environment)));
    }
}

}  // namespace tappora
