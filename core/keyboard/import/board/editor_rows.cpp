#include "core/keyboard/import/board/editor_rows.h"

#include <nlohmann/json.hpp>
#include <utility>

#include "core/foundation/json_fields.h"

namespace tapcore {
namespace {

/// What the next key will be like, and where.
class Cursor {
  public:
    void startRow() {
        ++row_;
        keyInRow_ = 0;
    }

    /// `isFirst`: before any key or other members in its row.
    void change(const JsonValue& members, bool isFirst) {
        turn(members, isFirst);
        next_.x += number(members, "x");
        next_.y += number(members, "y");
        if (const double w = number(members, "w"); w != 0) next_.w = second_.w = w;
        if (const double h = number(members, "h"); h != 0) next_.h = second_.h = h;
        if (const double x = number(members, "x2"); x != 0) second_.x = x;
        if (const double y = number(members, "y2"); y != 0) second_.y = y;
        if (const double w = number(members, "w2"); w != 0) second_.w = w;
        if (const double h = number(members, "h2"); h != 0) second_.h = h;
        if (const auto decal = members.optionalMember("d")) isDecal_ = decal->boolean();
    }

    EditorKey placed(const std::string& legends) {
        ++keyInRow_;
        EditorKey result{
            .draft = {.key = key(),
                      .legends = legendLines(legends),
                      .place = "row " + std::to_string(row_) + ", key " + std::to_string(keyInRow_)},
            .isDecal = isDecal_};
        next_.x += next_.w;
        next_.w = next_.h = 1;
        second_ = {};
        isDecal_ = false;
        return result;
    }

    void endRow() {
        next_.y += 1;
        next_.x = rx_;
    }

  private:
    static double number(const JsonValue& members, std::string_view name) {
        return members.optionalMember(name, &JsonValue::number).value_or(0);
    }

    void turn(const JsonValue& members, bool isFirst) {
        for (const std::string_view name : {"r", "rx", "ry"}) {
            const auto value = members.optionalMember(name);
            if (!value) continue;
            if (!isFirst) value->fail("only the first key of a row can turn");
            if (name == "r") {
                r_ = value->number();
                continue;
            }
            (name == "rx" ? rx_ : ry_) = value->number();
            next_.x = rx_;
            next_.y = ry_;
        }
    }

    /// The key at the cursor. The second rectangle is given against the first, and 0 for what is the same.
    Board::Key key() const {
        Board::Key key{.id = {}, .x = next_.x, .y = next_.y, .w = next_.w, .h = next_.h};
        if (r_ != 0) {
            key.r = r_;
            key.rx = rx_;
            key.ry = ry_;
        }
        const Board::Rect second{next_.x + second_.x, next_.y + second_.y,
                                 second_.w == 0 ? next_.w : second_.w, second_.h == 0 ? next_.h : second_.h};
        if (second != next_) key.second = second;
        return key;
    }

    std::size_t row_ = 0;
    std::size_t keyInRow_ = 0;
    Board::Rect next_{0, 0, 1, 1};
    Board::Rect second_ = {};
    double r_ = 0;
    double rx_ = 0;
    double ry_ = 0;
    bool isDecal_ = false;
};

void readRow(const JsonValue& row, Cursor& cursor, std::vector<EditorKey>& keys) {
    cursor.startRow();
    for (std::size_t i = 0; i < row.size(); ++i) {
        const JsonValue item = row.element(i);
        if (item.raw().is_object()) {
            cursor.change(item, i == 0);
            continue;
        }
        keys.push_back(cursor.placed(item.string()));
        checkReach(keys.back().draft.key, keys.size() - 1, item);
    }
    cursor.endRow();
}

bool hasRows(const JsonValue& document) {
    for (const auto& element : document.raw())
        if (element.is_array()) return true;
    return false;
}

std::string textMember(const JsonValue& members, std::string_view name) {
    return members.optionalMember(name, &JsonValue::string).value_or("");
}

}  // namespace

std::vector<EditorKey> readEditorRows(const JsonValue& rows) {
    std::vector<EditorKey> keys;
    Cursor cursor;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const JsonValue row = rows.element(i);
        const bool isDocumentData = i == 0 && row.raw().is_object();
        if (!isDocumentData) readRow(row, cursor, keys);
    }
    return keys;
}

BoardDraft readEditorBoard(const JsonValue& document) {
    BoardDraft draft;
    // A single raw row reads as the document.
    const nlohmann::json alone =
        nlohmann::json::array({hasRows(document) ? nlohmann::json() : document.raw()});
    const JsonValue rows = hasRows(document) ? document : JsonValue(alone);
    for (EditorKey& key : readEditorRows(rows)) {
        if (key.isDecal) draft.dropKey(key.draft, "a decal");
        else draft.keys.push_back(std::move(key.draft));
    }
    if (const JsonValue data = rows.element(0); data.raw().is_object()) {
        draft.name = textMember(data, "name");
        draft.maker = textMember(data, "author");
    }
    return draft;
}

}  // namespace tapcore
