#include "core/files/text_table.h"

#include <algorithm>
#include <cstddef>

#include "core/files/table_reader.h"
#include "core/foundation/characters.h"
#include "core/foundation/fatal.h"

namespace tapcore {
namespace {

/// A cell's text and how many characters it has.
struct Measured {
    std::string text;
    std::size_t width = 0;
};
using Line = std::vector<Measured>;

/// The text of a cell as a table can hold it: bars and line breaks become spaces.
std::string withoutMarks(std::string_view text) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const std::string_view rest = text.substr(at);
        const bool breaks = std::string_view("|\n\v\f\r").find(rest.front()) != std::string_view::npos;
        const bool longBreak = rest.starts_with("\u2028") || rest.starts_with("\u2029");
        const bool nextLine = rest.starts_with("\u0085");
        if (breaks || longBreak || nextLine) {
            result += ' ';
            at += breaks ? 1 : nextLine ? 2 : 3;
        } else {
            result += text[at++];
        }
    }
    return result;
}

Line measured(const std::vector<std::string>& cells, std::size_t columns) {
    if (cells.size() < columns) fatal("a table row has fewer cells than the table has columns");
    Line line;
    for (std::size_t column = 0; column < columns; ++column) {
        std::string text = withoutMarks(cells[column]);
        const std::size_t width = characterCount(text);
        line.push_back({std::move(text), width});
    }
    return line;
}

void writeLine(std::string& out, const Line& line, const std::vector<std::size_t>& widths,
               const std::vector<bool>& alignRight) {
    for (std::size_t column = 0; column < line.size(); ++column) {
        const std::size_t padding = widths[column] - line[column].width;
        out += column == 0 ? "| " : " | ";
        if (alignRight[column]) out.append(padding, ' ');
        out += line[column].text;
        if (!alignRight[column]) out.append(padding, ' ');
    }
    out += " |\n";
}

void writeMarkdownRule(std::string& out, const std::vector<std::size_t>& widths,
                       const std::vector<bool>& alignRight) {
    for (std::size_t column = 0; column < widths.size(); ++column) {
        out += column == 0 ? "| " : " | ";
        out.append(widths[column] - (alignRight[column] ? 1 : 0), '-');
        if (alignRight[column]) out += ':';
    }
    out += " |\n";
}

void writeOrgRule(std::string& out, const std::vector<std::size_t>& widths) {
    for (std::size_t column = 0; column < widths.size(); ++column) {
        out += column == 0 ? '|' : '+';
        out.append(widths[column] + 2, '-');
    }
    out += "|\n";
}

}  // namespace

std::string TextTable::render(FileFormat format) const {
    const std::size_t columns = header.size();
    if (columns == 0) fatal("a table without columns cannot be written");
    if (alignRight.size() < columns) fatal("a table column has no alignment");
    std::vector<Line> lines = {measured(header, columns)};
    for (const auto& row : rows) lines.push_back(measured(row, columns));

    std::vector<std::size_t> widths(columns, 3);
    for (const Line& line : lines)
        for (std::size_t column = 0; column < columns; ++column)
            widths[column] = std::max(widths[column], line[column].width);

    std::string out;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        writeLine(out, lines[i], widths, alignRight);
        if (i > 0) continue;
        if (format == FileFormat::markdown) writeMarkdownRule(out, widths, alignRight);
        else writeOrgRule(out, widths);
    }
    return out;
}

std::string TextTable::section(FileFormat format, std::string_view title) const {
    return format.heading(title) + "\n" + render(format);
}

std::vector<TextTable::Section> TextTable::sections(std::string_view text) {
    std::vector<Section> result;
    for (TableReader reader(text); reader.next();) {
        if (reader.isHeading()) result.push_back({reader.section(), {}});
        else result.back().rows.emplace_back(reader.cells().begin(), reader.cells().end());
    }
    return result;
}

}  // namespace tapcore
