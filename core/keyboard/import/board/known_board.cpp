#include "core/keyboard/import/board/known_board.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <utility>

#include "core/keyboard/import/board/board_overlay.h"

namespace tapcore {
namespace {

/// Legends of the draft beside what the board's keys send at their places.
struct Agreement {
    std::size_t same = 0;
    std::size_t both = 0;
    std::map<long, std::size_t> moved = {};  ///< those that the board has in this row, by how far away

    bool isClear() const { return both >= 6 && same * 4 >= both * 3; }
};

struct Evidence {
    std::map<Board::Row, Agreement> rows;
    Agreement all;
    Agreement names;  ///< of keys that type nothing

    bool holds() const { return all.same * 2 >= all.both; }
    /// Of a row of another country a half agrees, and the rest is elsewhere, each on its own.
    bool holds(const Agreement& row) const {
        return row.same * 2 >= row.both &&
               std::none_of(row.moved.begin(), row.moved.end(),
                            [&](const auto& group) { return all.moved.at(group.first) >= 3; });
    }
    bool holdsThroughout() const {
        return holds() &&
               std::all_of(rows.begin(), rows.end(), [&](const auto& row) { return holds(row.second); });
    }
    /// Keys in their usual places whose characters are arranged in another way, such as Dvorak's.
    bool isRearranged() const { return !holds() && names.isClear(); }
};

/// How many keys away from a place of the same row the board has what the legends say.
std::optional<long> distanceInRow(const Board& board, const KeyReading& reading, const Board::Key& place) {
    const Board::Key* own = reading.typed ? board.key(reading.typed->code) : nullptr;
    if (!own || own->row != place.row) return std::nullopt;
    return std::lround(own->center().x - place.center().x);
}

void add(Agreement& agreement, const Board& board, const KeyReading& reading, const Board::Key& place) {
    ++agreement.both;
    if (reading.allows(*place.keyCode)) ++agreement.same;
    else if (const auto distance = distanceInRow(board, reading, place)) ++agreement.moved[*distance];
}

Evidence evidenceOf(const BoardOverlay& overlay, const std::vector<KeyReading>& readings) {
    Evidence evidence;
    for (std::size_t i = 0; i < readings.size(); ++i) {
        const Board::Key* place = overlay.keys[i];
        if (!place || !place->keyCode || readings[i].saysNothing()) continue;
        add(evidence.rows[place->row], *overlay.board, readings[i], *place);
        add(evidence.all, *overlay.board, readings[i], *place);
        if (!readings[i].typed) add(evidence.names, *overlay.board, readings[i], *place);
    }
    return evidence;
}

bool isLetter(KeyCode code) {
    const KeyName* key = keyNamed(code);
    return key && key->id.size() == 1 && key->id[0] >= 'a';
}

/// Insert to Page Down: in the block of six that full boards have for them, or in a column in any order.
bool isAboveArrows(KeyCode code) {
    return code == 114 || code == 115 || code == 116 || code == 117 || code == 119 || code == 121;
}

/// Whether all boards like this one have this key in this place.
bool isUsual(const Board& board, KeyCode code) {
    constexpr KeyCode insertCode = 114;
    if (!hasTypewriterRows(board)) return isLetter(code);
    return !isAboveArrows(code) || board.key(insertCode);
}

/// Only the rows in which the legends agree are this board's.
KnownBoard known(BoardOverlay overlay, const Evidence& evidence) {
    KnownBoard known{
        .board = overlay.board, .keys = std::move(overlay.keys), .placeDecides = {}, .placeSpeaks = {}};
    for (const Board::Key*& key : known.keys) {
        const auto row = key ? evidence.rows.find(key->row) : evidence.rows.end();
        const bool agrees =
            row == evidence.rows.end() ? evidence.holdsThroughout() : evidence.holds(row->second);
        const bool decides = key && key->keyCode && agrees;
        known.placeDecides.push_back(decides);
        known.placeSpeaks.push_back(decides && isUsual(*known.board, *key->keyCode));
        if (!agrees && !evidence.isRearranged()) key = nullptr;
    }
    return known;
}

bool areNear(std::size_t one, std::size_t other) { return one * 5 >= other * 3 && other * 5 >= one * 3; }

}  // namespace

KnownBoard boardLike(const std::vector<DraftKey>& keys, const std::vector<KeyReading>& readings,
                     const std::vector<Board>& boards) {
    const bool isBlank = lackLegends(readings);
    BoardOverlay best;
    double bestScore = 0;
    for (const Board& board : boards) {
        if (!areNear(keys.size(), board.keys.size())) continue;
        for (BoardOverlay& overlay : overlays(keys, board)) {
            const Evidence evidence = evidenceOf(overlay, readings);
            const bool isLike = isBlank ? overlay.covers(19, 20) : overlay.covers(3, 5);
            if (!isLike || (!evidence.holds() && !evidence.isRearranged())) continue;
            const auto agreed = static_cast<double>(1 + evidence.all.same);
            const double score = overlay.fit * agreed / static_cast<double>(1 + evidence.all.both);
            if (score <= bestScore) continue;
            bestScore = score;
            best = std::move(overlay);
        }
    }
    if (best.board) {
        const Evidence evidence = evidenceOf(best, readings);
        return known(std::move(best), evidence);
    }
    return {.board = nullptr,
            .keys = std::vector<const Board::Key*>(keys.size()),
            .placeDecides = std::vector<bool>(keys.size()),
            .placeSpeaks = std::vector<bool>(keys.size())};
}

}  // namespace tapcore
