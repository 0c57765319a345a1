#pragma once

#include <vector>

#include "core/keyboard/import/board/board_draft.h"

namespace tapcore {

/// A board whose keys lie nearly as those of a draft.
struct KnownBoard {
    const Board* board = nullptr;  ///< null when no board is like it
    /// For each key of the draft the board's key at the same place and of the same size, or null.
    std::vector<const Board::Key*> keys;
};

/// Which of the boards has most of its keys where the draft has its own: at least three in five of either.
/// The two are laid on each other at their upper left corners, or the lower left ones. The boards own what is
/// returned.
KnownBoard boardLike(const std::vector<DraftKey>& keys, const std::vector<Board>& boards);

}  // namespace tapcore
