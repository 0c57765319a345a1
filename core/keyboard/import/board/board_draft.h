#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/keyboard/board.h"

namespace tapcore {

/// A key as a keyboard file has it: a place, and what is printed on it. What it sends and what strikes it is
/// still open.
struct DraftKey {
    Board::Key key;
    /// The upper one first, then the lower one, then those at other places.
    std::vector<std::string> legends;
    /// Where it is in the file: "row 2, key 5".
    std::string place;
    std::size_t order = 0;  ///< of QMK files: which key of the layout it is, from 0
    std::optional<std::pair<std::int64_t, std::int64_t>> matrix = {};  ///< its row and column, where told
    bool isInKeymap = false;            ///< whether a keymap has a place for it
    std::string keymapWord = {};        ///< what the keymap says there: "KC_A", "MO(1)"
    std::optional<KeyCode> sends = {};  ///< the code that this word means
};

/// A board as a keyboard file has it.
struct BoardDraft {
    /// Files with more keys are refused.
    static constexpr std::size_t mostKeys = 1000;
    /// Keys must be within so many units of the origin, and be no larger.
    static constexpr double furthest = 1000;
    /// Rows and columns of the matrix are 0 to this.
    static constexpr std::int64_t lastInMatrix = 65535;

    std::string name = {};
    std::string maker = {};
    std::vector<DraftKey> keys = {};
    /// What of the file is not among the keys, and why, one sentence each.
    std::vector<std::string> dropped = {};
    bool lostKeys = false;    ///< whether what was dropped had a place on the board
    std::string layout = {};  ///< of QMK files: the layout that was read
    /// The names that keymaps have for that layout: its own, its aliases, and LAYOUT where it is the only
    /// one.
    std::vector<std::string> layoutNames = {};
    std::optional<std::size_t> layoutKeys = {};     ///< how many keys that layout has, encoders with them
    std::optional<std::size_t> matrixColumns = {};  ///< how many columns the matrix has, where told

    void dropKey(const DraftKey& key, std::string_view why);
};

/// The first two legends, or the first other one where these are blank; without white space at their ends.
std::vector<std::string> mainLegends(const DraftKey& key);

/// The legends of a text that has one a line.
std::vector<std::string> legendLines(std::string_view text);

/// "row 2, key 5 (Esc)", for telling the user which key is meant.
std::string described(const DraftKey& key);

/// The smallest upright rectangle around all keys; see `Board::bounds`.
Board::Rect boundsOf(const std::vector<DraftKey>& keys);

class JsonValue;

/// Throws JsonError when a key is or reaches too far out, or is one too many; `place` is where it is in the
/// file.
void checkReach(const Board::Key& key, std::size_t keysBefore, const JsonValue& place);

}  // namespace tapcore
