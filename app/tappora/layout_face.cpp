#include "app/tappora/layout_face.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <vector>

#include "app/common/keyboard/typing_rows.h"
#include "core/counting/key_face.h"
#include "core/foundation/characters.h"

namespace tappora {
namespace {

using tapcore::KeyCode;

struct Row {
    std::size_t indent;  ///< in columns
    std::vector<KeyCode> codes;
};

/// The codes of a row between those of its first and last key, of which one may be missing.
template <std::size_t count>
Row row(std::size_t indent, std::optional<KeyCode> first, const std::array<KeyCode, count>& codes,
        std::optional<KeyCode> last = std::nullopt) {
    Row row{indent, {codes.begin(), codes.end()}};
    if (first) row.codes.insert(row.codes.begin(), *first);
    if (last) row.codes.push_back(*last);
    return row;
}

const std::array<Row, 4>& rows() {
    static const std::array<Row, 4> all = {row(0, TypingRows::section, TypingRows::digits),
                                           row(6, std::nullopt, TypingRows::upper),
                                           row(7, std::nullopt, TypingRows::home, TypingRows::backslash),
                                           row(5, TypingRows::grave, TypingRows::lower)};
    return all;
}

bool isInRow(KeyCode code) {
    return std::any_of(rows().begin(), rows().end(), [&](const Row& row) {
        return std::find(row.codes.begin(), row.codes.end(), code) != row.codes.end();
    });
}

/// What is shown on a key, in two lines; a single one is the lower.
std::array<std::string, 2> face(const tapcore::Legends& legends, KeyCode code) {
    const auto found = legends.find(code);
    if (found == legends.end()) return {};
    const std::vector<std::string> lines = tapcore::KeyFace::lines(found->second);
    if (lines.empty()) return {};
    return {lines.size() == 1 ? "" : lines.front(), lines.back()};
}

std::string padded(const std::string& text, std::size_t width) {
    return text + std::string(width - std::min(width, tapcore::characterCount(text)), ' ');
}

void endLine(std::string& text) {
    text.erase(text.find_last_not_of(' ') + 1);
    text += '\n';
}

std::string drawn(const Row& row, const tapcore::Legends& legends) {
    constexpr std::size_t narrowest = 4;
    std::array<std::string, 2> text = {std::string(row.indent, ' '), std::string(row.indent, ' ')};
    for (const KeyCode code : row.codes) {
        const auto lines = face(legends, code);
        const std::size_t widest =
            std::max(tapcore::characterCount(lines[0]), tapcore::characterCount(lines[1]));
        for (std::size_t i = 0; i < text.size(); ++i)
            text[i] += padded(lines[i], std::max(narrowest, widest + 2));
    }
    for (std::string& line : text) endLine(line);
    return text[0] + text[1];
}

}  // namespace

std::string typingRows(const tapcore::Legends& legends) {
    std::string text;
    for (const Row& row : rows()) text += drawn(row, legends);
    return text;
}

std::string otherKeys(const tapcore::Legends& legends) {
    constexpr std::size_t widest = 78;
    std::string text;
    std::string line;
    for (const auto& [code, legend] : legends) {
        if (isInRow(code)) continue;
        const std::string key = fmt::format("{:<18}", fmt::format("{:>5}  {}", code, fmt::join(legend, " ")));
        if (tapcore::characterCount(line + key) > widest) {
            endLine(line);
            text += std::exchange(line, "");
        }
        line += key;
    }
    endLine(line);
    return line == "\n" ? "" : text + line;
}

}  // namespace tappora
