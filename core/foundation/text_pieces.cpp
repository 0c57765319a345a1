#include "core/foundation/text_pieces.h"

#include "core/foundation/characters.h"

namespace tapcore {

namespace {

/// The place and size of a "{name}" in a text, and the value for it.
struct Hole {
    std::size_t begin, size;
    std::string_view value;
};

/// The next one; at the end of the text, of no size, when there are no more.
Hole nextHole(std::string_view text, std::size_t from, TextValues values) {
    for (auto open = text.find('{', from); open != text.npos; open = text.find('{', open + 1)) {
        const auto close = text.find('}', open);
        if (close == text.npos) break;
        const std::string_view name = text.substr(open + 1, close - open - 1);
        for (const auto& [key, value] : values)
            if (key == name) return {open, close + 1 - open, value};
    }
    return {text.size(), 0, ""};
}

}  // namespace

std::vector<std::string_view> pieces(std::string_view text, char separator) {
    std::vector<std::string_view> all;
    const auto count = std::count(text.begin(), text.end(), separator);
    for (auto at = count; at >= 0; --at) all.push_back(takePiece(text, separator));
    return all;
}

std::string joined(std::span<const std::string> items, std::string_view separator) {
    std::string text;
    for (const std::string& item : items) text.append(&item == items.data() ? "" : separator).append(item);
    return text;
}

std::string filled(std::string_view text, TextValues values) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const Hole hole = nextHole(text, at, values);
        result.append(text.substr(at, hole.begin - at)).append(hole.value);
        at = hole.begin + hole.size;
    }
    return result;
}

std::string placeIn(std::string_view text, std::size_t offset) {
    const std::string_view before = text.substr(0, offset);
    const auto lines = std::count(before.begin(), before.end(), '\n');
    const std::string_view line = before.substr(before.rfind('\n') + 1);  // npos + 1 is 0
    return "line " + std::to_string(lines + 1) + ", column " + std::to_string(characterCount(line) + 1);
}

}  // namespace tapcore
