#include "core/keyboard/load.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/counting/chords.h"
#include "core/foundation/checked.h"

namespace tapcore {
namespace {

Load::Striker strikerOf(const Board::Key& key) { return {key.hand, key.finger}; }

/// Where each finger rests: its first home key, or null for one that has none.
std::map<Load::Striker, const Board::Key*> homesOf(const Board& board) {
    std::map<Load::Striker, const Board::Key*> homes;
    for (const Board::Key& key : board.keys) {
        const Board::Key*& home = homes[strikerOf(key)];
        if (key.home && !home) home = &key;
    }
    return homes;
}

/// The way that one press takes a finger, there and back.
double metresTo(const Board::Key& key, const Board::Key* home) {
    if (!home) return 0;
    const auto [x, y] = key.center();
    const auto [homeX, homeY] = home->center();
    return 2 * std::hypot(x - homeX, y - homeY) * Board::metresPerUnit;
}

std::vector<LeftOut> named(const std::set<KeyCode>& codes, const Legends& legends,
                           const Tally::KeyCounts& counts) {
    std::vector<LeftOut> leftOut;
    for (const KeyCode code : codes)
        leftOut.push_back({code, Chords::name(code, legends), counts.valueOr(code, 0)});
    return leftOut;
}

Tally::KeyCounts without(const std::set<KeyCode>& codes, const Tally::KeyCounts& counts) {
    Tally::KeyCounts kept;
    for (const auto& [code, count] : counts)
        if (!codes.contains(code)) kept[code] = count;
    return kept;
}

/// The presses of a key, taken out of the counts.
std::int64_t taken(Tally::KeyCounts& counts, const Board::Key& key) {
    if (!key.keyCode || !counts.contains(*key.keyCode)) return 0;
    return std::exchange(counts[*key.keyCode], 0);
}

void add(Load::Part& part, std::int64_t presses, double metres) {
    addChecked(part.presses, presses);
    part.metres += metres;
}

}  // namespace

Load::Load(const Board& board, const Legends& legends, const Tally::KeyCounts& counts,
           const std::set<KeyCode>& leftOutCodes, const KeyRemap& moves)
    : leftOut(named(leftOutCodes, legends, counts)) {
    const auto homes = homesOf(board);
    for (const auto& [striker, home] : homes)
        if (!home) homeless.push_back(striker);
    Tally::KeyCounts left = remapped(without(leftOutCodes, counts), moves);
    for (const Board::Key& key : board.keys) {
        const Striker striker = strikerOf(key);
        const std::int64_t presses = taken(left, key);
        const double metres = static_cast<double>(presses) * metresTo(key, homes.at(striker));
        for (Part* part : {&all, &byFinger[striker], &byHand[key.hand], &byRow[key.row]})
            add(*part, presses, metres);
    }
    offBoard = sumOfCounts(left);
}

double Load::share(const Part& part) const {
    return all.presses == 0 ? 0 : static_cast<double>(part.presses) / static_cast<double>(all.presses);
}

bool Load::hasHome(const Striker& striker) const {
    return std::find(homeless.begin(), homeless.end(), striker) == homeless.end();
}

}  // namespace tapcore
