#include "app/tappora/fingers_rank.h"

#include <fmt/format.h>

#include <cmath>
#include <nlohmann/json.hpp>
#include <string_view>

#include "app/common/command_line/records_json.h"
#include "app/common/folder/practice_language.h"
#include "app/common/program.h"
#include "app/common/terminal/terminal.h"
#include "core/foundation/characters.h"
#include "core/foundation/language_rules.h"

namespace tappora {
namespace {

using tapcore::Board;
using tapcore::LayoutRanking;
using tapcore::LayoutStanding;

constexpr const char* noOrder =
    "Counts hold no order: which key followed which is not known, so pairs of keys and rolls cannot be "
    "judged";

std::string shareText(double share) { return fmt::format("{:.0f} %", share * 100); }

/// "-38 %", beside today's travel; empty where there is none to compare with.
std::string changeText(double metres, double today) {
    return today == 0 ? "" : fmt::format("{:+} %", std::lround((metres - today) * 100 / today));
}

/// A name in so many columns, cut if it is longer.
std::string inColumns(const std::string& name, std::size_t columns) {
    std::string text;
    for (const std::string_view character : tapcore::characters(name)) {
        if (tapcore::columnCount(text) + tapcore::columnCount(character) > columns) break;
        text += character;
    }
    return text + std::string(columns - tapcore::columnCount(text), ' ');
}

std::string rowText(const LayoutStanding& standing, const std::string& name, const std::string& change) {
    constexpr std::size_t nameWidth = 26;
    return fmt::format("  {}{:>9}{:>8}{:>10}{:>11}{:>8}  {}\n", inColumns(name, nameWidth),
                       travelText(standing.metres), change, shareText(standing.homeRow),
                       shareText(standing.leftHand), shareText(standing.fingerShare),
                       fingerName(standing.finger.hand, standing.finger.finger));
}

std::string rankingText(const LayoutRanking& ranking, const FingersView& view, const std::string& language,
                        const Terminal& terminal) {
    std::string text = terminal.bold(title(view.board)) + "\n" +
                       terminal.faint(subtitle(view, ranking.presses, terminal.unicode)) + "\n\n";
    text += terminal.bold(fmt::format("  {:<26}{:>9}{:>8}{:>10}{:>11}  {}", "Layouts for " + language,
                                      "travel", "", "home row", "left hand", "busiest finger")) +
            "\n";
    text += rowText(ranking.today, ranking.today.name, "today");
    bool isAnyMarked = false;
    for (const LayoutStanding& other : ranking.others) {
        text += rowText(other, other.name + (other.stayed > 0 ? " *" : ""),
                        changeText(other.metres, ranking.today.metres));
        isAnyMarked = isAnyMarked || other.stayed > 0;
    }
    text += "\n" + terminal.faint(noOrder) + "\n";
    if (isAnyMarked)
        text += terminal.faint("* lacks characters that you typed, which are counted where they are today") +
                "\n";
    for (const std::string& note : notes(view)) text += terminal.faint(note) + "\n";
    return text;
}

nlohmann::json rankingJson(const LayoutRanking& ranking, const FingersView& view,
                           const std::string& language) {
    nlohmann::json json = {{"from", view.period.first.description()},
                           {"to", view.period.last.description()},
                           {"board", view.board.id},
                           {"language", language},
                           {"presses", ranking.presses},
                           {"today", standingJson(ranking.today)},
                           {"others", nlohmann::json::array()},
                           {"note", noOrder}};
    for (const LayoutStanding& other : ranking.others) json["others"].push_back(standingJson(other));
    return json;
}

}  // namespace

nlohmann::json standingJson(const LayoutStanding& standing) {
    return {{"layout", standing.id},
            {"name", standing.name},
            {"metres", standing.metres},
            {"homeRow", standing.homeRow},
            {"leftHand", standing.leftHand},
            {"finger",
             {{"hand", Board::hands.of(standing.finger.hand)},
              {"finger", Board::fingers.of(standing.finger.finger)},
              {"share", standing.fingerShare}}},
            {"stayed", standing.stayed}};
}

void printRanking(const FingersOptions& options, const std::optional<std::string>& language,
                  const Environment& environment) {
    const TypedLanguage typed = typedLanguage(language, environment);
    const FingersView view = fingersView(options, environment);
    const auto layouts = Keyboards(environment, openStore(options.folder, environment)).allLayouts();
    const auto ranking = rankLayouts({.board = view.board,
                                      .today = view.layout,
                                      .layouts = layouts,
                                      .letters = typed.letters,
                                      .leftOut = view.leftOutCodes},
                                     view.counts);
    const std::string name = tapcore::englishName(typed.code);
    if (!ranking)
        throw Failure("--rank", fmt::format("{} does not type {} on this board; choose with --language, "
                                            "--layout and --board",
                                            view.layout.name, name));
    if (options.json) return print(jsonText(rankingJson(*ranking, view, typed.code)));
    if (ranking->presses == 0) return print("Nothing was counted that the board has keys for\n");
    print(rankingText(*ranking, view, name, Terminal::of(environment)));
}

}  // namespace tappora
