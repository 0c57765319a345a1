#include "core/keyboard/import/board/key_reading.h"

#include <algorithm>

#include "core/foundation/characters.h"

namespace tapcore {
namespace {

KeyReading readLine(const std::string& line, bool isAlone) {
    const bool canBeName = isAlone || !isSingleCharacter(comparable(line));
    KeyReading reading{.typed = keyTyping(line)};
    if (canBeName) reading.named = codesNamed(line);
    if (!reading.typed && isAlone && reading.named && (line == "*" || line == "+")) {
        reading.typed = keyTypingShifted(line);
        reading.isShiftedOnly = true;
    }
    return reading;
}

KeyReading readingOfCode(KeyCode code) {
    const KeyName* key = keyNamed(code);
    if (key && key->types()) return {.typed = key};
    return {.named = NamedCodes{code, code}};
}

}  // namespace

bool KeyReading::allows(KeyCode code) const {
    return (typed && typed->code == code) || (named && (named->left == code || named->right == code));
}

/// "!" over "1" is a key that types; "Page" over "Up" and "7" over "Home" are names; else the first legend
/// that says something counts.
KeyReading readingOf(const DraftKey& key) {
    if (key.sends) return readingOfCode(*key.sends);
    const std::vector<std::string> legends = mainLegends(key);
    if (legends.empty()) return {};
    if (legends.size() == 1) return readLine(legends[0], true);
    const KeyName* lower = keyTyping(legends[1]);
    if (lower && comparable(legends[0]) == lower->shifted) return {.typed = lower};
    if (const auto joined = codesNamed(legends[0] + legends[1])) return {.named = joined};
    for (const std::string& line : legends)
        if (const KeyReading reading = readLine(line, false); !reading.saysNothing()) return reading;
    return {};
}

std::vector<KeyReading> readingsOf(const std::vector<DraftKey>& keys) {
    std::vector<KeyReading> readings;
    for (const DraftKey& key : keys) readings.push_back(readingOf(key));
    return readings;
}

bool lackLegends(const std::vector<KeyReading>& readings) {
    constexpr auto fewest = 10;
    return std::count_if(readings.begin(), readings.end(),
                         [](const KeyReading& reading) { return reading.typed != nullptr; }) < fewest;
}

}  // namespace tapcore
