#pragma once

#include <vector>

#include "core/counting/key_face.h"
#include "core/counting/tally.h"
#include "core/keyboard/board.h"

namespace tapcore {

/// Where the keys of one layout have their characters on another: what the same typing would press there.
struct LetterMoves {
    KeyRemap moved;  ///< from a character's key to the key that carries it under the other layout
    std::vector<KeyCode>
        stayed;  ///< keys, ascending, whose character has no key there; their presses stay put

    /// Letters and signs move, by what their key prints unshifted, to the key that prints it unshifted, else
    /// shifted; capitals are alike. Keys with a name (Tab), the number pad, and keys that the board has not,
    /// take no part. Of several keys that carry a character it is the own one if that is among them, else the
    /// one of the lowest code.
    LetterMoves(const Legends& from, const Legends& to, const Board& board);

    bool operator==(const LetterMoves&) const = default;
};

}  // namespace tapcore
