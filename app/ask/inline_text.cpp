#include "app/ask/inline_text.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "core/foundation/ascii.h"
#include "core/foundation/characters.h"

namespace tappora {
namespace {

/// "[text](address)" at the start of `rest`, as its two parts; nothing when there is no link.
std::optional<std::pair<std::string_view, std::string_view>> linkAt(std::string_view rest) {
    if (!rest.starts_with('[')) return std::nullopt;
    const std::size_t middle = rest.find("](");
    const std::size_t end = rest.find(')', middle == std::string_view::npos ? 0 : middle);
    if (middle == std::string_view::npos || end == std::string_view::npos) return std::nullopt;
    return std::pair(rest.substr(1, middle - 1), rest.substr(middle + 2, end - middle - 2));
}

/// What keeps a "*" or "_" beside it from being a mark: "2*3", "active_hours", "days/*.org", "\*".
bool joins(char c) { return tapcore::isAsciiLetter(c) || tapcore::isDigit(c) || c == '/' || c == '\\'; }

/// Whether the mark at `at` is one of an odd number in a row: two are a mark of their own.
bool isOdd(std::string_view line, std::size_t at) {
    const char mark = line[at];
    const std::size_t before = at == 0 ? std::string_view::npos : line.find_last_not_of(mark, at);
    const std::size_t after = std::min(line.find_first_not_of(mark, at), line.size());
    return (after - (before + 1)) % 2 == 1;  // npos + 1 is 0
}

/// Whether the "*" or "_" at `at` can begin text in italics: right before a word or what is marked itself.
bool canBegin(std::string_view line, std::size_t at) {
    const std::string_view after = line.substr(at + 1);
    const bool isBeforeMark =
        after.starts_with('`') || after.starts_with('[') || (line[at] == '_' && after.starts_with("**"));
    const bool isBeforeText = isBeforeMark || tapcore::isLetter(after) || tapcore::isNumber(after);
    return isBeforeText && (at == 0 || !joins(line[at - 1])) && isOdd(line, at);
}

/// The same for the end of such text: right behind it, and not within a word.
bool canEnd(std::string_view line, std::size_t at) {
    const bool isFree = at + 1 == line.size() || !joins(line[at + 1]);
    return isFree && at > 0 && line[at - 1] != ' ' && isOdd(line, at);
}

/// The words of a line with its marks for bold, italics, code and links taken out; a style holds over blanks.
class WordReader {
  public:
    WordReader(std::string_view line, const Terminal& terminal, bool isBold)
        : line_(line), terminal_(terminal), bold_(isBold) {}

    std::vector<Word> read() {
        while (at_ < line_.size()) at_ += take(line_.substr(at_));
        endWord();
        return std::move(words_);
    }

  private:
    /// Takes the start of what is left; gives how many bytes.
    std::size_t take(std::string_view rest) {
        if (rest[0] == '`' && (code_ || rest.find('`', 1) != std::string_view::npos)) {
            code_ = !code_;
            return 1;
        }
        if (code_) return put(rest[0]);
        if (rest.starts_with("**") && (bold_ || rest.find("**", 2) != std::string_view::npos)) {
            flush();
            bold_ = !bold_;
            return 2;
        }
        if (const auto link = linkAt(rest)) {
            for (const char c : std::string(link->first) + " (" + std::string(link->second) + ")") put(c);
            return link->first.size() + link->second.size() + 4;
        }
        return turnsItalic(rest[0]) ? 1 : put(rest[0]);
    }

    /// Begins or ends text in italics where the byte here does so.
    bool turnsItalic(char c) {
        const bool ends = italicMark_ == c && canEnd(line_, at_);
        const bool begins = italicMark_ == 0 && (c == '*' || c == '_') && canBegin(line_, at_) && isEnded(c);
        if (!ends && !begins) return false;
        flush();
        italicMark_ = begins ? c : '\0';
        return true;
    }

    bool isEnded(char mark) const {
        for (auto at = line_.find(mark, at_ + 2); at != std::string_view::npos; at = line_.find(mark, at + 1))
            if (canEnd(line_, at)) return true;
        return false;
    }

    std::size_t put(char c) {
        if (c == ' ') endWord();
        else run_ += c;
        return 1;
    }

    /// Ends a run of one style.
    void flush() {
        word_.width += tapcore::columnCount(run_);
        const std::string text = italicMark_ != 0 ? terminal_.italic(run_) : run_;
        word_.text += bold_ ? terminal_.bold(text) : text;
        run_.clear();
    }

    void endWord() {
        flush();
        if (!word_.text.empty()) words_.push_back(std::move(word_));
        word_ = {};
    }

    std::string_view line_;
    std::size_t at_ = 0;
    const Terminal& terminal_;
    bool bold_;
    char italicMark_ = '\0';  ///< that italics began with; NUL outside of them
    bool code_ = false;
    std::string run_;
    Word word_;
    std::vector<Word> words_;
};

}  // namespace

std::vector<Word> inlineWords(std::string_view line, const Terminal& terminal, bool isBold) {
    return WordReader(line, terminal, isBold).read();
}

}  // namespace tappora
