#include "core/keyboard/import/board/draft_codes.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <optional>

#include "core/foundation/characters.h"
#include "core/keyboard/import/board/key_names.h"

namespace tapcore {
namespace {

constexpr KeyCode spaceCode = 49;
constexpr KeyCode deleteCode = 51;
constexpr KeyCode forwardDeleteCode = 117;
constexpr KeyCode fnCode = 63;

/// What a key's legends say: nothing, a name, or a character.
struct Reading {
    std::optional<NamedCodes> named = {};
    const KeyName* typed = nullptr;
};

Reading readLine(const std::string& line, bool isAlone) {
    const bool canBeName = isAlone || !isSingleCharacter(comparable(line));
    Reading reading{.typed = keyTyping(line)};
    if (canBeName) reading.named = codesNamed(line);
    return reading;
}

/// "!" over "1" is a key that types; "Page" over "Up" and "7" over "Home" are names; else the first legend
/// that says something counts.
Reading read(const std::vector<std::string>& legends) {
    if (legends.empty()) return {};
    if (legends.size() == 1) return readLine(legends[0], true);
    const KeyName* lower = keyTyping(legends[1]);
    if (lower && legends[0] == lower->shifted) return {.typed = lower};
    if (const auto joined = codesNamed(legends[0] + legends[1])) return {.named = joined};
    for (const std::string& line : legends)
        if (const Reading reading = readLine(line, false); reading.named || reading.typed) return reading;
    return {};
}

bool types(KeyCode code) {
    const KeyName* key = keyNamed(code);
    return key && key->types();
}

class Coder {
  public:
    Coder(std::vector<DraftKey>& keys, const std::vector<const Board::Key*>& alike)
        : keys_(keys), alike_(alike) {
        for (const DraftKey& key : keys_) {
            legends_.push_back(mainLegends(key));
            readings_.push_back(read(legends_.back()));
        }
        readContext();
        placesDecide_ = doPlacesDecide();
        middle_ = middle();
    }

    std::vector<std::string> run() {
        for (std::size_t i = 0; i < keys_.size(); ++i) giveReadCode(i);
        for (std::size_t i = 0; i < keys_.size(); ++i) givePlaceCode(i);
        giveSpace();
        for (std::size_t i = 0; i < keys_.size(); ++i) tellOfMissing(i);
        if (blank_ > 0)
            told_.push_back(std::to_string(blank_) + (blank_ == 1 ? " key" : " keys") + " without legends");
        return std::move(told_);
    }

  private:
    /// Mac boards have an fn key that is counted; others have a key of that name that never leaves the board.
    void readContext() {
        for (std::size_t i = 0; i < keys_.size(); ++i) {
            for (const std::string& legend : legends_[i]) isMac_ = isMac_ || isMacModifier(legend);
            const auto& named = readings_[i].named;
            hasBackspace_ = hasBackspace_ || (named && named->left == deleteCode);
        }
    }

    KeyCode placeCode(std::size_t i) const { return *alike_[i]->keyCode; }
    bool hasPlaceCode(std::size_t i) const { return alike_[i] && alike_[i]->keyCode; }

    bool doPlacesDecide() const {
        std::size_t both = 0;
        std::size_t same = 0;
        for (std::size_t i = 0; i < keys_.size(); ++i) {
            if (!readings_[i].typed || !hasPlaceCode(i)) continue;
            ++both;
            if (readings_[i].typed->code == placeCode(i)) ++same;
        }
        return same * 2 >= both;
    }

    /// Where the left hand's side ends: the middle of the keys that type, or of all where too few do.
    double middle() const {
        double sum = 0;
        int count = 0;
        for (std::size_t i = 0; i < keys_.size(); ++i) {
            if (!readings_[i].typed && !(hasPlaceCode(i) && types(placeCode(i)))) continue;
            sum += keys_[i].key.center().x;
            ++count;
        }
        const Board::Rect bounds = boundsOf(keys_);
        return count >= 10 ? sum / count : bounds.x + bounds.w / 2;
    }

    void giveReadCode(std::size_t i) {
        const auto& [named, typed] = readings_[i];
        if (typed && hasPlaceCode(i) && placesDecide_) claim(i, placeCode(i));
        else if (typed && !claim(i, typed->code) && named) claim(i, named->right);
        else if (named && !typed) claimNamed(i, *named);
    }

    /// Of a key whose legends say nothing known, its place may say what it sends.
    void givePlaceCode(std::size_t i) {
        const Reading& reading = readings_[i];
        if (reading.named || reading.typed || !hasPlaceCode(i)) return;
        if (owners_.emplace(placeCode(i), i).second) keys_[i].key.keyCode = placeCode(i);
    }

    void claimNamed(std::size_t i, NamedCodes codes) {
        if (codes.left == fnCode && !isMac_) return;
        if (codes.left == forwardDeleteCode && !hasBackspace_ && comparable(legends_[i][0]) == "delete")
            codes = {deleteCode, deleteCode};
        const bool isPlaced = hasPlaceCode(i) && (placeCode(i) == codes.left || placeCode(i) == codes.right);
        if (isPlaced && claim(i, placeCode(i))) return;
        const bool isSided = keyNamed(codes.right)->id.starts_with("right-");
        const bool isRight = isSided && keys_[i].key.center().x > middle_;
        if (!claim(i, isRight ? codes.right : codes.left)) claim(i, isRight ? codes.left : codes.right);
    }

    /// Whether the key has the code now, because no key had it.
    bool claim(std::size_t i, KeyCode code) {
        const auto [owner, isFree] = owners_.emplace(code, i);
        if (isFree) keys_[i].key.keyCode = code;
        wanted_[i] = code;
        return isFree;
    }

    void giveSpace() {
        std::optional<std::size_t> widest;
        for (std::size_t i = 0; i < keys_.size(); ++i) {
            const Board::Key& key = keys_[i].key;
            const bool isBlank = legends_[i].empty() && !key.keyCode && key.w >= 2;
            if (isBlank && (!widest || key.w > keys_[*widest].key.w)) widest = i;
        }
        if (widest) claim(*widest, spaceCode);
    }

    void tellOfMissing(std::size_t i) {
        const DraftKey& key = keys_[i];
        if (key.key.keyCode) return;
        if (const auto wanted = wanted_.find(i); wanted != wanted_.end()) {
            const auto owner = owners_.find(wanted->second);
            const std::string code = std::to_string(wanted->second);
            told_.push_back(described(key) + ": " + code + " is sent by " + described(keys_[owner->second]));
        } else if (legends_[i].empty()) {
            ++blank_;
        } else {
            told_.push_back(described(key) + ": not known");
        }
    }

    std::vector<DraftKey>& keys_;
    const std::vector<const Board::Key*>& alike_;
    std::vector<std::vector<std::string>> legends_;
    std::vector<Reading> readings_;
    std::map<KeyCode, std::size_t> owners_;  ///< which key has a code
    std::map<std::size_t, KeyCode> wanted_;  ///< the code that a key asked for last
    std::vector<std::string> told_;
    bool isMac_ = false;
    bool hasBackspace_ = false;
    bool placesDecide_ = false;
    double middle_ = 0;
    std::size_t blank_ = 0;
};

}  // namespace

std::vector<std::string> giveCodes(std::vector<DraftKey>& keys, const std::vector<const Board::Key*>& alike) {
    return Coder(keys, alike).run();
}

}  // namespace tapcore
