#include "core/reports/key_class.h"

#include <algorithm>
#include <string_view>

#include "core/foundation/characters.h"
#include "core/foundation/checked.h"

namespace tapcore {
namespace {

constexpr KeyCode spaceBar = 49;
/// Home, page up, end, page down and the arrows.
constexpr std::array<KeyCode, 8> navigating = {115, 116, 119, 121, 123, 124, 125, 126};
constexpr KeyCode firstModifier = 54;  // right command
constexpr KeyCode lastModifier = 63;   // fn

bool isAmong(KeyCode code, const auto& codes) {
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}

KeyClass classOfLegend(std::string_view legend) {
    if (!isSingleCharacter(legend)) return KeyClass::other;
    if (isNumber(legend)) return KeyClass::digit;
    return isLetter(legend) ? KeyClass::letter : KeyClass::mark;
}

}  // namespace

KeyClass classOf(KeyCode code, const Legends& legends) {
    if (code == spaceBar) return KeyClass::space;
    if (isAmong(code, correctingKeys)) return KeyClass::correction;
    if (isAmong(code, navigating)) return KeyClass::navigation;
    if (code >= firstModifier && code <= lastModifier) return KeyClass::modifier;
    const auto found = legends.find(code);
    return found == legends.end() || found->second.empty() ? KeyClass::other
                                                           : classOfLegend(found->second.front());
}

ClassCounts countsByClass(const Tally::KeyCounts& counts, const Legends& legends) {
    ClassCounts classes{};
    for (const auto& [code, count] : counts)
        addChecked(classes[static_cast<std::size_t>(classOf(code, legends))], count);
    return classes;
}

}  // namespace tapcore
