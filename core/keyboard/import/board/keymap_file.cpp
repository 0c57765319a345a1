#include "core/keyboard/import/board/keymap_file.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>

#include "core/foundation/integers.h"
#include "core/foundation/json_fields.h"
#include "core/keyboard/import/board/firmware_keycodes.h"
#include "core/keyboard/import/board/keymap_source.h"
#include "core/keyboard/import/text/lenient_json.h"

namespace tapcore {
namespace {

/// A word, or the number that Vial writes where the matrix has no key.
std::string wordOf(const JsonValue& json) {
    if (json.raw().is_number_integer()) return json.raw().dump();
    return json.string();
}

std::vector<std::string> wordsOf(const JsonValue& json) {
    std::vector<std::string> words;
    for (std::size_t i = 0; i < json.size(); ++i) words.push_back(wordOf(json.element(i)));
    return words;
}

/// QMK's keymaps name their layout, VIA's do not.
Keymap readLayers(const JsonValue& document) {
    Keymap keymap{.rows = {wordsOf(document.member("layers").element(0))}};
    const auto layout = document.optionalMember("layout");
    if (!layout) keymap.order = Keymap::Order::flat;
    else keymap.layout = layout->string();
    return keymap;
}

Keymap readMatrix(const JsonValue& document) {
    Keymap keymap{.order = Keymap::Order::matrix};
    const JsonValue base = document.member("layout").element(0);
    for (std::size_t i = 0; i < base.size(); ++i) keymap.rows.push_back(wordsOf(base.element(i)));
    return keymap;
}

Keymap readDocument(std::string_view text) {
    const nlohmann::json json = parseLenientJson(text);
    const JsonValue document(json);
    if (!json.is_object()) document.fail("not a keymap");
    if (json.contains("layers")) return readLayers(document);
    if (json.contains("layout") && json["layout"].is_array()) return readMatrix(document);
    if (json.contains("layouts"))
        document.fail("this describes a board; a keymap has \"layers\", or is a keymap.c or a .vil file");
    document.fail("not a keymap: neither \"layers\" nor a \"layout\" of rows");
}

/// The words in the order of the matrix, whichever way they are kept.
class MatrixWords {
  public:
    MatrixWords(const Keymap& keymap, const BoardDraft& draft) : keymap_(keymap) {
        if (keymap.order == Keymap::Order::matrix) return;
        if (!draft.matrixColumns)
            throw KeymapError("the board's file does not say how many columns its matrix has");
        columns_ = static_cast<std::int64_t>(*draft.matrixColumns);
        if (columns_ == 0 || keymap.rows[0].size() % *draft.matrixColumns != 0)
            throw KeymapError("belongs to another board: " + counted(keymap.rows[0].size(), "key", "keys") +
                              ", which are not rows of " + std::to_string(columns_));
    }

    const std::string* at(std::int64_t row, std::int64_t column) const {
        if (row < 0 || column < 0 || (columns_ != 0 && column >= columns_)) return nullptr;
        return columns_ == 0 ? word(row, column) : word(0, row * columns_ + column);
    }

  private:
    const std::string* word(std::int64_t row, std::int64_t at) const {
        if (static_cast<std::size_t>(row) >= keymap_.rows.size()) return nullptr;
        const auto& words = keymap_.rows[static_cast<std::size_t>(row)];
        return static_cast<std::size_t>(at) < words.size() ? &words[static_cast<std::size_t>(at)] : nullptr;
    }

    const Keymap& keymap_;
    std::int64_t columns_ = 0;  ///< 0 where the rows are kept apart
};

void checkLayout(const BoardDraft& draft, const Keymap& keymap) {
    if (!draft.layoutKeys)
        throw KeymapError("goes with QMK's info.json or keyboard.json, which tells the order of its keys");
    const auto& names = draft.layoutNames;
    if (!keymap.layout.empty() && std::find(names.begin(), names.end(), keymap.layout) == names.end())
        throw KeymapError("belongs to another layout: " + keymap.layout + ", but " + draft.layout +
                          " was read; choose the layout with --layout");
    const std::size_t count = keymap.rows[0].size();
    if (count != *draft.layoutKeys)
        throw KeymapError("belongs to another layout: " + counted(count, "key", "keys") + ", but " +
                          draft.layout + " has " + std::to_string(*draft.layoutKeys));
}

void checkMatrix(const BoardDraft& draft) {
    if (std::any_of(draft.keys.begin(), draft.keys.end(), [](const DraftKey& key) { return key.matrix; }))
        return;
    throw KeymapError("goes with a VIA definition or QMK's info.json, which tell the places in the matrix");
}

void give(DraftKey& key, const std::string& word) {
    key.isInKeymap = true;
    key.keymapWord = word;
    key.sends = firmwareKeyCode(word);
}

/// On ISO boards the key left of 1 is 10 and the one beside the left shift 50; on others the first is 50.
void exchangeIsoKeys(std::vector<DraftKey>& keys) {
    constexpr KeyCode besideShift = 10, leftOfOne = 50;
    const auto isIso = [&](const DraftKey& key) { return key.sends == besideShift; };
    if (std::none_of(keys.begin(), keys.end(), isIso)) return;
    for (DraftKey& key : keys)
        if (key.sends == besideShift) key.sends = leftOfOne;
        else if (key.sends == leftOfOne) key.sends = besideShift;
}

}  // namespace

Keymap readKeymap(std::string_view text) {
    if (text.size() > largestKeymap) throw KeymapError("larger than 1 MiB, which no keymap is");
    if (isKeymapSource(text)) return readKeymapSource(text);
    try {
        return readDocument(text);
    } catch (const JsonError& error) {
        throw KeymapError(error.what());
    }
}

void applyKeymap(BoardDraft& draft, const Keymap& keymap) {
    if (keymap.order == Keymap::Order::layout) {
        checkLayout(draft, keymap);
        for (DraftKey& key : draft.keys) give(key, keymap.rows[0].at(key.order));
    } else {
        checkMatrix(draft);
        const MatrixWords words(keymap, draft);
        for (DraftKey& key : draft.keys)
            if (const auto* word = key.matrix ? words.at(key.matrix->first, key.matrix->second) : nullptr)
                give(key, *word);
    }
    const auto isInKeymap = [](const DraftKey& key) { return key.isInKeymap; };
    if (std::none_of(draft.keys.begin(), draft.keys.end(), isInKeymap))
        throw KeymapError("belongs to another board: it has none of the keys of this one");
    exchangeIsoKeys(draft.keys);
}

}  // namespace tapcore
