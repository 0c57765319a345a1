#include "core/keyboard/letter_moves.h"

#include <map>
#include <set>
#include <string>

#include "core/foundation/characters.h"

namespace tapcore {
namespace {

/// Number pads hold characters a second time, in a place of their own.
bool isOnNumberPad(KeyCode code) { return (code >= 65 && code <= 92) || code == 95; }

/// The character of each of the board's keys that prints one.
std::map<KeyCode, std::string> charactersOf(const Legends& legends, const std::set<KeyCode>& codes) {
    std::map<KeyCode, std::string> characters;
    for (const auto& [code, legend] : legends)
        if (codes.contains(code) && !isOnNumberPad(code) && !legend.empty() && isSingleCharacter(legend[0]))
            characters.emplace(code, lowercased(legend[0]));
    return characters;
}

}  // namespace

LetterMoves::LetterMoves(const Legends& from, const Legends& to, const Board& board) {
    const auto codes = board.keyCodes();
    const auto there = charactersOf(to, codes);
    std::map<std::string, KeyCode> keys;
    for (const auto& [code, character] : there) keys.emplace(character, code);
    for (const auto& [code, character] : charactersOf(from, codes)) {
        const auto same = there.find(code);
        if (same != there.end() && same->second == character) continue;
        const auto key = keys.find(character);
        if (key == keys.end()) stayed.push_back(code);
        else moved.emplace(code, key->second);
    }
}

}  // namespace tapcore
