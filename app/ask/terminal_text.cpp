#include "app/ask/terminal_text.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <vector>

#include "app/ask/inline_text.h"
#include "app/common/harmless_text.h"
#include "core/foundation/characters.h"
#include "core/foundation/text_pieces.h"

namespace tappora {
namespace {

std::vector<std::string_view> linesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) lines.push_back(tapcore::takePiece(text, '\n'));
    return lines;
}

// Tables.

using Row = std::vector<Word>;  // a word for each cell, whatever blanks it holds

/// The cells of "| a | b |" as written, trimmed.
std::vector<std::string_view> cellsOf(std::string_view line) {
    line = tapcore::trimmedWhiteSpace(line);
    line.remove_prefix(1);
    if (line.ends_with('|')) line.remove_suffix(1);
    std::vector<std::string_view> cells;
    do cells.push_back(tapcore::trimmedWhiteSpace(tapcore::takePiece(line, '|')));
    while (!line.empty());
    return cells;
}

bool isRule(std::string_view line) {
    return line.find('-') != std::string_view::npos &&
           line.find_first_not_of("|-: \r") == std::string_view::npos;
}

Word cellOf(std::string_view text, const Terminal& terminal, bool isBold) {
    Word cell;
    for (const Word& word : inlineWords(text, terminal, isBold)) {
        cell.text += (cell.width > 0 ? " " : "") + word.text;
        cell.width += (cell.width > 0 ? 1 : 0) + word.width;
    }
    return cell;
}

std::vector<std::size_t> widthsOf(const std::vector<Row>& rows) {
    std::vector<std::size_t> widths;
    for (const Row& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].width);
    }
    return widths;
}

std::string lineOf(const Row& row, const std::vector<std::size_t>& widths, const std::vector<bool>& isRight) {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) {
        const std::string padding(widths[i] - row[i].width, ' ');
        const bool right = i < isRight.size() && isRight[i];
        line += (i > 0 ? "  " : "") + (right ? padding + row[i].text : row[i].text + padding);
    }
    return line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
}

std::string ruleOf(const std::vector<std::size_t>& widths, const Terminal& terminal) {
    std::string rule;
    for (const std::size_t width : widths) {
        if (!rule.empty()) rule += "  ";
        for (std::size_t i = 0; i < width; ++i) rule += terminal.unicode ? "─" : "-";
    }
    return terminal.faint(rule) + "\n";
}

/// The lines of a Markdown table: columns of one width, the header bold above a rule. Lines without a rule
/// after the first are no table, and stay as they are.
std::string terminalTable(std::span<const std::string_view> lines, const Terminal& terminal) {
    std::string text;
    if (lines.size() < 2 || !isRule(lines[1])) {
        for (const std::string_view line : lines) text.append(line).append("\n");
        return text;
    }
    std::vector<bool> isRight;
    for (const std::string_view cell : cellsOf(lines[1]))
        isRight.push_back(cell.ends_with(':') && !cell.starts_with(':'));
    std::vector<Row> rows;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (i == 1) continue;
        rows.emplace_back();
        for (const std::string_view cell : cellsOf(lines[i]))
            rows.back().push_back(cellOf(cell, terminal, i == 0));
    }
    const auto widths = widthsOf(rows);
    for (const Row& row : rows) {
        text += lineOf(row, widths, isRight);
        if (&row == &rows.front()) text += ruleOf(widths, terminal);
    }
    return text;
}

// Other lines.

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
    const std::vector<std::string_view> lines = linesOf(clean);
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
