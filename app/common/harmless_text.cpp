#include "app/common/harmless_text.h"

#include <fmt/format.h>

#include "core/foundation/characters.h"
#include "core/foundation/utf8.h"

namespace tappora {
namespace {

/// Whether a character is a control character, or turns the order in which those after it are shown (Unicode
/// Standard Annex 9, explicit directional formatting).
bool steers(std::string_view character) {
    const char32_t scalar = tapcore::firstScalar(character);
    const bool turns =
        (scalar >= U'\u202A' && scalar <= U'\u202E') || (scalar >= U'\u2066' && scalar <= U'\u2069');
    return turns || tapcore::isControl(character);
}

bool breaksLine(std::string_view character) {
    return character == "\n" || character == "\t" || character == "\u2028" || character == "\u2029";
}

}  // namespace

std::string harmless(std::string_view text) {
    const std::string whole = tapcore::repairedUtf8(text);
    std::string result;
    for (const std::string_view character : tapcore::characters(whole)) {
        if (character == "\r\n") result += '\n';
        else if (character == "\n" || character == "\t" || !steers(character)) result += character;
    }
    return result;
}

std::string harmlessLine(std::string_view text) {
    const std::string whole = harmless(text);
    std::string line;
    for (const std::string_view character : tapcore::characters(whole))
        line += breaksLine(character) ? " " : character;
    return line;
}

std::string harmlessJson(std::string_view json) {
    std::string result;
    for (const std::string_view character : tapcore::characters(json))
        if (character == "\n" || !steers(character)) result += character;
        else result += fmt::format("\\u{:04x}", static_cast<std::uint32_t>(tapcore::firstScalar(character)));
    return result;
}

}  // namespace tappora
