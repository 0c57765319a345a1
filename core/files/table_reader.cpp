#include "core/files/table_reader.h"

#include <algorithm>
#include <array>

#include "core/foundation/ascii.h"
#include "core/foundation/characters.h"
#include "core/foundation/text_pieces.h"

namespace tapcore {
namespace {

constexpr std::array otherLineEndStarts = {'\v', '\f', '\r', '\xC2', '\xE2'};

/// What may start a line end: a byte below space that is one, or the first byte of a longer one.
constexpr auto mayEndLine = [] {
    std::array<bool, 256> table{};
    table['\n'] = true;
    for (const char byte : otherLineEndStarts) table[static_cast<unsigned char>(byte)] = true;
    return table;
}();

/// How many bytes the line end at `at` takes: LF, VT, FF, CR, CR LF, NEL, LS or PS; 0 when there is no line
/// end.
std::size_t lineEndSize(std::string_view text, std::size_t at) {
    const std::string_view here = text.substr(at, 3);
    switch (here[0]) {
        case '\r':
            return here.starts_with("\r\n") ? 2 : 1;
        case '\xC2':
            return here.starts_with("\u0085") ? 2 : 0;
        case '\xE2':
            return here == "\u2028" || here == "\u2029" ? 3 : 0;
        default:
            return 1;
    }
}

struct LineEnd {
    std::size_t at, size;  ///< of size 0 at the end of the text
};

LineEnd lineEnd(std::string_view text) {
    for (std::size_t at = 0; at < text.size(); ++at)
        if (mayEndLine[static_cast<unsigned char>(text[at])])
            if (const std::size_t size = lineEndSize(text, at); size > 0) return {at, size};
    return {text.size(), 0};
}

const char* pastBlanks(const char* at, const char* end) {
    while (at != end && *at == ' ') ++at;
    return at;
}

/// Reads a row such as "|  8 | 112 |" and its line end; gives its size, 0 for any other line.
std::size_t readNumbers(std::string_view text, std::span<std::int64_t> numbers) {
    constexpr std::ptrdiff_t digitsThatFit = 18;
    const char* const end = text.data() + text.size();
    const char* at = text.data();
    if (at == end || *at != '|') return 0;
    for (std::int64_t& number : numbers) {
        const char* const digits = at = pastBlanks(at + 1, end);
        std::uint64_t value = 0;
        for (; at != end && isDigit(*at); ++at) value = value * 10 + static_cast<std::uint64_t>(*at - '0');
        if (at == digits || at - digits > digitsThatFit) return 0;
        number = static_cast<std::int64_t>(value);
        at = pastBlanks(at, end);
        if (at == end || *at != '|') return 0;
    }
    return ++at != end && *at == '\n' ? static_cast<std::size_t>(at + 1 - text.data()) : 0;
}

bool isBlank(char c) { return c == ' ' || c == '\t'; }

std::string_view trimmedBlanks(std::string_view text) {
    while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
    return text;
}

bool isSectionName(std::string_view word) {
    if (word.empty()) return false;
    const auto names = characters(word);
    return std::all_of(names.begin(), names.end(),
                       [](std::string_view c) { return c == "_" || isLetter(c); });
}

/// What rules of tables, and titles ("# 2026-09-20", "#+title: 2026-09-20"), do not.
bool saysSomething(std::string_view line) {
    const bool isTitle = line.starts_with('#') && line.find_first_not_of("# \t-0123456789") == line.npos;
    return !isTitle && !line.starts_with("#+title:") && line.find_first_not_of("|-:+ \t") != line.npos;
}

}  // namespace

bool isRuleCell(std::string_view cell) {
    return !cell.empty() &&
           std::all_of(cell.begin(), cell.end(), [](char c) { return c == '-' || c == ':' || c == '+'; });
}

TableReader::TableReader(std::string_view text, Lines lines) : rest_(text), lines_(lines) {}

bool TableReader::peekNumbers(std::span<std::int64_t> numbers) {
    peeked_ = readNumbers(rest_, numbers);
    return peeked_ > 0;
}

void TableReader::skip() {
    rest_.remove_prefix(peeked_);
    ++line_;
}

bool TableReader::takeLine(std::string_view& line) {
    if (rest_.empty()) return false;
    const auto [end, size] = lineEnd(rest_);
    line = rest_.substr(0, end);
    rest_.remove_prefix(end + size);
    ++line_;
    return true;
}

bool TableReader::next() {
    std::string_view line;
    while (takeLine(line)) {
        line = trimmedBlanks(line);
        if (line.empty()) continue;
        text_ = line;
        isHeading_ = line.front() == '*' || line.front() == '#';
        isOther_ = !(isHeading_ ? readHeading(line) : inSection_ && readRow(line));
        if (!isOther_) return true;
        isHeading_ = false;
        cells_.clear();
        if (lines_ == Lines::all && saysSomething(line)) return true;
    }
    return false;
}

bool TableReader::readHeading(std::string_view line) {
    line.remove_prefix(std::min(line.find_first_not_of("*#"), line.size()));
    line = trimmedBlanks(line);
    const std::string_view word = line.substr(0, line.find_first_of(" \t"));
    if (!isSectionName(word)) return false;
    section_ = lowercased(word);
    inSection_ = true;
    return true;
}

bool TableReader::readRow(std::string_view line) {
    if (line.front() == '|') return readBarredRow(line);
    if (line.find('\t') == std::string_view::npos) return false;
    cells_ = pieces(line, '\t');
    return true;
}

bool TableReader::readBarredRow(std::string_view line) {
    if (line.size() < 2 || line.back() != '|') return false;
    cells_.clear();
    line.remove_prefix(1);
    while (!line.empty()) cells_.push_back(trimmedBlanks(takePiece(line, '|')));
    return !std::all_of(cells_.begin(), cells_.end(), isRuleCell);
}

}  // namespace tapcore
