#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "core/counting/key_face.h"
#include "core/counting/tally.h"
#include "core/keyboard/board.h"

namespace tapcore {

/// Presses laid over the keys of a board, each key with a heat step from 0 (unused) to 5.
struct Heatmap {
    /// How many steps there are above 0.
    static constexpr std::int64_t steps = 5;

    struct Cell {
        Board::Key key;
        std::vector<std::string> legend;  ///< what the layout prints on the key; empty when nothing
        std::int64_t count = 0;           ///< presses of the key's code
        std::int64_t step = 0;
        bool off = false;  ///< left out by the user: shown, but neither ranked nor counted in totals

        const std::string& id() const { return key.id; }
        /// The lines to print on the key cap: the shifted legend above the other, a letter once, as its
        /// capital.
        std::vector<std::string> faceLegend() const;

        bool operator==(const Cell&) const = default;
    };

    struct TopKey {
        std::string name;
        std::int64_t count = 0;
        std::int64_t percent = 0;  ///< of the total, rounded
        std::optional<KeyCode> code = {};

        bool operator==(const TopKey&) const = default;
    };

    std::vector<Cell> cells;    ///< one for each key of the board, in its order
    std::int64_t offBoard = 0;  ///< presses of codes that no key of the board sends, left-out ones too
    std::int64_t busiest = 0;   ///< the highest count of a key that is not left out

    /// `leftOut` holds the codes that the user wants left out.
    Heatmap(const Board& board, const Legends& legends, const Tally::KeyCounts& counts,
            const std::set<KeyCode>& leftOut);

    /// The presses of the cells that are not left out. A code on two keys counts twice.
    std::int64_t total() const;

    /// The most pressed keys, at most `n`, by count descending and then by key id; each code once, and
    /// without those never pressed or left out.
    std::vector<TopKey> top(std::int64_t n) const;

    /// What to call a key code: the first legend of the key that sends it, or the key's id, with a capital.
    /// Nothing when no key of the board sends it.
    std::optional<std::string> name(KeyCode code) const;

    /// What gives a count its step among `counts`, three quarters by its rank among them and one quarter by
    /// its size on a logarithmic scale: 0 below 1, else 1 to 5, and 5 for the largest.
    static std::function<std::int64_t(std::int64_t count)> ranked(std::vector<std::int64_t> counts);

    /// The step of a count on a logarithmic scale up to the busiest, for where there is no list to rank in.
    static std::int64_t step(std::int64_t count, std::int64_t busiest);

    bool operator==(const Heatmap&) const = default;
};

}  // namespace tapcore
