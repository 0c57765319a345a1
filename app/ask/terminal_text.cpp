#include "app/ask/terminal_text.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "core/foundation/characters.h"

namespace tappora {
namespace {

/// A run of text between blanks, and how many columns it takes without its styles.
struct Word {
    std::string text;
    std::size_t width = 0;
};

std::vector<std::string_view> split(std::string_view text, char at) {
    std::vector<std::string_view> pieces;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find(at, start), text.size());
        pieces.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return pieces;
}

/// "[text](address)" at the start of `rest`, as its two parts; nothing when it is none.
std::optional<std::pair<std::string_view, std::string_view>> linkAt(std::string_view rest) {
    const std::size_t middle = rest.find("](");
    const std::size_t end = rest.find(')', middle == std::string_view::npos ? 0 : middle);
    if (!rest.starts_with('[') || middle == std::string_view::npos || end == std::string_view::npos)
        return std::nullopt;
    return std::pair(rest.substr(1, middle - 1), rest.substr(middle + 2, end - middle - 2));
}

/// The words of a line with its marks for bold, code and links taken out; a style holds over blanks.
class WordReader {
  public:
    WordReader(const Terminal& terminal, bool isBold) : terminal_(terminal), bold_(isBold) {}

    std::vector<Word> read(std::string_view line) {
        while (!line.empty()) line.remove_prefix(take(line));
        endWord();
        return std::move(words_);
    }

  private:
    /// Takes the start of a line; gives how many bytes.
    std::size_t take(std::string_view rest) {
        if (rest.starts_with("**") && (bold_ || rest.find("**", 2) != std::string_view::npos)) {
            flush();
            bold_ = !bold_;
            return 2;
        }
        if (const auto link = linkAt(rest)) {
            for (const char c : std::string(link->first) + " (" + std::string(link->second) + ")") put(c);
            return link->first.size() + link->second.size() + 4;
        }
        if (rest[0] == '`' && (code_ || rest.find('`', 1) != std::string_view::npos)) code_ = !code_;
        else put(rest[0]);
        return 1;
    }

    void put(char c) {
        if (c == ' ') endWord();
        else run_ += c;
    }

    /// Ends a run of one style.
    void flush() {
        word_.width += tapcore::characterCount(run_);
        word_.text += bold_ ? terminal_.bold(run_) : run_;
        run_.clear();
    }

    void endWord() {
        flush();
        if (!word_.text.empty()) words_.push_back(std::move(word_));
        word_ = {};
    }

    const Terminal& terminal_;
    bool bold_;
    bool code_ = false;
    std::string run_;
    Word word_;
    std::vector<Word> words_;
};

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
    const std::size_t hang = tapcore::characterCount(start.shown);
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

std::string shownLine(std::string_view line, const Terminal& terminal, std::size_t columns) {
    if (line.starts_with('|')) return std::string(line);
    const std::size_t level = std::min(line.find_first_not_of('#'), line.size());
    const bool isHeading = level > 0 && level < line.size() && line[level] == ' ';
    if (isHeading) return wrapped({"", ""}, WordReader(terminal, true).read(line.substr(level + 1)), columns);
    const Start start = startOf(line, terminal);
    return wrapped(start, WordReader(terminal, false).read(line.substr(start.mark.size())), columns);
}

}  // namespace

std::string terminalText(std::string_view markdown, const Terminal& terminal, std::size_t columns) {
    std::string text;
    bool inCode = false;
    const std::string clean = harmless(markdown);
    for (const std::string_view line : split(clean, '\n')) {
        const bool isFence = line.starts_with("```");
        if (isFence) inCode = !inCode;
        else text += (inCode ? std::string(line) : shownLine(line, terminal, columns)) + "\n";
    }
    return text;
}

}  // namespace tappora
