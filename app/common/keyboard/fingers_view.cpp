#include "app/common/keyboard/fingers_view.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <string_view>
#include <utility>

#include "app/common/command_line/command_line.h"
#include "core/counting/chords.h"

namespace tappora {
namespace {

using tapcore::Board;
using tapcore::Load;

std::string nameOf(const Load::Striker& striker) { return fingerName(striker.hand, striker.finger); }

std::string nameOf(Board::Hand hand) { return fmt::format("{} hand", Board::hands.of(hand)); }

std::string nameOf(Board::Row row) {
    return row == Board::Row::thumb ? "thumb keys" : fmt::format("{} row", Board::rows.of(row));
}

template <class Key>
LoadSection section(std::string heading, const std::map<Key, Load::Part>& parts,
                    const std::map<Key, Load::Part>* others) {
    LoadSection section{std::move(heading), {}};
    for (const auto& [key, part] : parts)
        section.rows.push_back(
            {nameOf(key), part, others ? std::optional(others->at(key)) : std::nullopt, true});
    return section;
}

std::string leftOutNote(const std::vector<tapcore::LeftOut>& keys) {
    std::vector<std::string> texts;
    for (const tapcore::LeftOut& key : keys)
        texts.push_back(fmt::format("{} ({})", key.name, pressesText(key.count)));
    return fmt::format("Left out: {}", fmt::join(texts, ", "));
}

/// Pressed keys whose character the other layout has nowhere.
std::vector<std::string> stayedNames(const FingersView& view) {
    std::vector<std::string> names;
    for (const tapcore::KeyCode code : view.whatIf->moves.stayed)
        if (view.counts.valueOr(code, 0) > 0 && !view.leftOutCodes.contains(code))
            names.push_back(tapcore::Chords::name(code, view.layout.names()));
    return names;
}

std::optional<WhatIf> whatIf(const LegendSet& other, const BoardCounts& on) {
    tapcore::LetterMoves moves(on.layout.legends, other.legends, on.board);
    Load load(on.board, on.layout.names(), on.counts, on.leftOutCodes, moves.moved);
    return WhatIf{other, std::move(moves), std::move(load)};
}

}  // namespace

void addFingersOptions(CommandSyntax& command, FingersOptions& options) {
    addBoardCountsOptions(command, options, "the load by finger, hand and row");
    command
        .option("--as", options.as,
                "Compare with the same text typed on this layout: an id or a layout's file")
        .type("LAYOUT");
}

FingersView fingersView(const FingersOptions& options, const Environment& environment) {
    std::optional<LegendSet> other;
    if (options.as)
        other = Keyboards(environment, openStore(options.folder, environment)).layout("--as", *options.as);
    BoardCounts on = boardCounts(options, environment);
    Load load(on.board, on.layout.names(), on.counts, on.leftOutCodes);
    auto asked = other ? whatIf(*other, on) : std::nullopt;
    return {std::move(on), std::move(load), std::move(asked)};
}

std::string fingerName(Board::Hand hand, Board::Finger finger) {
    const std::string_view side = Board::hands.of(hand);
    if (finger == Board::Finger::thumb) return fmt::format("{} thumb", side);
    const bool isLittle = finger == Board::Finger::pinky;
    return fmt::format("{} {} finger", side, isLittle ? "little" : Board::fingers.of(finger));
}

std::vector<LoadSection> sections(const FingersView& view) {
    const Load* other = view.whatIf ? &view.whatIf->load : nullptr;
    std::vector<LoadSection> all = {
        section("Fingers", view.load.byFinger, other ? &other->byFinger : nullptr),
        section("Hands", view.load.byHand, other ? &other->byHand : nullptr),
        section("Rows", view.load.byRow, other ? &other->byRow : nullptr)};
    auto row = all.front().rows.begin();
    for (const auto& [striker, part] : view.load.byFinger) (row++)->hasTravel = view.load.hasHome(striker);
    return all;
}

std::int64_t mostPresses(const LoadSection& section) {
    std::int64_t most = 1;
    for (const LoadRow& row : section.rows)
        most = std::max({most, row.part.presses, row.other ? row.other->presses : 0});
    return most;
}

std::string travelText(double metres) {
    if (!std::isfinite(metres)) return "?";
    if (metres == 0) return "0 m";
    if (metres < 0.05) return "<0.1 m";
    if (metres >= 999.5) return fmt::format("{:.1f} km", metres / 1000);
    return fmt::format("{:.{}f} m", metres, metres < 9.95 ? 1 : 0);
}

std::vector<std::string> notes(const FingersView& view) {
    std::vector<std::string> lines = {
        "Travel is counted from the finger's home key and back at each press, as touch typing is taught"};
    std::vector<std::string> homeless;
    for (const Load::Striker& striker : view.load.homeless) homeless.push_back(nameOf(striker));
    if (!homeless.empty())
        lines.push_back(
            fmt::format("Without a home key, and so without travel: {}", fmt::join(homeless, ", ")));
    if (!view.load.leftOut.empty()) lines.push_back(leftOutNote(view.load.leftOut));
    if (auto note = offBoardNote(view.load.offBoard)) lines.push_back(std::move(*note));
    if (!view.whatIf) return lines;
    const auto stayed = stayedNames(view);
    if (!stayed.empty())
        lines.push_back(fmt::format("On no key of {}, and counted where they are: {}",
                                    view.whatIf->layout.name, fmt::join(stayed, ", ")));
    return lines;
}

}  // namespace tappora
