#include "app/tappora/key_learning.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>

#include "app/common/keyboard/compiled_keymap.h"

namespace tappora {
namespace {

using tapcore::Board;

/// The board's keys that type, by row and from left to right; each code once.
std::vector<const Board::Key*> typingKeys(const Board& board) {
    std::set<tapcore::KeyCode> codes = typingCodes(IsoKeys::present);
    codes.merge(typingCodes(IsoKeys::absent));
    std::set<tapcore::KeyCode> seen;
    std::vector<const Board::Key*> keys;
    for (const Board::Key& key : board.keys)
        if (key.keyCode && codes.contains(*key.keyCode) && seen.insert(*key.keyCode).second)
            keys.push_back(&key);
    std::stable_sort(keys.begin(), keys.end(), [](const Board::Key* a, const Board::Key* b) {
        return a->row != b->row ? a->row < b->row : a->center().x < b->center().x;
    });
    return keys;
}

std::string printed(tapcore::KeyCode code, const tapcore::Legends& legends) {
    const auto found = legends.find(code);
    return found == legends.end() || found->second.empty() ? "" : fmt::format(" ({})", found->second.front());
}

}  // namespace

KeyLearning::KeyLearning(const Board& board, const tapcore::Legends& legends) {
    int number = 0;
    const Board::Key* before = nullptr;
    for (const Board::Key* key : typingKeys(board)) {
        number = before && before->row == key->row ? number + 1 : 1;
        keys_.push_back(
            {*key->keyCode, fmt::format("{} row, key {} from the left{}", Board::rows.of(key->row), number,
                                        printed(*key->keyCode, legends))});
        before = key;
    }
}

std::string KeyLearning::prompt() const {
    return fmt::format("[{}/{}] {}: press it{}", at_ + 1, 2 * keys_.size(), keys_[at_ / 2].where,
                       isShifted() ? " with shift" : "");
}

std::string& KeyLearning::typed() {
    tapcore::LearnedKey& key = learned_[keys_[at_ / 2].code];
    return isShifted() ? key.shifted : key.plain;
}

void KeyLearning::take(const ScreenEvent& event) {
    using Kind = ScreenEvent::Kind;
    if (isOver()) return;
    switch (event.kind) {
        case Kind::character:
            typed() = event.text;
            ++at_;
            return;
        case Kind::enter:
            typed().clear();
            ++at_;
            return;
        case Kind::erase:
            if (at_ > 0) --at_;
            return;
        case Kind::end:
        case Kind::gone:
            learned_.clear();
            [[fallthrough]];
        case Kind::leave:
            isStopped_ = event.kind != Kind::leave;
            isEnded_ = true;
            return;
        default:
            return;
    }
}

}  // namespace tappora
