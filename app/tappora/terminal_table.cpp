#include "app/tappora/terminal_table.h"

#include <algorithm>

#include "app/tappora/bar_chart.h"
#include "core/foundation/characters.h"
#include "core/foundation/text_pieces.h"

namespace tappora {
namespace {

using Row = std::vector<ReportCell>;
using Lines = std::vector<std::string>;
using tapcore::columnCount;

const std::string indent = "  ";

std::string padded(const ReportCell& cell, std::size_t width) {
    const std::size_t taken = columnCount(cell.text);
    const std::string blanks(width - std::min(width, taken), ' ');
    return cell.isNumber ? blanks + cell.text : cell.text + blanks;
}

std::string withoutBlanksAtEnd(std::string line) {
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

/// How wide the columns of a table are, so that its lines fit into a terminal.
class Columns {
  public:
    Columns(const ReportTable& table, std::size_t width) : terminal_(width), widths_(table.header.size(), 0) {
        widen(table.header, 1);
        for (const Row& row : table.rows) widen(row, 1);
        std::size_t numbers = indent.size();
        for (std::size_t i = 1; i < widths_.size(); ++i) numbers += gap + widths_[i];
        most_ = width > numbers + fewest ? width - numbers : fewest;
        widen(table.header, 0);
        for (const Row& row : table.rows) widen(row, 0);
        all_ = numbers + widths_[0];
    }

    /// The columns that a line takes.
    std::size_t width() const { return all_; }

    Lines linesOf(const Row& row) const {
        const bool fits = columnCount(row[0].text) <= widths_[0];
        Lines lines = fits ? Lines{} : wrapped(row[0].text, indent, terminal_);
        std::string line = indent + padded(fits ? row[0] : ReportCell{}, widths_[0]);
        for (std::size_t i = 1; i < row.size(); ++i)
            line += std::string(gap, ' ') + padded(row[i], widths_[i]);
        lines.push_back(std::move(line));
        return lines;
    }

  private:
    static constexpr std::size_t gap = 2;
    static constexpr std::size_t fewest = 8;  ///< columns for names, in however narrow a terminal

    /// Makes columns, from the one given on or that one alone, wide enough for a row.
    void widen(const Row& row, std::size_t from) {
        for (std::size_t i = from; i < (from == 0 ? 1 : row.size()); ++i)
            if (const std::size_t width = columnCount(row[i].text); i > 0 || width <= most_)
                widths_[i] = std::max(widths_[i], width);
    }

    std::size_t terminal_;
    std::size_t most_ = 0;  ///< that a name may take
    std::size_t all_ = 0;
    std::vector<std::size_t> widths_;
};

}  // namespace

Lines linesOf(const ReportTable& table, const Terminal& terminal, const std::vector<std::int64_t>& amounts) {
    constexpr std::size_t widestBar = 40, narrowestBar = 8, gap = 2;
    const Columns columns(table, terminal.width);
    const std::size_t room = terminal.width - std::min(terminal.width, columns.width() + gap);
    const std::size_t barWidth = amounts.empty() || room < narrowestBar ? 0 : std::min(room, widestBar);
    const std::int64_t most =
        amounts.empty() ? 1 : std::max<std::int64_t>(1, *std::max_element(amounts.begin(), amounts.end()));
    Lines lines;
    for (std::string& line : columns.linesOf(table.header))
        lines.push_back(terminal.faint(withoutBlanksAtEnd(std::move(line))));
    for (std::size_t i = 0; i < table.rows.size(); ++i) {
        for (std::string& line : columns.linesOf(table.rows[i])) lines.push_back(std::move(line));
        const std::string drawn = barWidth == 0 ? "" : bar(amounts[i], most, barWidth, terminal);
        if (!drawn.empty()) lines.back() += std::string(gap, ' ') + drawn;
    }
    for (std::string& line : lines) line = withoutBlanksAtEnd(std::move(line));
    return lines;
}

Lines beside(const Lines& left, const Lines& right, const Terminal& terminal) {
    constexpr std::size_t gap = 4;
    const auto widest = [](const Lines& lines) {
        std::size_t width = 0;
        for (const std::string& line : lines) width = std::max(width, columnCount(line));
        return width;
    };
    const std::size_t width = widest(left) + gap;
    Lines both = left;
    if (width + widest(right) > terminal.width) {
        both.push_back("");
        both.insert(both.end(), right.begin(), right.end());
        return both;
    }
    both.resize(std::max(left.size(), right.size()));
    for (std::size_t i = 0; i < right.size(); ++i) both[i] = padded({both[i]}, width) + right[i];
    return both;
}

Lines wrapped(const std::string& text, const std::string& start, std::size_t width) {
    Lines lines = {start};
    const std::string further(columnCount(start), ' ');
    bool isFirst = true;
    for (const std::string_view word : tapcore::pieces(text, ' ')) {
        if (!isFirst && columnCount(lines.back()) + 1 + columnCount(word) > width) {
            lines.push_back(further);
            isFirst = true;
        }
        lines.back().append(isFirst ? "" : " ").append(word);
        isFirst = false;
    }
    return lines;
}

std::string joined(const Lines& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + "\n";
    return text;
}

}  // namespace tappora
