#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "core/counting/key_face.h"
#include "core/counting/tally.h"
#include "core/keyboard/board.h"

namespace tapcore {

/// A key that the user left out, told apart from what the fingers carry.
struct LeftOut {
    KeyCode code = 0;
    std::string name;        ///< as its layout calls it
    std::int64_t count = 0;  ///< presses; 0 when it was never pressed

    bool operator==(const LeftOut&) const = default;
};

/// How much each finger carries: presses laid over a board, by the finger, hand and row that strike each key
/// as touch typists are taught. Counts hold no order, so nothing here speaks of sequences: no finger used
/// twice in a row, no rolls.
struct Load {
    /// A finger of one hand. Ordered by hand, then finger.
    struct Striker {
        Board::Hand hand = Board::Hand::left;
        Board::Finger finger = Board::Finger::pinky;

        auto operator<=>(const Striker&) const = default;
    };

    /// What a finger, a hand, a row or all of them carry.
    struct Part {
        std::int64_t presses = 0;
        double metres =
            0;  ///< the way from the finger's home key to each key struck and back, centre to centre

        bool operator==(const Part&) const = default;
    };

    Part all;
    std::map<Striker, Part> byFinger;  ///< each finger that strikes some key of the board
    std::map<Board::Hand, Part> byHand;
    std::map<Board::Row, Part> byRow;
    std::vector<Striker> homeless;  ///< fingers of `byFinger` without a home key: their way cannot be told
    std::int64_t offBoard = 0;      ///< presses of codes that no key of the board sends
    std::vector<LeftOut> leftOut;   ///< each left-out code, ascending; in none of the figures above

    /// `leftOutCodes` are the codes that the user wants left out, named by `legends`. `moves` puts presses
    /// under other codes first, those left out excepted: see `LetterMoves`. A code on two keys counts for the
    /// first.
    Load(const Board& board, const Legends& legends, const Tally::KeyCounts& counts,
         const std::set<KeyCode>& leftOutCodes, const KeyRemap& moves = {});

    /// What part of all presses this one is, 0 to 1; 0 without presses.
    double share(const Part& part) const;

    /// Whether the finger has a home key, and so a way that can be told.
    bool hasHome(const Striker& striker) const;

    bool operator==(const Load&) const = default;
};

}  // namespace tapcore
