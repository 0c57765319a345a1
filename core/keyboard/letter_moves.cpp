#include "core/keyboard/letter_moves.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "core/foundation/characters.h"

namespace tapcore {
namespace {

/// Number pads hold characters a second time, in a place of their own.
bool isOnNumberPad(KeyCode code) { return (code >= 65 && code <= 92) || code == 95; }

/// What the board's keys print, unshifted or shifted, where that is a character.
std::map<KeyCode, std::string> charactersOf(const Legends& legends, std::size_t shifted,
                                            const std::set<KeyCode>& codes) {
    std::map<KeyCode, std::string> characters;
    for (const auto& [code, legend] : legends)
        if (codes.contains(code) && !isOnNumberPad(code) && legend.size() > shifted &&
            isSingleCharacter(legend[shifted]))
            characters.emplace(code, lowercased(legend[shifted]));
    return characters;
}

/// The keys of characters: of several for one, the lowest.
class Keys {
  public:
    explicit Keys(std::map<KeyCode, std::string> characters) : characters_(std::move(characters)) {
        for (const auto& [code, character] : characters_) keys_.emplace(character, code);
    }

    std::optional<KeyCode> find(const std::string& character, KeyCode preferred) const {
        const auto same = characters_.find(preferred);
        if (same != characters_.end() && same->second == character) return preferred;
        const auto key = keys_.find(character);
        return key == keys_.end() ? std::nullopt : std::optional(key->second);
    }

  private:
    std::map<KeyCode, std::string> characters_;
    std::map<std::string, KeyCode> keys_;
};

}  // namespace

LetterMoves::LetterMoves(const Legends& from, const Legends& to, const Board& board) {
    const auto codes = board.keyCodes();
    const Keys unshifted(charactersOf(to, 0, codes));
    const Keys shifted(charactersOf(to, 1, codes));
    for (const auto& [code, character] : charactersOf(from, 0, codes)) {
        auto key = unshifted.find(character, code);
        if (!key) key = shifted.find(character, code);
        if (!key) stayed.push_back(code);
        else if (*key != code) moved.emplace(code, *key);
    }
}

}  // namespace tapcore
