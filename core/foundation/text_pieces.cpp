#include "core/foundation/text_pieces.h"

#include "core/foundation/characters.h"

namespace tapcore {

std::string placeIn(std::string_view text, std::size_t offset) {
    const std::string_view before = text.substr(0, offset);
    const auto lines = std::count(before.begin(), before.end(), '\n');
    const std::string_view line = before.substr(before.rfind('\n') + 1);  // npos + 1 is 0
    return "line " + std::to_string(lines + 1) + ", column " + std::to_string(characterCount(line) + 1);
}

}  // namespace tapcore
