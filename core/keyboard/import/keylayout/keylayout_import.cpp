#include "core/keyboard/import/keylayout/keylayout_import.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <utility>

#include "core/counting/counter.h"
#include "core/counting/tally.h"
#include "core/files/store.h"
#include "core/foundation/characters.h"
#include "core/keyboard/import/keylayout/keylayout_actions.h"
#include "core/keyboard/import/keylayout/keylayout_dropped.h"
#include "core/keyboard/import/keylayout/keylayout_key_maps.h"
#include "core/keyboard/import/keylayout/keylayout_modifiers.h"
#include "core/keyboard/import/text/slug.h"
#include "core/keyboard/import/text/xml_document.h"

namespace tapcore {
namespace {

constexpr std::size_t mostBoards = 16;  ///< far more kinds of boards than there are

/// What a layout without a name is called: by its file, without the ending.
std::string nameOf(std::string_view file) {
    const std::string stem = std::filesystem::path(file).stem().string();
    return stem.empty() ? "Imported layout" : stem;
}

/// An id that a file and a setting may have.
std::string idOf(const std::string& name, std::string_view file) {
    const std::string id = slugOf(name, file);
    return Store::isSafeLayoutID(id) ? id : "imported";
}

/// The id itself, or the first of ID-2, ID-3 and so on that is free.
std::string freeID(const std::string& id, const KeylayoutImportOptions& options) {
    const auto isTaken = [&](const std::string& one) {
        return one == options.base || options.taken.contains(one);
    };
    std::string free = id;
    for (int number = 2; isTaken(free); ++number) free = id + "-" + std::to_string(number);
    return free;
}

bool typesALetter(const Legends& legends) {
    return std::any_of(legends.begin(), legends.end(), [](const auto& key) {
        const std::string& plain = key.second.front();
        return isLetter(plain);
    });
}

/// The <layout> elements, one for each kind of board.
std::vector<XmlElement> boardsOf(const XmlElement& keyboard) {
    std::vector<XmlElement> boards;
    for (const XmlElement& layouts : keyboard.children("layouts"))
        for (const XmlElement& layout : layouts.children("layout")) boards.push_back(layout);
    if (boards.empty()) keyboard.fail("no <layout>");
    return boards;
}

class LegendsOfFile {
  public:
    explicit LegendsOfFile(const XmlElement& keyboard)
        : keyboard_(keyboard), maps_(keyboard), actions_(keyboard) {
        dropped_.addForeign(keyboard);
        for (const XmlElement& board : boardsOf(keyboard)) addBoard(board);
        noteUnusedMaps();
    }

    Legends legends() const {
        Legends shown = legends_;
        std::erase_if(shown, [](const auto& entry) { return entry.second.empty(); });
        return shown;
    }
    std::vector<std::string> dropped() const { return dropped_.sentences(); }

  private:
    using Keys = KeylayoutKeyMaps::Keys;

    void addBoard(const XmlElement& board);
    XmlElement modifierMapOf(const XmlElement& board) const;
    Keys keysFor(const XmlElement& board, const std::string& set, std::optional<std::int64_t> index);
    std::int64_t plainIndex(const XmlElement& board, const std::string& set,
                            std::optional<std::int64_t> chosen);
    void addKeys(const Keys& plain, const Keys& shifted, const std::string& set);
    std::vector<std::string> legend(std::uint16_t code, const Keys& plain, const Keys& shifted);
    std::string text(std::uint16_t code, const Keys& keys, const Keys& plain, std::string_view manner);
    void noteUnusedMaps();

    XmlElement keyboard_;
    KeylayoutKeyMaps maps_;
    KeylayoutActions actions_;
    Legends legends_;  ///< with an empty list for a key of the file that keeps its base's
    std::set<std::pair<std::string, std::string>> boards_;  ///< set and modifier map of those added
    std::set<std::pair<std::string, std::int64_t>> used_;   ///< key maps
    KeylayoutDropped dropped_;
};

void LegendsOfFile::addBoard(const XmlElement& board) {
    const std::string set = board.required("mapSet");
    if (boards_.size() == mostBoards) return dropped_.addAt(board, "one board of too many");
    if (!boards_.emplace(set, board.required("modifiers")).second) return;
    const ChosenKeyMaps chosen = chosenKeyMaps(modifierMapOf(board));
    const Keys plain = keysFor(board, set, plainIndex(board, set, chosen.plain));
    addKeys(plain, keysFor(board, set, chosen.shifted), set);
}

XmlElement LegendsOfFile::modifierMapOf(const XmlElement& board) const {
    const std::string id = board.required("modifiers");
    for (const XmlElement& modifierMap : keyboard_.children("modifierMap"))
        if (modifierMap.attribute("id") == id) return modifierMap;
    board.fail("no <modifierMap> has the id " + id);
}

std::int64_t LegendsOfFile::plainIndex(const XmlElement& board, const std::string& set,
                                       std::optional<std::int64_t> chosen) {
    if (chosen && maps_.contains(set, *chosen)) return *chosen;
    const auto lowest = maps_.lowestIndex(set);
    if (!lowest) board.fail("no <keyMapSet> with a key map has the id " + set);
    dropped_.addAt(board,
                   "no key map is chosen without modifiers; taken for it is " + std::to_string(*lowest));
    return *lowest;
}

KeylayoutKeyMaps::Keys LegendsOfFile::keysFor(const XmlElement& board, const std::string& set,
                                              std::optional<std::int64_t> index) {
    if (!index || !maps_.contains(set, *index)) {
        dropped_.addAt(board, "no key map is chosen with shift");
        return {};
    }
    used_.emplace(set, *index);
    return maps_.keys(set, *index, dropped_);
}

void LegendsOfFile::addKeys(const Keys& plain, const Keys& shifted, const std::string& set) {
    for (const auto& [code, key] : plain) {
        if (code >= Counter::keyCodes) {
            dropped_.addKey(code, "keys that are never counted");
            continue;
        }
        std::vector<std::string> own = legend(code, plain, shifted);
        const auto [known, isNew] = legends_.emplace(code, own);
        if (!isNew && known->second != own)
            dropped_.addKey(code,
                            "other legends in " + set + " than in the set of key maps before it, which stay");
    }
    for (const auto& [code, key] : shifted)
        if (!plain.contains(code)) dropped_.addKey(code, "keys that type only with shift");
}

std::vector<std::string> LegendsOfFile::legend(std::uint16_t code, const Keys& plain, const Keys& shifted) {
    const std::string alone = text(code, plain, plain, "");
    if (alone.empty()) return {};
    const std::string withShift = text(code, shifted, plain, "with shift ");
    if (withShift.empty() || withShift == alone) return {alone};
    return {alone, withShift};
}

/// What a key types in a key map; `plain` is the one in which the space bar shows accents.
std::string LegendsOfFile::text(std::uint16_t code, const Keys& keys, const Keys& plain,
                                std::string_view manner) {
    const auto found = keys.find(code);
    if (found == keys.end()) return "";
    const auto space = plain.find(spaceKey);
    const auto spaceText = space == plain.end() ? std::nullopt : std::optional(space->second);
    const KeyLegend legend = actions_.legend(found->second, spaceText);
    if (legend.text.empty()) dropped_.addKey(code, std::string(manner) + std::string(legend.whyNone));
    if (legend.isDead) dropped_.addKey(code, "dead keys; what they combine to is on no key");
    return legend.text;
}

void LegendsOfFile::noteUnusedMaps() {
    const std::size_t unused = maps_.count() - used_.size();
    if (unused != 0)
        dropped_.add("key maps for other modifiers, and bases: " + std::to_string(unused) +
                     "; keys show what they type alone and with shift");
}

}  // namespace

KeylayoutImport importKeylayout(std::string_view bytes, const KeylayoutImportOptions& options) {
    const XmlDocument document(bytes);
    const XmlElement keyboard = document.root();
    if (keyboard.name() != "keyboard")
        keyboard.fail("<" + std::string(keyboard.name()) + "> is not a keyboard layout");
    std::string name = options.name.value_or(keyboard.attribute("name").value_or(""));
    if (name.empty()) name = nameOf(options.file);
    const LegendsOfFile file(keyboard);
    Legends legends = file.legends();
    if (!typesALetter(legends)) keyboard.fail("no key types a letter");
    const std::string wanted = options.id.value_or(idOf(name, options.file));
    const std::string id = options.id ? wanted : freeID(wanted, options);
    return {.layout = {.id = id,
                       .name = name,
                       .base = options.base,
                       .notes = "Imported from " +
                                (options.file.empty() ? "a .keylayout file" : options.file) + ".",
                       .legends = std::move(legends)},
            .dropped = file.dropped(),
            .takenID = id == wanted ? std::nullopt : std::optional(wanted)};
}

}  // namespace tapcore
