#include "core/keyboard/import/board/board_draft.h"

#include <algorithm>
#include <cmath>

#include "core/foundation/characters.h"
#include "core/foundation/json_fields.h"
#include "core/foundation/text_pieces.h"

namespace tapcore {

std::vector<std::string> mainLegends(const DraftKey& key) {
    std::vector<std::string> main;
    for (std::size_t i = 0; i < key.legends.size() && (i < 2 || main.empty()); ++i)
        if (const auto legend = trimmedWhiteSpace(key.legends[i]); !legend.empty()) main.emplace_back(legend);
    return main;
}

std::vector<std::string> legendLines(std::string_view text) {
    const auto lines = pieces(text, '\n');
    return {lines.begin(), lines.end()};
}

std::string described(const DraftKey& key) {
    std::string shown;
    for (const std::string& legend : mainLegends(key)) shown += (shown.empty() ? "" : " ") + legend;
    return shown.empty() ? key.place : key.place + " (" + std::string(firstCharacters(shown, 40)) + ")";
}

void BoardDraft::dropKey(const DraftKey& key, std::string_view why) {
    dropped.push_back(described(key) + ": " + std::string(why));
    lostKeys = true;
}

Board::Rect boundsOf(const std::vector<DraftKey>& keys) {
    Board board;
    for (const DraftKey& key : keys) board.keys.push_back(key.key);
    return board.bounds();
}

void checkReach(const Board::Key& key, std::size_t keysBefore, const JsonValue& place) {
    if (keysBefore >= BoardDraft::mostKeys)
        place.fail("more than " + std::to_string(BoardDraft::mostKeys) + " keys");
    const Board::Rect second = key.second.value_or(key.rect());
    for (const double length : {key.x, key.y, key.w, key.h, key.rx.value_or(0), key.ry.value_or(0), key.r,
                                second.x, second.y, second.w, second.h})
        if (!(std::abs(length) <= BoardDraft::furthest)) place.fail("a key too far out or too large");
}

}  // namespace tapcore
