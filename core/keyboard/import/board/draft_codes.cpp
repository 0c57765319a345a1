#include "core/keyboard/import/board/draft_codes.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <map>
#include <optional>
#include <string_view>

#include "core/foundation/integers.h"
#include "core/keyboard/import/board/key_names.h"

namespace tapcore {
namespace {

constexpr KeyCode deleteCode = 51;
constexpr KeyCode forwardDeleteCode = 117;
constexpr KeyCode fnCode = 63;

bool types(KeyCode code) {
    const KeyName* key = keyNamed(code);
    return key && key->types();
}

/// Keys of this board's own: what they choose is never sent.
bool isLayerKey(const DraftKey& key) {
    constexpr std::string_view words[] = {"fn",    "raise", "lower", "adjust", "layer", "nav", "sym",
                                          "hyper", "meh",   "mo",    "tg",     "to",    "lt"};
    for (const std::string& legend : mainLegends(key)) {
        std::string word = comparable(legend);
        word.erase(std::min(word.find_first_of("(0123456789"), word.size()));
        if (std::find(std::begin(words), std::end(words), word) != std::end(words)) return true;
    }
    return false;
}

class Coder {
  public:
    Coder(std::vector<DraftKey>& keys, const std::vector<KeyReading>& readings, const KnownBoard& alike)
        : keys_(keys), readings_(readings), alike_(alike) {
        for (const DraftKey& key : keys_) {
            legends_.push_back(mainLegends(key));
            hasKeymap_ = hasKeymap_ || key.isInKeymap;
        }
        readContext();
        middle_ = middle();
    }

    CodesTold run() {
        for (const bool shiftedOnly : {false, true})
            for (std::size_t i = 0; i < keys_.size(); ++i)
                if (readings_[i].isShiftedOnly == shiftedOnly) giveReadCode(i);
        if (!hasKeymap_) guess();
        for (std::size_t i = 0; i < keys_.size(); ++i) tellOfMissing(i);
        if (blank_ > 0) told_.without.push_back(counted(blank_, "key", "keys") + " without legends");
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

    KeyCode placeCode(std::size_t i) const { return *alike_.keys[i]->keyCode; }
    bool hasPlaceCode(std::size_t i) const { return alike_.keys[i] && alike_.keys[i]->keyCode; }

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
        const KeyReading& reading = readings_[i];
        if (hasKeymap_ && keys_[i].sends) claim(i, *keys_[i].sends);
        else if (hasKeymap_) return;
        else if (reading.typed && alike_.placeDecides[i]) claimPlace(i);
        else if (reading.typed && !claim(i, reading.typed->code) && reading.named)
            claim(i, reading.named->right);
        else if (reading.named && !reading.typed) claimNamed(i, *reading.named);
    }

    /// A code by place that the key's legend does not say is told.
    void claimPlace(std::size_t i) {
        if (claim(i, placeCode(i)) && !readings_[i].allows(placeCode(i)))
            tellOfPlace(i, "; by its legend " + codeText(readings_[i].typed->code));
    }

    void tellOfPlace(std::size_t i, const std::string& more = "") {
        told_.guessed.push_back(described(keys_[i]) + ": " + codeText(placeCode(i)) +
                                ", by its place as on " + alike_.board->name + more);
    }

    void guess() {
        for (std::size_t i = 0; i < keys_.size(); ++i) givePlaceCode(i);
        giveSpace();
        if (guessedBlank_ > 0)
            told_.guessed.insert(told_.guessed.begin(),
                                 counted(guessedBlank_, "key", "keys") + " without legends" + asOn());
    }

    std::string asOn() const { return ", by their places as on " + alike_.board->name; }

    /// Of a key whose legends say nothing known, its place may say what it sends.
    void givePlaceCode(std::size_t i) {
        if (!readings_[i].saysNothing() || !alike_.placeSpeaks[i] || isLayerKey(keys_[i])) return;
        if (!owners_.emplace(placeCode(i), i).second) return;
        keys_[i].key.keyCode = placeCode(i);
        if (legends_[i].empty()) ++guessedBlank_;
        else tellOfPlace(i);
    }

    /// "41 (semicolon)"
    static std::string codeText(KeyCode code) {
        const KeyName* name = keyNamed(code);
        return std::to_string(code) + (name ? " (" + std::string(name->id) + ")" : "");
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

    /// A shift key may be nearly three units wide: without legends only a longer one is surely the space bar.
    /// Of two that are equally wide neither is.
    void giveSpace() {
        const double least = lackLegends(readings_) ? 4 : 2;
        std::map<double, std::vector<std::size_t>> blank;
        for (std::size_t i = 0; i < keys_.size(); ++i) {
            const Board::Key& key = keys_[i].key;
            if (legends_[i].empty() && !key.keyCode && key.w >= least) blank[key.w].push_back(i);
        }
        if (blank.empty() || blank.rbegin()->second.size() > 1) return;
        const std::size_t widest = blank.rbegin()->second.front();
        if (claim(widest, spaceKey))
            told_.guessed.push_back(described(keys_[widest]) + ": " + codeText(spaceKey) +
                                    ", the widest key without legends");
    }

    void tellOfMissing(std::size_t i) {
        const DraftKey& key = keys_[i];
        if (key.key.keyCode) return;
        if (const auto wanted = wanted_.find(i); wanted != wanted_.end()) {
            const auto owner = owners_.find(wanted->second);
            const std::string code = std::to_string(wanted->second);
            told_.without.push_back(described(key) + ": " + code + " is sent by " +
                                    described(keys_[owner->second]));
        } else if (hasKeymap_) {
            told_.without.push_back(described(key) + ": " + notSent(key));
        } else if (legends_[i].empty()) {
            ++blank_;
        } else {
            told_.without.push_back(described(key) + ": not known");
        }
    }

    static std::string notSent(const DraftKey& key) {
        return key.isInKeymap ? key.keymapWord + " in the keymap" : "not in the keymap";
    }

    std::vector<DraftKey>& keys_;
    const std::vector<KeyReading>& readings_;
    const KnownBoard& alike_;
    std::vector<std::vector<std::string>> legends_;
    std::map<KeyCode, std::size_t> owners_;  ///< which key has a code
    std::map<std::size_t, KeyCode> wanted_;  ///< the code that a key asked for last
    CodesTold told_;
    bool hasKeymap_ = false;
    bool isMac_ = false;
    bool hasBackspace_ = false;
    double middle_ = 0;
    std::size_t blank_ = 0;
    std::size_t guessedBlank_ = 0;
};

}  // namespace

CodesTold giveCodes(std::vector<DraftKey>& keys, const std::vector<KeyReading>& readings,
                    const KnownBoard& alike) {
    return Coder(keys, readings, alike).run();
}

}  // namespace tapcore
