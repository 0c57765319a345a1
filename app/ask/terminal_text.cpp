#include "app/ask/terminal_text.h"

#include <algorithm>
#include <vector>

#include "app/ask/inline_text.h"
#include "app/ask/terminal_table.h"
#include "app/common/harmless_text.h"
#include "core/foundation/characters.h"

namespace tappora {
namespace {

std::vector<std::string_view> split(std::string_view text, char at) {
    std::vector<std::string_view> pieces;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find(at, start), text.size());
        pieces.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return pieces;
}

/// A line's start that is no text: its indentation, and its bullet or number.
struct Start {
    std::string_view mark;  ///< as written
    std::string shown;
};

Start startOf(std::string_view line, const Terminal& terminal) {
    const std::size_t indent = std::min(line.find_first_not_of(' '), line.size());
    const std::string_view rest = line.substr(indent);
    const bool isItem = rest.starts_with("- ") || rest.starts_with("* ");
    const std::size_t digits = std::min(rest.find_first_not_of("0123456789"), rest.size());
    const bool isNumbered = digits > 0 && rest.substr(digits).starts_with(". ");
    const std::string_view mark = line.substr(0, indent + (isItem ? 2 : isNumbered ? digits + 2 : 0));
    const std::string bullet = terminal.unicode ? "• " : "- ";
    return {mark, isItem ? std::string(indent, ' ') + bullet : std::string(mark)};
}

std::string wrapped(const Start& start, const std::vector<Word>& words, std::size_t columns) {
    std::string text = start.shown;
    const std::size_t hang = tapcore::columnCount(start.shown);
    std::size_t column = hang;
    for (const Word& word : words) {
        const bool isFirst = column == hang;
        if (!isFirst && column + 1 + word.width > columns) {
            text += "\n" + std::string(hang, ' ');
            column = hang;
        } else if (!isFirst) {
            text += ' ';
            ++column;
        }
        text += word.text;
        column += word.width;
    }
    return text;
}

std::string shownLine(std::string_view line, const Terminal& terminal) {
    const std::size_t level = std::min(line.find_first_not_of('#'), line.size());
    const bool isHeading = level > 0 && level < line.size() && line[level] == ' ';
    if (isHeading)
        return wrapped({"", ""}, inlineWords(line.substr(level + 1), terminal, true), terminal.width);
    const Start start = startOf(line, terminal);
    return wrapped(start, inlineWords(line.substr(start.mark.size()), terminal, false), terminal.width);
}

bool isRow(std::string_view line) { return tapcore::trimmedWhiteSpace(line).starts_with('|'); }

bool isFence(std::string_view line) { return tapcore::trimmedWhiteSpace(line).starts_with("```"); }

}  // namespace

std::string terminalText(std::string_view markdown, const Terminal& terminal) {
    const std::string clean = harmless(markdown);
    const auto lines = split(clean, '\n');
    std::string text;
    bool inCode = false;
    for (auto line = lines.begin(); line != lines.end();) {
        if (!inCode && isRow(*line)) {
            const auto end = std::find_if_not(line, lines.end(), isRow);
            text += terminalTable({line, end}, terminal);
            line = end;
            continue;
        }
        if (isFence(*line)) inCode = !inCode;
        else text += (inCode ? std::string(*line) : shownLine(*line, terminal)) + "\n";
        ++line;
    }
    return text;
}

}  // namespace tappora
