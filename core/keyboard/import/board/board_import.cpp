#include "core/keyboard/import/board/board_import.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <utility>

#include "core/foundation/json_fields.h"
#include "core/keyboard/import/board/board_draft.h"
#include "core/keyboard/import/board/draft_codes.h"
#include "core/keyboard/import/board/editor_rows.h"
#include "core/keyboard/import/board/firmware_info.h"
#include "core/keyboard/import/board/key_names.h"
#include "core/keyboard/import/board/known_board.h"
#include "core/keyboard/import/board/strikes.h"
#include "core/keyboard/import/board/via_definition.h"
#include "core/keyboard/import/text/legend_markup.h"
#include "core/keyboard/import/text/lenient_json.h"
#include "core/keyboard/import/text/slug.h"

namespace tapcore {
namespace {

constexpr std::string_view editorRows = "Keyboard Layout Editor";

struct Kind {
    BoardDraft draft;
    std::string_view name;
};

/// The layout asked for, else the one that the keymap is for, when the file has that name.
std::optional<std::string> layoutAskedFor(const JsonValue& info, const BoardImportOptions& options) {
    if (options.layout || !options.keymap) return options.layout;
    const std::string& named = options.keymap->layout;
    for (const char* place : {"layouts", "layout_aliases"})
        if (const auto names = info.optionalMember(place); names && names->raw().contains(named))
            return named;
    return std::nullopt;
}

Kind readDraft(const JsonValue& document, const BoardImportOptions& options) {
    const auto& layout = options.layout;
    const bool hasRows = document.raw().is_array();
    if (!hasRows && !document.raw().contains("layouts"))
        document.fail(
            "neither rows of keys nor an object with \"layouts\"; QMK may have them in the info.json or "
            "keyboard.json of a parent folder");
    const bool isVia = !hasRows && document.raw().at("layouts").contains("keymap");
    if (layout && (hasRows || isVia)) throw JsonError("no layouts to choose from: not a QMK file");
    if (hasRows) return {readEditorBoard(document), editorRows};
    if (isVia) return {readViaBoard(document), "VIA"};
    return {readFirmwareBoard(document, layoutAskedFor(document, options)), "QMK"};
}

void dropKeysWithoutSize(BoardDraft& draft) {
    const auto hasNone = [](const DraftKey& key) { return key.key.w <= 0 || key.key.h <= 0; };
    for (const DraftKey& key : draft.keys)
        if (hasNone(key)) draft.dropKey(key, "a key without size");
    std::erase_if(draft.keys, hasNone);
}

/// Without the noise of adding lengths up: to a ten thousandth of a unit, two thousandths of a millimetre.
double rounded(double length) { return std::round(length * 10000) / 10000 + 0.0; }  // 0 and not -0

void move(Board::Key& key, double dx, double dy) {
    const auto along = [](double by, auto&... lengths) { ((lengths = rounded(lengths + by)), ...); };
    along(dx, key.x);
    along(dy, key.y);
    along(0, key.w, key.h, key.r);
    if (key.rx) along(dx, *key.rx);
    if (key.ry) along(dy, *key.ry);
    if (!key.second) return;
    along(dx, key.second->x);
    along(dy, key.second->y);
    along(0, key.second->w, key.second->h);
}

/// Moves keys that begin left of or above 0, and with `lostKeys` those further in too, so that they begin at
/// 0 or less than a thousandth behind it.
void moveToOrigin(std::vector<DraftKey>& keys, bool lostKeys) {
    for (DraftKey& key : keys) move(key.key, 0, 0);
    const Board::Rect bounds = boundsOf(keys);
    const auto distance = [&](double least) {
        return least < 0 || lostKeys ? std::ceil(-least * 1000 - 1e-6) / 1000 : 0;
    };
    for (DraftKey& key : keys) move(key.key, distance(bounds.x), distance(bounds.y));
}

std::string idOf(const DraftKey& key) {
    if (key.key.keyCode)
        if (const KeyName* name = keyNamed(*key.key.keyCode)) return std::string(name->id);
    for (const std::string& legend : key.legends)
        if (std::string id = slug(plainLegend(legend)); !id.empty()) return id;
    return "key";
}

/// Names for the keys, those with a code first, so that they have the plain ones.
void giveIds(std::vector<DraftKey>& keys) {
    std::set<std::string> taken;
    std::map<std::string, int> next;
    for (const bool withCode : {true, false})
        for (DraftKey& key : keys) {
            if (key.key.keyCode.has_value() != withCode) continue;
            const std::string id = idOf(key);
            int& number = next.emplace(id, 2).first->second;
            for (key.key.id = id; !taken.insert(key.key.id).second; ++number)
                key.key.id = id + "-" + std::to_string(number);
        }
}

void takeStrikes(std::vector<Board::Key>& keys, const std::vector<const Board::Key*>& alike) {
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (!alike[i]) continue;
        keys[i].hand = alike[i]->hand;
        keys[i].finger = alike[i]->finger;
        keys[i].row = alike[i]->row;
        keys[i].home = alike[i]->home;
    }
}

std::string notEmpty(std::string text, std::string otherwise) { return text.empty() ? otherwise : text; }

Board named(const BoardDraft& draft, std::string_view kind, const BoardImportOptions& options) {
    Board board;
    const std::string stem = std::filesystem::path(options.file).stem().string();
    board.name = options.name.value_or(notEmpty(draft.name, notEmpty(stem, "Imported")));
    board.id = options.id.value_or(notEmpty(slugOf(board.name, options.file), "imported"));
    board.maker = options.maker.value_or(draft.maker);
    board.source = std::string(kind) + " file" + (options.file.empty() ? "" : " " + options.file);
    return board;
}

std::string notesOn(const KnownBoard& alike, bool guessedCodes) {
    std::string notes = "Hands, fingers and rows are guessed from the places of the keys";
    if (alike.board) notes += ", as on " + alike.board->name;
    return notes + (guessedCodes ? "; so are some key codes." : ".");
}

}  // namespace

BoardImport importBoard(std::string_view text, const std::vector<Board>& known,
                        const BoardImportOptions& options) {
    const nlohmann::json json = parseLenientJson(text);
    const JsonValue document(json);
    auto [draft, kind] = readDraft(document, options);
    if (options.keymap) applyKeymap(draft, *options.keymap);
    dropKeysWithoutSize(draft);
    if (draft.keys.empty()) document.fail("no keys");
    moveToOrigin(draft.keys, draft.lostKeys);

    const auto readings = readingsOf(draft.keys);
    const KnownBoard alike = boardLike(draft.keys, readings, known);
    auto [guessed, withoutCode] = giveCodes(draft.keys, readings, alike);
    BoardImport result{.board = named(draft, kind, options),
                       .dropped = std::move(draft.dropped),
                       .guessed = std::move(guessed),
                       .withoutCode = std::move(withoutCode),
                       .takesKeymap = !options.keymap && kind != editorRows};
    giveIds(draft.keys);
    for (DraftKey& key : draft.keys) result.board.keys.push_back(std::move(key.key));
    guessStrikes(result.board.keys);
    takeStrikes(result.board.keys, alike.keys);
    result.board.notes = notesOn(alike, !result.guessed.empty());
    return result;
}

}  // namespace tapcore
