#include "core/keyboard/import/board/via_definition.h"

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>

#include "core/foundation/integers.h"
#include "core/foundation/json_fields.h"
#include "core/keyboard/import/board/editor_rows.h"

namespace tapcore {
namespace {

// Where a key's legends hold what VIA reads from them.
constexpr std::size_t matrixLegend = 0;
constexpr std::size_t optionLegend = 3;

/// Two numbers with a comma between, such as a key's row and column in the matrix.
using Pair = std::pair<std::int64_t, std::int64_t>;

std::optional<Pair> pairIn(const std::vector<std::string>& legends, std::size_t index) {
    if (index >= legends.size()) return std::nullopt;
    const std::string_view text = legends[index];
    const std::size_t comma = text.find(',');
    if (comma == std::string_view::npos) return std::nullopt;
    const auto first = parseInteger(text.substr(0, comma));
    const auto second = parseInteger(text.substr(comma + 1));
    return first && second ? std::optional(Pair(*first, *second)) : std::nullopt;
}

bool isEncoder(const std::string& legend) {
    return legend.starts_with('e') && parseKeyCode(std::string_view(legend).substr(1));
}

/// What the definition calls an option: its labels are texts, or lists that begin with one.
std::string optionName(const std::optional<JsonValue>& labels, std::int64_t option) {
    const std::string number = "option " + std::to_string(option);
    if (!labels || option < 0 || static_cast<std::size_t>(option) >= labels->size()) return number;
    const JsonValue label = labels->element(static_cast<std::size_t>(option));
    const bool isList = label.raw().is_array() && !label.raw().empty();
    const nlohmann::json& name = isList ? label.raw().front() : label.raw();
    return name.is_string() ? number + " (" + name.get<std::string>() + ")" : number;
}

std::optional<std::size_t> matrixColumns(const JsonValue& definition) {
    const auto matrix = definition.optionalMember("matrix");
    const auto columns = matrix ? matrix->optionalMember("cols", &JsonValue::integer) : std::nullopt;
    return columns && *columns > 0 && *columns <= BoardDraft::lastInMatrix + 1
               ? std::optional(static_cast<std::size_t>(*columns))
               : std::nullopt;
}

bool isInMatrix(std::int64_t number) { return number >= 0 && number <= BoardDraft::lastInMatrix; }

/// Names the key by its place in the matrix, and leaves it without legends.
void nameByMatrix(DraftKey& key) {
    const auto place = pairIn(key.legends, matrixLegend);
    if (place && isInMatrix(place->first) && isInMatrix(place->second)) key.matrix = place;
    if (const auto& matrix = key.matrix)
        key.place = "matrix " + std::to_string(matrix->first) + "," + std::to_string(matrix->second);
    key.legends.clear();
}

}  // namespace

BoardDraft readViaBoard(const JsonValue& definition) {
    const JsonValue layouts = definition.member("layouts");
    BoardDraft draft;
    draft.name = definition.optionalMember("name", &JsonValue::string).value_or("");
    draft.matrixColumns = matrixColumns(definition);
    std::map<Pair, std::size_t> otherChoices;
    for (EditorKey& editorKey : readEditorRows(layouts.member("keymap"))) {
        DraftKey& key = editorKey.draft;
        const auto choice = pairIn(key.legends, optionLegend);
        const bool encodes = std::any_of(key.legends.begin(), key.legends.end(), isEncoder);
        nameByMatrix(key);
        if (editorKey.isDecal) draft.dropKey(key, "a decal");
        else if (encodes) draft.dropKey(key, "an encoder, not a key");
        else if (choice && choice->second != 0) ++otherChoices[*choice];
        else draft.keys.push_back(std::move(key));
    }
    const auto labels = layouts.optionalMember("labels");
    draft.lostKeys = draft.lostKeys || !otherChoices.empty();
    for (const auto& [choice, count] : otherChoices)
        draft.dropped.push_back(optionName(labels, choice.first) + ", choice " +
                                std::to_string(choice.second) + ": " + counted(count, "key", "keys") +
                                "; choice 0 stays");
    return draft;
}

}  // namespace tapcore
