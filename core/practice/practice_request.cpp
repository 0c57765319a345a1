#include "core/practice/practice_request.h"

#include <algorithm>
#include <optional>

#include "core/foundation/characters.h"

namespace tapcore::PracticeRequest {
namespace {

constexpr std::string_view opening = "practise:";
constexpr std::string_view decoration = " .*`\"'";

/// The last line that is a request, trimmed and lower-cased.
std::optional<std::string> requestLine(std::string_view text) {
    while (!text.empty()) {
        const std::size_t lineFeed = text.rfind('\n');
        const std::size_t start = lineFeed == std::string_view::npos ? 0 : lineFeed + 1;
        std::string line = lowercased(trimmedWhiteSpace(text.substr(start)));
        if (line.starts_with(opening)) return line;
        text = text.substr(0, start == 0 ? 0 : lineFeed);
    }
    return std::nullopt;
}

std::string_view withoutDecoration(std::string_view item) {
    const std::size_t start = item.find_first_not_of(decoration);
    if (start == std::string_view::npos) return {};
    return item.substr(start, item.find_last_not_of(decoration) + 1 - start);
}

void appendLetter(std::vector<std::string>& letters, std::string_view item) {
    const std::string letter = lowercased(withoutDecoration(item));
    if (!isSingleCharacter(letter) || !isLetter(letter)) return;
    if (std::find(letters.begin(), letters.end(), letter) == letters.end()) letters.push_back(letter);
}

}  // namespace

std::vector<std::string> letters(std::string_view in) {
    std::vector<std::string> letters;
    const auto line = requestLine(in);
    if (!line) return letters;
    std::string_view rest = std::string_view(*line).substr(opening.size());
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find_first_of(", "), rest.size());
        appendLetter(letters, rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return letters;
}

}  // namespace tapcore::PracticeRequest
