#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tappora {

/// What a terminal of the xterm kind shows once it was sent some bytes: as much of it as full-screen programs
/// ask for, and characters that take a column each.
class TerminalScreen {
  public:
    TerminalScreen(std::size_t lines, std::size_t columns) : columns_(columns) { resize(lines, columns); }

    void resize(std::size_t lines, std::size_t columns) {
        columns_ = columns;
        cells_.resize(lines);
        for (auto& line : cells_) line.resize(columns);
        moveTo(line_, column_);
    }

    /// Takes over what was sent; the bytes may end within a sequence or a character, which then waits.
    void take(std::string_view bytes) {
        waiting_ += bytes;
        std::size_t at = 0;
        while (const std::size_t size = stepAt(at)) at += size;
        waiting_.erase(0, at);
    }

    /// The lines, each with its marks below when it has any: a letter for how a column looks, "N" for
    /// reversed, "W" when that is coloured, else a digit for its colour (1 red to 6 cyan), else "b" for bold,
    /// "u" for underlined, "." for dim. "\n" at the start, for raw strings.
    std::string drawn() const {
        std::string all = "\n";
        for (const std::vector<Cell>& line : cells_) {
            std::string text, marks;
            for (const Cell& cell : line) {
                text += cell.text;
                marks += cell.mark;
            }
            all += trimmed(text) + '\n';
            if (!trimmed(marks).empty()) all += trimmed(marks) + '\n';
        }
        return all.erase(all.find_last_not_of('\n') + 1) + '\n';
    }
    /// Where the cursor is, from 0.
    std::pair<std::size_t, std::size_t> cursor() const { return {line_, column_}; }
    /// A sequence that this class does not know; "" as long as there was none.
    const std::string& unknown() const { return unknown_; }

  private:
    struct Cell {
        std::string text = " ";
        char mark = ' ';
    };

    static std::string trimmed(std::string line) { return line.erase(line.find_last_not_of(' ') + 1); }

    /// Does the first step of what waits from here on; its size in bytes, 0 when it is not all there.
    std::size_t stepAt(std::size_t at) {
        const std::string_view rest = std::string_view(waiting_).substr(at);
        if (rest.empty()) return 0;
        if (rest[0] == '\033') return escapeIn(rest);
        if (static_cast<unsigned char>(rest[0]) < 0x20) return controlOf(rest[0]);
        const auto first = static_cast<unsigned char>(rest[0]);
        const std::size_t size = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
        if (rest.size() < size) return 0;
        put(std::string(rest.substr(0, size)));
        return size;
    }

    std::size_t controlOf(char control) {
        if (control == '\r') column_ = 0;
        if (control == '\n') moveTo(line_ + 1, column_);
        if (control == '\b') moveTo(line_, column_ - std::min<std::size_t>(column_, 1));
        return 1;
    }

    std::size_t escapeIn(std::string_view rest) {
        if (rest.size() < 2) return 0;
        if (rest[1] == '(') return rest.size() < 3 ? 0 : 3;  // a character set
        if (rest[1] != '[') return 2;
        const auto* const end = std::find_if(rest.begin() + 2, rest.end(), [](char c) { return c >= '@'; });
        if (end == rest.end()) return 0;
        const auto size = static_cast<std::size_t>(end - rest.begin());
        perform(*end, rest.substr(2, size - 2));
        return size + 1;
    }

    static std::vector<std::size_t> numbersOf(std::string_view text) {
        std::vector<std::size_t> numbers(1, 0);
        for (const char c : text)
            if (c == ';') numbers.push_back(0);
            else numbers.back() = numbers.back() * 10 + static_cast<std::size_t>(c - '0');
        return numbers;
    }

    void perform(char command, std::string_view parameters) {
        if (parameters.find_first_not_of("0123456789;") != parameters.npos) return;  // modes, and the like
        const std::vector<std::size_t> numbers = numbersOf(parameters);
        const std::size_t count = std::max<std::size_t>(numbers[0], 1);
        switch (command) {
            case 'H':
                return moveTo(count - 1, numbers.size() > 1 ? std::max<std::size_t>(numbers[1], 1) - 1 : 0);
            case 'd':
                return moveTo(count - 1, column_);
            case 'G':
                return moveTo(line_, count - 1);
            case 'A':
                return moveTo(line_ - std::min(line_, count), column_);
            case 'B':
                return moveTo(line_ + count, column_);
            case 'C':
                return moveTo(line_, column_ + count);
            case 'D':
                return moveTo(line_, column_ - std::min(column_, count));
            case 'J':
                return clearBelow(numbers[0] == 2);
            case 'K':
                return clear(line_, numbers[0] == 1 ? 0 : column_, numbers[0] == 1 ? column_ + 1 : columns_);
            case 'X':
                return clear(line_, column_, column_ + count);
            case 'P':
                return remove(count);
            case '@':
                return insert(count);
            case 'b':
                return repeat(count);
            case 'm':
                return look(numbers);
            case 'r':
            case 't':
            case 'l':
            case 'h':
                return;
            default:
                unknown_ += std::string(parameters) + command + ' ';
        }
    }

    void moveTo(std::size_t line, std::size_t column) {
        line_ = std::min(line, cells_.size() - 1);
        column_ = std::min(column, columns_ - 1);
    }
    void put(const std::string& character) {
        cells_[line_][column_] = {character, mark()};
        last_ = character;
        if (column_ + 1 < columns_) ++column_;
    }
    void repeat(std::size_t count) {
        while (count-- > 0) put(last_);
    }
    void clear(std::size_t line, std::size_t from, std::size_t to) {
        for (; from < std::min(to, columns_); ++from) cells_[line][from] = {};
    }
    void clearBelow(bool isAll) {
        for (std::size_t line = isAll ? 0 : line_; line < cells_.size(); ++line)
            clear(line, !isAll && line == line_ ? column_ : 0, columns_);
    }
    void remove(std::size_t count) {
        auto& line = cells_[line_];
        const auto from = line.begin() + static_cast<std::ptrdiff_t>(column_);
        line.erase(from, from + static_cast<std::ptrdiff_t>(std::min(count, columns_ - column_)));
        line.resize(columns_);
    }
    void insert(std::size_t count) {
        auto& line = cells_[line_];
        line.insert(line.begin() + static_cast<std::ptrdiff_t>(column_), count, Cell());
        line.resize(columns_);
    }

    void look(const std::vector<std::size_t>& numbers) {
        for (const std::size_t number : numbers) {
            if (number == 0) bold_ = dim_ = underlined_ = reversed_ = false, colour_ = 0;
            if (number == 1) bold_ = true;
            if (number == 2) dim_ = true;
            if (number == 4) underlined_ = true;
            if (number == 7) reversed_ = true;
            if (number == 22) bold_ = dim_ = false;
            if (number == 24) underlined_ = false;
            if (number == 27) reversed_ = false;
            if (number >= 30 && number <= 37) colour_ = number - 30;
            if (number == 39) colour_ = 0;
        }
    }
    char mark() const {
        if (reversed_) return colour_ > 0 ? 'W' : 'N';
        if (colour_ > 0) return static_cast<char>('0' + colour_);
        return bold_ ? 'b' : underlined_ ? 'u' : dim_ ? '.' : ' ';
    }

    std::size_t columns_;
    std::vector<std::vector<Cell>> cells_;
    std::size_t line_ = 0, column_ = 0, colour_ = 0;
    bool bold_ = false, dim_ = false, underlined_ = false, reversed_ = false;
    std::string waiting_, last_ = " ", unknown_;
};

}  // namespace tappora
