#include "app/ask/terminal_table.h"

#include <algorithm>
#include <vector>

#include "app/ask/inline_text.h"
#include "core/foundation/characters.h"

namespace tappora {
namespace {

using Row = std::vector<Word>;  // a word for each cell, whatever blanks it holds

/// The cells of "| a | b |" as written, trimmed.
std::vector<std::string_view> cellsOf(std::string_view line) {
    line = tapcore::trimmedWhiteSpace(line);
    line.remove_prefix(1);
    if (line.ends_with('|')) line.remove_suffix(1);
    std::vector<std::string_view> cells;
    while (true) {
        const std::size_t end = line.find('|');
        cells.push_back(tapcore::trimmedWhiteSpace(line.substr(0, end)));
        if (end == std::string_view::npos) return cells;
        line.remove_prefix(end + 1);
    }
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

}  // namespace

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

}  // namespace tappora
