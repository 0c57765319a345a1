#pragma once

#include <vector>

#include "core/keyboard/board.h"
#include "core/keyboard/import/board/board_draft.h"

namespace tapcore {

/// A board placed on a draft: for each key of the draft the board's key that covers it, or null.
struct BoardOverlay {
    const Board* board = nullptr;
    std::vector<const Board::Key*> keys;
    double fit = 0;  ///< how much of the two boards matches, 0 to 1

    std::size_t alike() const;
    /// Whether at least `part` in `whole` of the keys of each board match.
    bool covers(std::size_t part, std::size_t whole) const;
};

/// The ways in which a board is tried: whole, and split boards in halves. They refer to the board.
std::vector<BoardOverlay> overlays(const std::vector<DraftKey>& draft, const Board& board);

/// Whether the letters of a board are in the rows of a typewriter, in one piece and staggered; then its other
/// keys are also where everybody has them.
bool hasTypewriterRows(const Board& board);

}  // namespace tapcore
