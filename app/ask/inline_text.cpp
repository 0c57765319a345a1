#include "app/ask/inline_text.h"

#include <optional>
#include <utility>

#include "core/foundation/characters.h"

namespace tappora {
namespace {

/// "[text](address)" at the start of `rest`, as its two parts; nothing when it is none.
std::optional<std::pair<std::string_view, std::string_view>> linkAt(std::string_view rest) {
    if (!rest.starts_with('[')) return std::nullopt;
    const std::size_t middle = rest.find("](");
    const std::size_t end = rest.find(')', middle == std::string_view::npos ? 0 : middle);
    if (middle == std::string_view::npos || end == std::string_view::npos) return std::nullopt;
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
        word_.width += tapcore::columnCount(run_);
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

}  // namespace

std::vector<Word> inlineWords(std::string_view line, const Terminal& terminal, bool isBold) {
    return WordReader(terminal, isBold).read(line);
}

}  // namespace tappora
