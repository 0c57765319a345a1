#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "app/common/command_line/command_line.h"
#include "app/common/command_line/companion.h"
#include "app/common/command_line/records_json.h"
#include "app/common/keyboard/fingers_view.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/common/terminal/terminal.h"
#include "app/tappora/bar_chart.h"
#include "app/tappora/commands.h"
#include "app/tappora/fingers_rank.h"
#include "core/foundation/integers.h"

namespace tappora {
namespace {

using tapcore::Board;
using tapcore::Load;

nlohmann::json strikerJson(const Load::Striker& striker) {
    return {{"hand", Board::hands.of(striker.hand)}, {"finger", Board::fingers.of(striker.finger)}};
}

/// A part under its name, without a way that cannot be told.
nlohmann::json partJson(nlohmann::json name, const Load& load, const Load::Part& part,
                        bool hasTravel = true) {
    name["presses"] = part.presses;
    name["share"] = load.share(part);
    if (hasTravel) name["metres"] = part.metres;
    return name;
}

nlohmann::json loadJson(const Load& load) {
    nlohmann::json fingers = nlohmann::json::array();
    nlohmann::json hands = nlohmann::json::array();
    nlohmann::json rows = nlohmann::json::array();
    nlohmann::json homeless = nlohmann::json::array();
    for (const auto& [striker, part] : load.byFinger)
        fingers.push_back(partJson(strikerJson(striker), load, part, load.hasHome(striker)));
    for (const auto& [hand, part] : load.byHand)
        hands.push_back(partJson({{"hand", Board::hands.of(hand)}}, load, part));
    for (const auto& [row, part] : load.byRow)
        rows.push_back(partJson({{"row", Board::rows.of(row)}}, load, part));
    for (const Load::Striker& striker : load.homeless) homeless.push_back(strikerJson(striker));
    return {{"all", partJson(nlohmann::json::object(), load, load.all)},
            {"byFinger", std::move(fingers)},
            {"byHand", std::move(hands)},
            {"byRow", std::move(rows)},
            {"homeless", std::move(homeless)},
            {"offBoard", load.offBoard}};
}

nlohmann::json whatIfJson(const WhatIf& asked) {
    nlohmann::json json = loadJson(asked.load);
    json["layout"] = asked.layout.id;
    json["moved"] = nlohmann::json::object();
    for (const auto& [from, to] : asked.moves.moved) json["moved"][std::to_string(from)] = to;
    json["stayed"] = asked.moves.stayed;
    return json;
}

nlohmann::json fingersJson(const FingersView& view) {
    nlohmann::json json = loadJson(view.load);
    json["from"] = view.period.first.description();
    json["to"] = view.period.last.description();
    json["board"] = view.board.id;
    json["layout"] = view.layout.id;
    json["leftOut"] = nlohmann::json::array();
    for (const tapcore::LeftOut& key : view.load.leftOut)
        json["leftOut"].push_back({{"code", key.code}, {"name", key.name}, {"count", key.count}});
    if (view.whatIf) json["as"] = whatIfJson(*view.whatIf);
    return json;
}

/// The rows of a load as lines with a bar each.
class LoadTable {
  public:
    LoadTable(const FingersView& view, const Terminal& terminal) : view_(view), terminal_(terminal) {}

    std::string text() const {
        std::string text = view_.whatIf ? layoutsLine() : "";
        for (const LoadSection& section : sections(view_)) {
            text += (text.empty() ? "" : "\n") + terminal_.bold(section.heading) + "\n";
            const std::int64_t most = mostPresses(section);
            for (const LoadRow& row : section.rows) text += line(row, most);
        }
        return text;
    }

  private:
    static constexpr std::size_t nameWidth = 22;
    static constexpr std::size_t figuresWidth = 18;

    /// Above the figures of two layouts, whose they are.
    std::string layoutsLine() const {
        return fmt::format("{:{}}{:>{}.{}}{:>{}.{}}\n", "", nameWidth, view_.layout.name, figuresWidth,
                           figuresWidth - 2, view_.whatIf->layout.name, figuresWidth, figuresWidth - 2);
    }

    std::string line(const LoadRow& row, std::int64_t most) const {
        const Load& last = view_.whatIf ? view_.whatIf->load : view_.load;
        const Load::Part& drawn = row.other ? *row.other : row.part;
        std::string text = fmt::format("  {:<{}}", row.name, nameWidth - 2);
        if (!row.other) text += fmt::format("{:>12}", tapcore::grouped(row.part.presses));
        text += figures(row, view_.load, row.part);
        if (row.other) text += figures(row, last, *row.other);
        const std::size_t taken = nameWidth + (row.other ? 2 * figuresWidth : 12 + figuresWidth) + 2;
        const std::size_t room =
            terminal_.width > taken ? std::min<std::size_t>(terminal_.width - taken, 40) : 0;
        const std::string bar = room < 4 ? "" : tappora::bar(drawn.presses, most, room, terminal_);
        return text + (drawn.presses > 0 && !bar.empty() ? "  " + bar : "") + "\n";
    }

    std::string figures(const LoadRow& row, const Load& load, const Load::Part& part) const {
        return fmt::format("{:>8}{:>10}", percentText(part.presses, load.all.presses),
                           row.hasTravel ? travelText(part.metres) : "-");
    }

    const FingersView& view_;
    const Terminal& terminal_;
};

std::string fingersText(const FingersView& view, const Terminal& terminal) {
    std::string text = terminal.bold(title(view.board)) + "\n" +
                       terminal.faint(subtitle(view, view.load.all.presses, terminal.unicode)) + "\n\n" +
                       LoadTable(view, terminal).text() + "\n";
    for (const std::string& note : notes(view)) text += terminal.faint(note) + "\n";
    return text;
}

}  // namespace

void fingersCommand(CommandLine& line, const Environment& environment) {
    FingersOptions options;
    line.describe("Print how many presses each finger, hand and row has, and how far the fingers move",
                  "tappora fingers --from 2026-09-01 --as colemak --leave-out space");
    addFingersOptions(line, options);
    bool ranks = false;
    std::optional<std::string> language;
    line.flag("--rank", ranks, "Compare the layouts that type your language")
        .excludes("--as")
        .excludes("--output");
    line.option("--language", language, "With --rank, the language, by its code, such as de").type("CODE");
    line.parse();
    if (language && !ranks) throw UsageError("--language: only with --rank");
    if (ranks) return printRanking(options, language, environment);
    if (options.output) becomePainter("fingers", line.arguments());

    const FingersView view = fingersView(options, environment);
    print(options.json ? jsonText(fingersJson(view)) : fingersText(view, Terminal::of(environment)));
}

}  // namespace tappora
