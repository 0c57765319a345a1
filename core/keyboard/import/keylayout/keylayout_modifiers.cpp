#include "core/keyboard/import/keylayout/keylayout_modifiers.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/foundation/integers.h"
#include "core/foundation/text_pieces.h"

namespace tapcore {
namespace {

/// The modifier keys of a board, one bit each.
using Held = unsigned;
constexpr Held leftShift = 1, rightShift = 2, leftOption = 4, rightOption = 8, leftControl = 16,
               rightControl = 32, command = 64, capsLock = 128;

/// The words of a modifier map, and the keys of which one at least must be down.
constexpr std::array<std::pair<std::string_view, Held>, 11> words = {{
    {"shift", leftShift},
    {"rightShift", rightShift},
    {"anyShift", leftShift | rightShift},
    {"option", leftOption},
    {"rightOption", rightOption},
    {"anyOption", leftOption | rightOption},
    {"control", leftControl},
    {"rightControl", rightControl},
    {"anyControl", leftControl | rightControl},
    {"command", command},
    {"caps", capsLock},
}};

/// One combination of a modifier map: "anyShift caps?" wants a shift, lets caps lock be, and nothing else
/// down.
struct Combination {
    std::vector<Held> wanted;
    Held allowed = 0;

    bool covers(Held held) const {
        for (const Held keys : wanted)
            if ((held & keys) == 0) return false;
        return (held & ~allowed) == 0;
    }
};

/// None for a word that names no modifier: what wants it is never chosen.
Held keysNamed(std::string_view word) {
    for (const auto& [known, keys] : words)
        if (known == word) return keys;
    return 0;
}

Combination combinationOf(const XmlElement& modifier) {
    Combination result;
    const std::string text = modifier.required("keys");
    for (std::string_view left = text; !left.empty();) {
        std::string_view word = takePiece(left, ' ');
        if (word.empty()) continue;
        const bool optional = word.ends_with('?');
        if (optional) word.remove_suffix(1);
        const Held keys = keysNamed(word);
        result.allowed |= keys;
        if (!optional) result.wanted.push_back(keys);
    }
    return result;
}

using Choice = std::pair<Combination, std::int64_t>;

std::int64_t indexOf(const XmlElement& element, const char* attribute) {
    const auto index = parseInteger(element.required(attribute));
    if (!index) element.fail(std::string(attribute) + ": not an integer");
    return *index;
}

std::vector<Choice> choicesOf(const XmlElement& modifierMap) {
    std::vector<Choice> choices;
    for (const XmlElement& select : modifierMap.children("keyMapSelect")) {
        const std::int64_t index = indexOf(select, "mapIndex");
        for (const XmlElement& modifier : select.children("modifier"))
            choices.emplace_back(combinationOf(modifier), index);
    }
    return choices;
}

std::optional<std::int64_t> chosen(const std::vector<Choice>& choices, Held held) {
    for (const auto& [combination, index] : choices)
        if (combination.covers(held)) return index;
    return std::nullopt;
}

}  // namespace

ChosenKeyMaps chosenKeyMaps(const XmlElement& modifierMap) {
    const std::vector<Choice> choices = choicesOf(modifierMap);
    const auto otherwise = parseInteger(modifierMap.attribute("defaultIndex").value_or(""));
    const auto with = [&](Held held) {
        const auto index = chosen(choices, held);
        return index ? index : otherwise;
    };
    ChosenKeyMaps result = {with(0), with(leftShift)};
    for (const Held held : {rightShift, leftShift | rightShift})
        if (result.shifted == result.plain) result.shifted = with(held);
    return result;
}

}  // namespace tapcore
