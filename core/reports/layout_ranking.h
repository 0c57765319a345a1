#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "core/counting/key_face.h"
#include "core/counting/tally.h"
#include "core/keyboard/board.h"
#include "core/keyboard/legend_set.h"
#include "core/keyboard/load.h"

namespace tapcore {

/// What the same counts come to on one layout.
struct LayoutStanding {
    std::string id = {};
    std::string name = {};
    double metres = 0;          ///< the travel of all fingers
    double homeRow = 0;         ///< share of the presses on the board, as all shares here
    double leftHand = 0;        ///< the right hand has the rest
    Load::Striker finger = {};  ///< the one that carries most
    double fingerShare = 0;
    std::int64_t stayed =
        0;  ///< presses of keys whose character this layout lacks; they count where they are

    bool operator==(const LayoutStanding&) const = default;
};

/// One's own counts, laid over every layout that types a language. Counts hold no order: which key followed
/// which is not known, so pairs of keys and rolls cannot be judged.
struct LayoutRanking {
    std::int64_t presses = 0;            ///< on the board, without the keys left out
    LayoutStanding today;                ///< on the layout that they were typed on
    std::vector<LayoutStanding> others;  ///< the least travel first; of equals, by name

    /// The first one, when it spares more than a fifth of today's travel. Nothing for fewer than 1,000
    /// presses, which say little, nor for a layout that lacks what more than one press in a hundred typed.
    const LayoutStanding* clearlyBetter() const;
};

/// What there is to rank.
struct RankingQuestion {
    const Board& board;
    const LegendSet& today;                   ///< what the counts were typed on
    const std::vector<LegendSet>& layouts;    ///< `today` may be among them
    const std::vector<std::string>& letters;  ///< of the language
    const std::set<KeyCode>& leftOut = {};
};

/// Whether there are letters, and each is on a key that the board has, with or without shift.
bool typesOn(const Board& board, const std::vector<std::string>& letters, const Legends& legends);

/// The layouts that type the language on this board. Nothing when today's does not: its counts are those of
/// another language.
std::optional<LayoutRanking> rankLayouts(const RankingQuestion& question, const Tally::KeyCounts& counts);

}  // namespace tapcore
