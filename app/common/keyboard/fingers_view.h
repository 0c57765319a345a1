#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "app/common/keyboard/board_counts.h"
#include "core/keyboard/letter_moves.h"
#include "core/keyboard/load.h"

namespace tappora {

/// What `tappora fingers` is asked for.
struct FingersOptions : BoardCountsOptions {
    std::optional<std::string> as;  ///< the layout to ask "what if" about
};

void addFingersOptions(CommandSyntax& command, FingersOptions& options);

/// The load of the same typing on another layout.
struct WhatIf {
    LegendSet layout;
    tapcore::LetterMoves moves;
    tapcore::Load load;
};

/// What each finger carries, and how that is to be shown.
struct FingersView : BoardCounts {
    tapcore::Load load;
    std::optional<WhatIf> whatIf;
};

/// Reads the period's counts and lays them over the board. Problems with files are complained of.
FingersView fingersView(const FingersOptions& options, const Environment& environment);

/// A finger, a hand or a row with its part of a load.
struct LoadRow {
    std::string name;  ///< "left index finger"
    tapcore::Load::Part part;
    std::optional<tapcore::Load::Part> other;  ///< on the layout that was asked about
    bool hasTravel = true;                     ///< false for a finger without a home key
};

struct LoadSection {
    std::string heading;
    std::vector<LoadRow> rows;
};

/// By finger, hand and row, in the order of a load.
std::vector<LoadSection> sections(const FingersView& view);

/// What a finger is called: "left little finger", "right thumb".
std::string fingerName(tapcore::Board::Hand hand, tapcore::Board::Finger finger);

/// The largest number of presses in any row of a section, on either layout; at least 1.
std::int64_t mostPresses(const LoadSection& section);

/// "0.4 m", "123 m", "1.2 km"; what a finger travels, there and back, is an upper bound.
std::string travelText(double metres);

/// What the figures leave out or cannot tell.
std::vector<std::string> notes(const FingersView& view);

}  // namespace tappora
