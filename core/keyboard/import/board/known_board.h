#pragma once

#include <vector>

#include "core/keyboard/board.h"
#include "core/keyboard/import/board/board_draft.h"
#include "core/keyboard/import/board/key_reading.h"

namespace tapcore {

/// A board of ours, laid on a draft.
struct KnownBoard {
    const Board* board = nullptr;  ///< null when no board is like it
    /// For each key of the draft the board's key at the same place and of the same size, or null: also where
    /// the legends of that row say that other keys are there.
    std::vector<const Board::Key*> keys;
    /// For each key of the draft whether its place decides over the character that its legends name.
    std::vector<bool> placeDecides;
    /// For each key of the draft whether its place alone may say what it sends, should its legends say
    /// nothing.
    std::vector<bool> placeSpeaks;
};

/// Which of the boards is like the draft: at least three in five of the keys of each match, and
/// the legends agree. The two are laid on each other at their upper left corners or the lower left ones, and
/// the halves of split boards each on its own, at their outer corners. A row in which half of the legends
/// agree, and the others are not merely moved, is the same row. A draft without legends must have all but one
/// in twenty of its keys where the board has them.
///
/// Places alone speak where all boards are alike: on those with the rows of a typewriter, apart from the keys
/// above the arrows where these are in a column of their own, and on others for letters. The boards own
/// what is returned.
KnownBoard boardLike(const std::vector<DraftKey>& keys, const std::vector<KeyReading>& readings,
                     const std::vector<Board>& boards);

}  // namespace tapcore
