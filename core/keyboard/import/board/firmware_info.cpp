#include "core/keyboard/import/board/firmware_info.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>

#include "core/foundation/json_fields.h"
#include "core/foundation/text_pieces.h"

namespace tapcore {
namespace {

std::vector<std::string> layoutNames(const JsonValue& layouts) {
    std::vector<std::string> names;
    layouts.forEachMember([&](const std::string& name, const JsonValue&) { names.push_back(name); });
    return names;
}

std::string chosenName(const JsonValue& info, const std::vector<std::string>& names,
                       const std::optional<std::string>& wanted) {
    if (names.empty())
        info.member("layouts").fail("none; they may be in the info.json or keyboard.json of a parent folder");
    const auto isThere = [&](const std::string& name) {
        return std::find(names.begin(), names.end(), name) != names.end();
    };
    if (!wanted && names.size() == 1) return names.front();
    const std::string name = wanted.value_or("LAYOUT");
    if (isThere(name)) return name;
    if (const auto aliases = info.optionalMember("layout_aliases"))
        if (const auto alias = aliases->optionalMember(name, &JsonValue::string); alias && isThere(*alias))
            return *alias;
    throw JsonError(wanted ? "layouts: no " + name + " among " + joined(names, ", ")
                           : "layouts: choose one of them with --layout: " + joined(names, ", "));
}

/// The names that keymaps have for a layout.
std::vector<std::string> namesOf(const std::string& chosen, const JsonValue& info,
                                 const std::vector<std::string>& layouts) {
    std::vector<std::string> names = {chosen};
    if (layouts.size() == 1) names.emplace_back("LAYOUT");
    const auto isLayout = [&](const std::string& name) {
        return std::find(layouts.begin(), layouts.end(), name) != layouts.end();
    };
    if (const auto aliases = info.optionalMember("layout_aliases"))
        aliases->forEachMember([&](const std::string& name, const JsonValue& layout) {
            if (layout.raw() == chosen && !isLayout(name)) names.push_back(name);
        });
    return names;
}

double number(const JsonValue& key, std::string_view name, double otherwise) {
    return key.optionalMember(name, &JsonValue::number).value_or(otherwise);
}

/// A key turns about its own corner unless the file names another point.
Board::Key placed(const JsonValue& json) {
    Board::Key key{.id = {}, .x = json.member("x").number(), .y = json.member("y").number()};
    key.w = number(json, "w", 1);
    key.h = number(json, "h", 1);
    key.r = number(json, "r", 0);
    if (key.r == 0) return key;
    key.rx = number(json, "rx", key.x);
    key.ry = number(json, "ry", key.y);
    return key;
}

std::int64_t inMatrix(const JsonValue& json) {
    const std::int64_t number = json.integer();
    if (number < 0 || number > BoardDraft::lastInMatrix)
        json.fail("not from 0 to " + std::to_string(BoardDraft::lastInMatrix));
    return number;
}

std::optional<std::pair<std::int64_t, std::int64_t>> matrixPlace(const JsonValue& key) {
    const auto matrix = key.optionalMember("matrix");
    if (!matrix || !matrix->raw().is_array() || matrix->size() != 2) return std::nullopt;
    return std::pair(inMatrix(matrix->element(0)), inMatrix(matrix->element(1)));
}

/// How many columns the matrix has: as many as its pins, or as the keys of all layouts use.
std::optional<std::size_t> matrixColumns(const JsonValue& info) {
    if (const auto pins = info.optionalMember("matrix_pins"))
        if (const auto columns = pins->optionalMember("cols"); columns && columns->raw().is_array())
            return columns->size();
    std::int64_t last = -1;
    info.member("layouts").forEachMember([&](const std::string&, const JsonValue& layout) {
        const auto keys = layout.optionalMember("layout");
        for (std::size_t i = 0; keys && i < keys->size(); ++i)
            if (const auto place = matrixPlace(keys->element(i))) last = std::max(last, place->second);
    });
    return last < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(last) + 1);
}

void readKeys(const JsonValue& layout, BoardDraft& draft) {
    draft.layoutKeys = layout.size();
    for (std::size_t i = 0; i < layout.size(); ++i) {
        const JsonValue json = layout.element(i);
        DraftKey key{.key = placed(json), .legends = {}, .place = "key " + std::to_string(i + 1)};
        key.order = i;
        key.matrix = matrixPlace(json);
        if (const auto label = json.optionalMember("label", &JsonValue::string))
            key.legends = legendLines(*label);
        checkReach(key.key, i, json);
        if (json.optionalMember("encoder")) draft.dropKey(key, "an encoder, not a key");
        else draft.keys.push_back(std::move(key));
    }
}

}  // namespace

BoardDraft readFirmwareBoard(const JsonValue& info, const std::optional<std::string>& layout) {
    const JsonValue layouts = info.member("layouts");
    const auto names = layoutNames(layouts);
    const std::string chosen = chosenName(info, names, layout);
    BoardDraft draft;
    draft.layout = chosen;
    draft.layoutNames = namesOf(chosen, info, names);
    draft.matrixColumns = matrixColumns(info);
    draft.name = info.optionalMember("keyboard_name", &JsonValue::string).value_or("");
    draft.maker = info.optionalMember("manufacturer", &JsonValue::string).value_or("");
    readKeys(layouts.member(chosen).member("layout"), draft);
    if (layout && *layout != chosen)
        draft.dropped.push_back("the name " + *layout + ": stands for " + chosen +
                                ", which is the layout read");
    for (const std::string& name : names)
        if (name != chosen) draft.dropped.push_back("layout " + name + ": not the one chosen");
    return draft;
}

}  // namespace tapcore
